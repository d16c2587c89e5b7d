#include "Platform/Foundation/Collections/CollectionDescription.h"

#include "Platform/Ascii/Ascii.h"
#include "Platform/Ascii/HexDigit.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Message.h"

#include <algorithm>

namespace {

bool isWordUnit(char16_t unit) {
    return ascii::isLetter(unit) || ascii::isDigit(unit) || unit == '_';
}

void appendEscaped(std::u16string &out, char16_t unit) {
    switch (unit) {
    case '"':
    case '\\':
        out += u'\\';
        out += unit;
        return;
    case '\n':
        out += u"\\n";
        return;
    case '\r':
        out += u"\\r";
        return;
    case '\t':
        out += u"\\t";
        return;
    default:
        break;
    }
    if (unit >= 0x20 && unit < 0x7F) {
        out += unit;
        return;
    }
    out += u"\\U";
    for (int shift = 12; shift >= 0; shift -= 4)
        out += ascii::lowerHexDigit<char16_t>(static_cast<std::size_t>(unit >> shift));
}

Ref<NSString> elementDescription(const id &element, const id &locale) {
    const SEL localized = sel_registerName("descriptionWithLocale:");
    if (locale && element->respondsToSelector(localized))
        if (auto text = as<NSString>(objc_msgSend<id>(element, localized, locale)))
            return text;
    return descriptionOf(*element);
}

} // namespace

std::u16string indentation(NSUInteger levels) {
    constexpr NSUInteger deepest = 512;
    return std::u16string(4 * std::min(levels, deepest), u' ');
}

std::u16string quotedDescription(const std::u16string &units) {
    std::u16string text = u"\"";
    for (const char16_t unit : units)
        appendEscaped(text, unit);
    return text + u"\"";
}

std::u16string collectionElementDescription(const id &element, const id &locale, NSUInteger indent) {
    DescriptionLength::use(4 * indent); // the blanks before it
    if (const auto array = as<NSArray>(element))
        return array->descriptionWithLocale(locale, indent)->units();
    if (const auto dictionary = as<NSDictionary>(element))
        return dictionary->descriptionWithLocale(locale, indent)->units();
    if (const auto set = as<NSSet>(element))
        return set->descriptionWithLocale(locale, indent)->units();
    const auto text = elementDescription(element, locale);
    const auto &units = text->units();
    const bool word = !units.empty() && std::all_of(units.begin(), units.end(), isWordUnit);
    auto described = word ? units : quotedDescription(units);
    DescriptionLength::use(described.size());
    return described;
}
