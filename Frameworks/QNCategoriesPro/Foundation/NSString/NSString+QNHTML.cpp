// Escaping and unescaping.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNHTML.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/HTMLReferences.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <charconv>
#include <span>

namespace {

using Table = std::span<const qn::HTMLEscape>;

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
    std::u16string units = text->units();
    html::resolveReferences(units);
    return make<NSString>(std::move(units));
}
