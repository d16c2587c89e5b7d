// Escaping and unescaping.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNHTML.h"

#include "Platform/Foundation/HexDigit.h"
#include "Platform/Foundation/NSCharacterSet.h"
#include "Platform/Foundation/NSString.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <span>
#include <unordered_map>

namespace {

using Table = std::span<const qn::HTMLEscape>;

constexpr std::size_t shortestReference = 4, longestReference = 10;

/// What cannot pass unchanged.
NSCharacterSet::Members escapedUnits(Table table, bool escapingUnicode) {
    NSCharacterSet::Members units;
    if (escapingUnicode)
        units.set() <<= 128;
    for (const qn::HTMLEscape &entry : table)
        units.set(entry.unit);
    return units;
}

void appendEscape(std::u16string &out, char16_t unit, Table table) {
    const auto found =
        std::lower_bound(table.begin(), table.end(), unit, [](const qn::HTMLEscape &entry, unichar key) {
            return qn::EscapeMapCompare(key, entry) > 0;
        });
    if (found != table.end() && found->unit == unit) {
        out += found->text;
        return;
    }
    char digits[5];
    const auto end = std::to_chars(digits, digits + sizeof digits, static_cast<unsigned>(unit)).ptr;
    out += u"&#";
    out.append(digits, end);
    out += u';';
}

std::optional<char16_t> unitOfNumber(std::u16string_view digits, unsigned base) {
    unsigned value = 0;
    for (const char16_t digit : digits) {
        const auto worth = hexDigitValue(digit);
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

/// What a reference from "&" through ";" stands for.
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

Ref<NSString> qn::stringByEscapingHTMLUsingTable(const Ref<NSString> &text, const HTMLEscape *table,
                                                 NSUInteger size, bool escapingUnicode) {
    if (!text || text->length() == 0)
        return text;
    const Table entries(table, size / sizeof(HTMLEscape));
    const auto escaped = escapedUnits(entries, escapingUnicode);
    const std::u16string_view units = text->units();
    std::u16string made;
    made.reserve(units.size() + units.size() / 8);
    for (auto unit = units.begin();; ++unit) {
        const auto next = std::find_if(unit, units.end(), [&](char16_t one) { return escaped[one]; });
        made.append(unit, next);
        if (next == units.end())
            return make<NSString>(std::move(made));
        appendEscape(made, *next, entries);
        unit = next;
    }
}

Ref<NSString> qn::stringByEscapingForHTML(const Ref<NSString> &text) {
    return stringByEscapingHTMLUsingTable(text, gUnicodeHTMLEscapeMap, sizeof gUnicodeHTMLEscapeMap, false);
}

Ref<NSString> qn::stringByEscapingForAsciiHTML(const Ref<NSString> &text) {
    return stringByEscapingHTMLUsingTable(text, gAsciiHTMLEscapeMap, sizeof gAsciiHTMLEscapeMap, true);
}

Ref<NSString> qn::stringByUnescapingFromHTML(const Ref<NSString> &text) {
    if (!text || text->units().find(u'&') == std::u16string::npos)
        return text;
    const std::u16string_view units = text->units();
    std::u16string made;
    made.reserve(units.size());
    for (std::size_t start = 0;;) {
        const std::size_t reference = std::min(units.find(u'&', start), units.size());
        made += units.substr(start, reference - start);
        if (reference == units.size())
            return make<NSString>(std::move(made));
        // A reference ends before the next one begins.
        const auto rest = units.substr(reference, longestReference);
        const std::size_t end = rest.find_first_of(u"&;", 1);
        const bool whole = end != rest.npos && rest[end] == u';';
        const auto unit = whole ? unitOfReference(rest.substr(0, end + 1)) : std::nullopt;
        made += unit.value_or(u'&');
        start = reference + (unit ? end + 1 : 1);
    }
}
