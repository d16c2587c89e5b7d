// Decimal numbers of up to 38 significant digits: values, not objects.
//
//     NSDecimal::read("12.50 EUR").rounded().text()   // "12.5"
//
// Kept as digits, because what is asked of them is to be read, shown and compared without a loss; nothing
// calculates with them. Any thread.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

struct NSDecimal {
    static constexpr std::int64_t mostDigits = 38, leastExponent = -128, greatestExponent = 127;

    bool isNotANumber = false;
    bool isNegative = false;
    /// The value is the digits times ten to the exponent. No zero stands at either end; none at all is 0.
    std::string digits;
    std::int64_t exponent = 0;

    static NSDecimal notANumber() { return {.isNotANumber = true, .digits = {}}; }
    /// The number that the text begins with, with every digit: ASCII white space skipped, an optional sign,
    /// digits with at most one ".", an optional exponent. Not a number when there is no digit.
    static NSDecimal read(std::string_view text);
    /// Every digit of a finite double; not a number for any other.
    static NSDecimal exactly(double value);

    /// To 38 digits and the least exponent, halves away from zero; not a number when it is too large.
    NSDecimal rounded() const;

    /// Plain decimal text without an exponent; "NaN". Raises NSInvalidArgumentException for one of more than
    /// a million digits, which no rounded value has.
    std::string text() const;
    /// The nearest.
    double doubleValue() const;
    /// Cut towards zero and clamped, not-a-number counting as 0; unsigned, a negative value wraps around.
    std::int64_t longLongValue() const;
    std::uint64_t unsignedLongLongValue() const;

    /// What is not a number equals itself and comes before all numbers.
    friend std::strong_ordering operator<=>(const NSDecimal &a, const NSDecimal &b);
    friend bool operator==(const NSDecimal &, const NSDecimal &) = default;

private:
    void normalize();
};
