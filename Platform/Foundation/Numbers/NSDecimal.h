// Decimal numbers of up to 38 significant digits: values, not objects.
//
//     NSDecimal::read("12.50 EUR").rounded().text()   // "12.5"
//
// Stored as digits, since they are only read, shown and compared without loss; nothing calculates with them.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

struct NSDecimal {
    static constexpr std::int64_t mostDigits = 38, leastExponent = -128, greatestExponent = 127;

    bool isNotANumber = false;
    bool isNegative = false;
    /// The value is `digits` times ten to the power of `exponent`. ASCII digits without leading and trailing
    /// zeros; empty for 0. Only a rounded value keeps to the limits above.
    std::string digits;
    std::int64_t exponent = 0;

    static NSDecimal notANumber() { return {.isNotANumber = true, .digits = {}}; }
    /// The number that the text begins with, unrounded: skips ASCII white space and reads an optional sign,
    /// digits with at most one ".", and an optional exponent. Not a number without a digit.
    static NSDecimal read(std::string_view text);
    /// The exact value of a finite double; not a number for any other.
    static NSDecimal exactly(double value);

    /// Rounded to 38 digits and the least exponent, halves away from zero; not a number when it is too large.
    NSDecimal rounded() const;

    /// Plain decimal text without an exponent, or "NaN". Raises NSInvalidArgumentException for an exponent
    /// beyond a million, which no rounded value has.
    std::string text() const;
    /// The nearest double.
    double doubleValue() const;
    /// Truncated towards zero and clamped; 0 for not-a-number. A negative value wraps around when unsigned.
    std::int64_t longLongValue() const;
    std::uint64_t unsignedLongLongValue() const;

    /// Not-a-number equals itself and comes before all numbers.
    friend std::strong_ordering operator<=>(const NSDecimal &a, const NSDecimal &b);
    friend bool operator==(const NSDecimal &, const NSDecimal &) = default;

private:
    void normalize();
};

// Again, since a friend does not take the visibility of this header.
std::strong_ordering operator<=>(const NSDecimal &a, const NSDecimal &b);

#pragma GCC visibility pop
