// Dates from texts whose length says which form they have. Any thread.
//
//     10      2014-01-20
//     19      2014-01-20T12:24:48, 2014-01-20 12:24:48
//     23      2014-01-20T12:24:48.000, 2014-01-20 12:24:48.000
//     20, 25  2014-01-20T12:24:48Z, 2014-01-20T12:24:48+00:00
//     24      2014-01-20T12:24:48+0000, 2014-01-20T12:24:48.000Z
//     28, 29  2014-01-20T12:24:48.000+0000, 2014-01-20T12:24:48.000+00:00
//     30      Mon Jan 20 12:24:48 +0000 2014
//     34      Mon Jan 20 12:24:48.000 +0000 2014
//
// Those that do not name their offset are in UTC.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

class NSDate;
class NSString;

namespace qn {

/// Returns none if the argument is none, of another length, or not a date of its form. Within its length, it
/// may deviate as `NSDateFormatter::dateFromString` says.
Ref<NSDate> dateFromLengthTable(const Ref<NSString> &text);
/// The same, of texts with all digits of their form alone, which is quick.
Ref<NSDate> dateFromFixedForm(const Ref<NSString> &text);

} // namespace qn
