#include "Platform/Foundation/Numbers/DecimalText.h"

#include "Platform/Foundation/Numbers/NSDecimal.h"

double doubleOfDecimalText(std::string_view text) {
    double value = 0;
    const auto error = std::from_chars(text.data(), text.data() + text.size(), value).ec;
    if (error != std::errc::result_out_of_range)
        return std::isfinite(value) ? value : 0;    // a text may begin with "inf" or "nan"
    const NSDecimal number = NSDecimal::read(text); // to find out whether it is too large or too small
    const bool large = static_cast<std::int64_t>(number.digits.size()) + number.exponent > 0;
    return std::copysign(large ? std::numeric_limits<double>::infinity() : 0, number.isNegative ? -1 : 1);
}
