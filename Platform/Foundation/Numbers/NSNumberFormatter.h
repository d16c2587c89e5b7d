// Texts to numbers by the conventions of the current locale, decimal style: its digits (and the ASCII ones),
// its grouping and decimal separators, its signs, an exponent.
//
// Strict: groups have to be whole, white space around the number is not skipped. Any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

class NSNumber;
class NSString;

class NSNumberFormatter {
public:
    /// A 64-bit integer when the value is whole and fits, a double otherwise. Returns none if the argument is
    /// none, is not a finite number from its first to its last character, or has more than 4096 code units.
    static Ref<NSNumber> numberFromString(const Ref<NSString> &text);
};
