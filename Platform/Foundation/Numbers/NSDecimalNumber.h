// Numbers of up to 38 significant decimal digits with an exponent from -128 to 127.
//
//     NSDecimalNumber::decimalNumberWithString(u"0.1"_ns)   // exactly one tenth, which no double is
//
// Equality and hash go by exact value across all numbers: one half equals the double 0.5, one tenth does not
// equal the double 0.1. Its `objCType` is that of a double. Immutable; any thread.
#pragma once

#include "Platform/Foundation/Numbers/NSDecimal.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Text/NSComparison.h"

class NSDecimalNumber : public NSNumber {
    NS_CLASS(NSDecimalNumber, NSNumber)
public:
    /// For the factories, with a rounded value.
    explicit NSDecimalNumber(NSDecimal value)
        : NSNumber(decimalEncoding, value.doubleValue()), value_(std::move(value)) {}

    /// What a text without a number gives; equals itself and the double of that name.
    static Ref<NSDecimalNumber> notANumber() { return decimalNumberWithDecimal(NSDecimal::notANumber()); }
    /// The number that the text begins with behind white space and line ends of any kind, as
    /// `NSDecimal::read` takes it, rounded. Not a number for a text that begins with none, for a number that
    /// is too large, and for none.
    static Ref<NSDecimalNumber> decimalNumberWithString(const Ref<NSString> &text);
    /// Rounds. E.g. of `number->decimalValue()`.
    static Ref<NSDecimalNumber> decimalNumberWithDecimal(const NSDecimal &value) {
        return make<NSDecimalNumber>(value.rounded());
    }

    const NSDecimal &value() const { return value_; }
    /// By exact value; not-a-number and none come first.
    NSComparisonResult compare(const Ref<NSNumber> &other) const;

    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;

private:
    const NSDecimal value_;
};
