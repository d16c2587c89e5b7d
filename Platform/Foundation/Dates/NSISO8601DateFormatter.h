// Parses the internet's date-time format with whole seconds, the years 1 to 9999 and an offset from UTC:
// "2014-01-20T12:24:48Z", "2014-01-20T13:24:48+01:00", "2014-01-20T13:24:48+0100". Safe from any thread.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSDate;

class NSISO8601DateFormatter : public NSObject {
    NS_CLASS(NSISO8601DateFormatter, NSObject)
public:
    /// None for none and for any other text, e.g. one with fractions of a second.
    Ref<NSDate> dateFromString(const Ref<NSString> &text) const;
};

#pragma GCC visibility pop
