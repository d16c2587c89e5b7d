// The number at the front of a text, the same in every locale.
#include "Platform/Foundation/Numbers/DecimalText.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <limits>

namespace {

std::u16string_view withoutLeadingSpace(std::u16string_view units) {
    static const auto &space = *new Ref<NSCharacterSet>(NSCharacterSet::whitespaceAndNewlineCharacterSet());
    while (!units.empty() && space->characterIsMember(units.front()))
        units.remove_prefix(1);
    return units;
}

bool takeSign(std::u16string_view &units) {
    const bool negative = units.starts_with(u'-');
    if (negative || units.starts_with(u'+'))
        units.remove_prefix(1);
    return negative;
}

template <class Integer>
Integer leadingInteger(std::u16string_view units) {
    units = withoutLeadingSpace(units);
    const bool negative = takeSign(units);
    // Accumulated as a negative number, since the lowest value has no positive counterpart.
    constexpr Integer lowest = std::numeric_limits<Integer>::min(),
                      highest = std::numeric_limits<Integer>::max();
    Integer value = 0;
    for (const char16_t unit : units) {
        if (unit < '0' || unit > '9')
            break;
        const auto digit = static_cast<Integer>(unit - '0');
        if (value < (lowest + digit) / 10)
            return negative ? lowest : highest;
        value = static_cast<Integer>(value * 10 - digit);
    }
    if (negative)
        return value;
    return value == lowest ? highest : static_cast<Integer>(-value);
}

} // namespace

std::int32_t NSString::intValue() const {
    return leadingInteger<std::int32_t>(units_);
}

NSInteger NSString::integerValue() const {
    return leadingInteger<NSInteger>(units_);
}

double NSString::doubleValue() const {
    std::u16string_view units = withoutLeadingSpace(units_);
    if (units.starts_with(u'+')) {
        units.remove_prefix(1);
        if (units.starts_with(u'-'))
            return 0;
    }
    units = units.substr(0, units.find_first_not_of(u"0123456789.eE+-"));
    return doubleOfDecimalText(std::string(units.begin(), units.end()));
}

bool NSString::boolValue() const {
    std::u16string_view units = withoutLeadingSpace(units_);
    takeSign(units);
    units.remove_prefix(std::min(units.find_first_not_of(u'0'), units.size()));
    return !units.empty() && std::u16string_view(u"YyTt123456789").find(units.front()) != units.npos;
}
