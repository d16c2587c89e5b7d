// Dates from the texts of the internet's date-time form, a whole second of the years 1 to 9999 with its
// offset from UTC: "2014-01-20T12:24:48Z", "2014-01-20T13:24:48+01:00", "2014-01-20T13:24:48+0100". Any
// thread.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

class NSDate;

class NSISO8601DateFormatter : public NSObject {
    NS_CLASS(NSISO8601DateFormatter, NSObject)
public:
    /// Returns none if the argument is none or any other text, even one with fractions of a second.
    Ref<NSDate> dateFromString(const Ref<NSString> &text) const;
};
