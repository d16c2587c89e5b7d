// Numbers of up to 38 significant decimal digits with an exponent from -128 to 127.
//
//     NSDecimalNumber::decimalNumberWithString(u"0.1"_ns)   // exactly one tenth, which no double is
//
// Equality and hash use the exact value, across all kinds of numbers: one half equals the double 0.5, one
// tenth does not equal the double 0.1. `objCType` is 'd', a double's. Immutable, so any thread may use one.
#pragma once

#include "Platform/Foundation/Numbers/NSDecimal.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Text/NSComparison.h"

#pragma GCC visibility push(default)

class NSDecimalNumber : public NSNumber {
    NS_CLASS(NSDecimalNumber, NSNumber)
public:
    /// For the factories; `value` must be rounded.
    explicit NSDecimalNumber(NSDecimal value)
        : NSNumber(decimalEncoding, value.doubleValue()), value_(std::move(value)) {}

    /// Equals itself and the double NaN.
    static Ref<NSDecimalNumber> notANumber() { return decimalNumberWithDecimal(NSDecimal::notANumber()); }
    /// The number that the text begins with after white space and line ends of any kind, read as by
    /// `NSDecimal::read` and rounded. Not a number when the text is none, does not begin with a number, or
    /// begins with one that is too large.
    static Ref<NSDecimalNumber> decimalNumberWithString(const Ref<NSString> &text);
    /// The value, e.g. `number->decimalValue()`, rounded.
    static Ref<NSDecimalNumber> decimalNumberWithDecimal(const NSDecimal &value) {
        return make<NSDecimalNumber>(value.rounded());
    }

    const NSDecimal &value() const { return value_; }
    /// By exact value; not-a-number, and none as the other, come first.
    NSComparisonResult compare(const Ref<NSNumber> &other) const;

    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;

private:
    const NSDecimal value_;
};

#pragma GCC visibility pop
