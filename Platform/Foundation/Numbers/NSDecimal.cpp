#include "Platform/Foundation/Numbers/NSDecimal.h"

#include "Platform/Ascii/Ascii.h"
#include "Platform/Foundation/Numbers/DecimalText.h"
#include "Platform/Runtime/Object/NSException.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace {

bool takeSign(std::string_view &text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    return negative;
}

/// The exponent that the text begins with, clamped to a size that no number of digits can compensate.
std::int64_t exponentOf(std::string_view text) {
    constexpr std::uint64_t huge = std::uint64_t{1} << 60;
    if (!text.starts_with('e') && !text.starts_with('E'))
        return 0;
    text.remove_prefix(1);
    const bool negative = takeSign(text);
    std::uint64_t value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range)
        value = huge;
    const auto size = static_cast<std::int64_t>(std::min(value, huge));
    return negative ? -size : size;
}

/// Truncated towards zero and clamped.
template <class Integer>
Integer wholeValue(const NSDecimal &decimal) {
    const auto size = static_cast<std::int64_t>(decimal.digits.size()), point = size + decimal.exponent;
    if (decimal.isNotANumber || point <= 0)
        return 0;
    constexpr std::int64_t tooMany = std::numeric_limits<std::uint64_t>::digits10 + 2; // for any integer
    const auto cut = [&](std::int64_t count) { return static_cast<std::size_t>(std::min(count, tooMany)); };
    std::string text = decimal.isNegative ? "-" : "";
    text.append(decimal.digits, 0, cut(point)).append(cut(std::max(point - size, std::int64_t{0})), '0');
    Integer value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range)
        return decimal.isNegative ? std::numeric_limits<Integer>::min() : std::numeric_limits<Integer>::max();
    return value;
}

std::strong_ordering compareMagnitudes(const NSDecimal &a, const NSDecimal &b) {
    const auto point = [](const NSDecimal &value) {
        return static_cast<std::int64_t>(value.digits.size()) + value.exponent;
    };
    const auto order = point(a) <=> point(b);
    return std::is_eq(order) ? a.digits <=> b.digits : order;
}

int signOf(const NSDecimal &value) {
    return value.digits.empty() ? 0 : value.isNegative ? -1 : 1;
}

} // namespace

NSDecimal NSDecimal::read(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    NSDecimal made;
    made.isNegative = takeSign(text);
    bool anyDigit = false, fraction = false;
    std::size_t at = 0;
    for (; at < text.size() && (ascii::isDigit(text[at]) || (text[at] == '.' && !fraction)); ++at) {
        if (text[at] == '.') {
            fraction = true;
            continue;
        }
        anyDigit = true;
        made.exponent -= fraction;
        if (text[at] != '0' || !made.digits.empty())
            made.digits += text[at];
    }
    if (!anyDigit)
        return notANumber();
    made.exponent += exponentOf(text.substr(at));
    made.normalize();
    return made;
}

NSDecimal NSDecimal::exactly(double value) {
    char text[800]; // the longest double has 767 significant digits
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 766).ptr;
    return read({text, end});
}

void NSDecimal::normalize() {
    while (digits.ends_with('0')) {
        digits.pop_back();
        ++exponent;
    }
    if (digits.empty()) {
        isNegative = false;
        exponent = 0;
    }
}

NSDecimal NSDecimal::rounded() const {
    NSDecimal made = *this;
    const auto size = static_cast<std::int64_t>(digits.size());
    const std::int64_t kept = std::min(mostDigits, size + exponent - leastExponent);
    if (kept < size) {
        const bool up = kept >= 0 && digits[static_cast<std::size_t>(kept)] >= '5';
        made.digits.resize(static_cast<std::size_t>(std::max<std::int64_t>(kept, 0)));
        made.exponent += size - kept;
        if (up) {
            while (made.digits.ends_with('9')) {
                made.digits.pop_back();
                ++made.exponent;
            }
            if (made.digits.empty())
                made.digits = "1";
            else
                ++made.digits.back();
        }
        made.normalize();
    }
    const auto left = static_cast<std::int64_t>(made.digits.size());
    return left + std::max<std::int64_t>(0, made.exponent - greatestExponent) > mostDigits ? notANumber()
                                                                                           : made;
}

std::string NSDecimal::text() const {
    if (isNotANumber)
        return "NaN";
    constexpr std::int64_t longest = 1'000'000;
    if (exponent > longest || exponent < -longest)
        throw NSException(NSInvalidArgumentException, "NSDecimal text: too many digits");
    std::string made = digits;
    const auto size = static_cast<std::int64_t>(digits.size());
    if (exponent >= 0)
        made.append(static_cast<std::size_t>(exponent + digits.empty()), '0');
    else if (size + exponent > 0)
        made.insert(static_cast<std::size_t>(size + exponent), 1, '.');
    else
        made.insert(0, "0." + std::string(static_cast<std::size_t>(-exponent - size), '0'));
    return isNegative ? "-" + made : made;
}

double NSDecimal::doubleValue() const {
    if (isNotANumber)
        return std::numeric_limits<double>::quiet_NaN();
    const std::string number = (isNegative ? "-0" : "0") + digits + "e" + std::to_string(exponent);
    return doubleOfDecimalText(number);
}

std::int64_t NSDecimal::longLongValue() const {
    return wholeValue<std::int64_t>(*this);
}

std::uint64_t NSDecimal::unsignedLongLongValue() const {
    return isNegative ? static_cast<std::uint64_t>(longLongValue()) : wholeValue<std::uint64_t>(*this);
}

std::strong_ordering operator<=>(const NSDecimal &a, const NSDecimal &b) {
    if (a.isNotANumber || b.isNotANumber)
        return b.isNotANumber <=> a.isNotANumber;
    const int sign = signOf(a);
    if (sign != signOf(b))
        return sign <=> signOf(b);
    return sign < 0 ? compareMagnitudes(b, a) : compareMagnitudes(a, b);
}
