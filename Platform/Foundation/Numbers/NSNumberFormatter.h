// Parses numbers in the decimal style of the current locale: its digits (and ASCII digits), grouping and
// decimal separators, signs, and an exponent.
//
//     NSNumberFormatter::numberFromString(u"1.234,5"_ns);    // 1234.5 in the locale de_DE
//
// Strict: groups must be complete, and white space around the number is not skipped. Safe from any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#pragma GCC visibility push(default)

class NSNumber;
class NSString;

class NSNumberFormatter {
public:
    /// A 64-bit integer when the value is whole and fits, else a double. None when the text is none, is not
    /// entirely a finite number, or has more than 4096 code units.
    static Ref<NSNumber> numberFromString(const Ref<NSString> &text);
};

#pragma GCC visibility pop
