#include "Frameworks/QNCategoriesPro/Foundation/NSString/HTMLReferences.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/HTMLEscapeMap.h"
#include "Platform/Ascii/HexDigit.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace {

constexpr std::size_t shortestReference = 4, longestReference = 10;

std::optional<char16_t> unitOfNumber(std::u16string_view digits, unsigned base) {
    unsigned value = 0;
    for (const char16_t digit : digits) {
        const auto worth = ascii::hexDigitValue(digit);
        if (!worth || *worth >= base)
            return std::nullopt;
        value = value * base + *worth;
    }
    return value >= 1 && value <= 65534 ? std::optional(static_cast<char16_t>(value)) : std::nullopt;
}

std::optional<char16_t> unitOfName(std::u16string_view reference) {
    static const auto &units = *new std::unordered_map<std::u16string_view, char16_t>([] {
        std::unordered_map<std::u16string_view, char16_t> made;
        for (const qn::HTMLEscape &entry : qn::gAsciiHTMLEscapeMap)
            made.emplace(entry.text, entry.unit);
        return made;
    }());
    const auto found = units.find(reference);
    return found == units.end() ? std::nullopt : std::optional(found->second);
}

/// The code unit of a reference, from "&" through ";".
std::optional<char16_t> unitOfReference(std::u16string_view reference) {
    if (reference.size() < shortestReference)
        return std::nullopt;
    if (reference[1] != u'#')
        return unitOfName(reference);
    const bool hexadecimal = reference[2] == u'x' || reference[2] == u'X';
    const std::size_t start = hexadecimal ? 3 : 2;
    return unitOfNumber(reference.substr(start, reference.size() - 1 - start), hexadecimal ? 16 : 10);
}

} // namespace

void qn::html::resolveReferences(std::u16string &text) {
    const std::u16string_view units = text;
    auto out = text.begin(); // never ahead of what was read
    for (std::size_t start = 0;;) {
        const std::size_t reference = std::min(units.find(u'&', start), units.size());
        out = std::copy(units.data() + start, units.data() + reference, out);
        if (reference == units.size())
            break;
        // A reference ends before the next one begins.
        const auto rest = units.substr(reference, longestReference);
        const std::size_t end = rest.find_first_of(u"&;", 1);
        const bool whole = end != rest.npos && rest[end] == u';';
        const auto unit = whole ? unitOfReference(rest.substr(0, end + 1)) : std::nullopt;
        *out++ = unit.value_or(u'&');
        start = reference + (unit ? end + 1 : 1);
    }
    text.erase(out, text.end());
}
