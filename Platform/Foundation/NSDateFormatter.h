// Dates to texts by a pattern of Unicode's date fields ("yyyy-MM-dd HH:mm"), in the current locale and time
// zone. Any thread.
#pragma once

#include "Platform/Runtime/Ref.h"

class NSDate;
class NSString;

class NSDateFormatter {
public:
    /// None for none, and for a pattern with a field that does not exist.
    static Ref<NSString> stringFromDate(const Ref<NSDate> &date, const Ref<NSString> &dateFormat);
};
