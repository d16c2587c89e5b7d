#include "Platform/Foundation/Text/NSScanner.h"

#include "Platform/Ascii/HexDigit.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <algorithm>
#include <limits>

NS_IMPLEMENTATION(NSScanner) {}

std::optional<std::uint32_t> NSScanner::scanHexInt() {
    const auto &units = text_->units();
    const auto skipped = NSCharacterSet::whitespaceAndNewlineCharacterSet();
    std::size_t at = location_;
    while (at < units.size() && skipped->characterIsMember(units[at]))
        ++at;
    if (units.compare(at, 2, u"0x") == 0 || units.compare(at, 2, u"0X") == 0)
        at += 2;
    const std::size_t firstDigit = at;
    constexpr std::uint64_t highest = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t value = 0;
    for (; at < units.size(); ++at) {
        const auto digit = ascii::hexDigitValue(units[at]);
        if (!digit)
            break;
        value = std::min(value * 16 + *digit, highest);
    }
    if (at == firstDigit)
        return std::nullopt;
    location_ = at;
    return static_cast<std::uint32_t>(value);
}
