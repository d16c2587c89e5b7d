// Dates from texts whose length, in UTF-16 units, decides which form they have. Any thread.
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
// Forms without an offset are in UTC.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#pragma GCC visibility push(default)

class NSDate;
class NSString;

namespace qn {

/// Returns none if the text is none, of another length, or not a date of its form. Within its length the text
/// may deviate as far as `NSDateFormatter::dateFromString` allows.
Ref<NSDate> dateFromLengthTable(const Ref<NSString> &text);
/// The same, but only for texts with exactly the digits of their form. Tried first, this saves a model
/// asking ICU in another form, which takes 5 to 30 times as long for most of these forms (Benchmarks/run,
/// dates).
Ref<NSDate> dateFromFixedForm(const Ref<NSString> &text);

} // namespace qn

#pragma GCC visibility pop
