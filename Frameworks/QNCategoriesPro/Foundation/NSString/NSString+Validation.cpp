#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+Validation.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/HanReading.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/CheckDigits.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/IBAN.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/PostalCodes.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/TextMatcher.h"
#include "Platform/Foundation/System/URLParts.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <chrono>

using qn::TextMatcher;

namespace {

using Text = std::u16string_view;

/// The empty text for none: no form accepts it.
Text unitsOf(const Ref<NSString> &text) {
    return text ? Text(text->units()) : Text();
}

bool isAddress(int family, Text text) {
    std::array<char, INET6_ADDRSTRLEN> ascii{};
    if (text.size() >= ascii.size() ||
        std::ranges::any_of(text, [](char16_t unit) { return unit == 0 || unit > 127; }))
        return false;
    std::ranges::transform(text, ascii.begin(), [](char16_t unit) { return static_cast<char>(unit); });
    in6_addr address;
    return inet_pton(family, ascii.data(), &address) == 1;
}

bool isHost(Text text) {
    constexpr std::size_t longest = 253;
    thread_local TextMatcher labels(u"(?:(?!-)[A-Za-z0-9-]{1,63}+(?<!-)\\.)*+"
                                    u"(?![0-9]++\\z)(?!-)[A-Za-z0-9-]{1,63}+(?<!-)");
    return text.size() <= longest && labels.matches(text);
}

/// What stands before the "@".
bool isLocalPart(Text text) {
    constexpr std::size_t longest = 64;
    thread_local TextMatcher dotsOrQuotes(
        u"[A-Za-z0-9!#$%&'*+/=?^_`{|}~-]++(?:\\.[A-Za-z0-9!#$%&'*+/=?^_`{|}~-]++)*+"
        u"|\"(?:[ !#-\\[\\]-~]|\\\\[ -~])*+\"");
    return text.size() <= longest && dotsOrQuotes.matches(text);
}

/// What stands behind it: a name, or an address in brackets.
bool isMailDomain(Text text) {
    if (!text.starts_with(u'[') || !text.ends_with(u']'))
        return isHost(text);
    const Text address = text.substr(1, text.size() - 2);
    thread_local TextMatcher tag(u"(?i)IPv6:");
    constexpr std::size_t tagLength = 5;
    return tag.matches(address.substr(0, tagLength)) ? isAddress(AF_INET6, address.substr(tagLength))
                                                     : isAddress(AF_INET, address);
}

bool isDate(Text digits) {
    const auto number = [&](std::size_t at, std::size_t size) {
        int value = 0;
        for (const char16_t digit : digits.substr(at, size))
            value = 10 * value + (digit - u'0');
        return value;
    };
    using namespace std::chrono;
    return year_month_day(year(number(0, 4)), month(static_cast<unsigned>(number(4, 2))),
                          day(static_cast<unsigned>(number(6, 2))))
        .ok();
}

bool isMod11_2Number(Text text) {
    if (text.size() < 2)
        return false;
    const Text digits = text.substr(0, text.size() - 1);
    return qn::isDigits(digits) && (text.back() == u'X' || qn::isDigits(text.substr(digits.size()))) &&
           qn::passesMod11_2(text);
}

} // namespace

bool qn::isEmailAddress(const Ref<NSString> &text) {
    constexpr std::size_t longest = 254;
    const Text units = unitsOf(text);
    const std::size_t at = units.rfind(u'@');
    return units.size() <= longest && at != Text::npos && isLocalPart(units.substr(0, at)) &&
           isMailDomain(units.substr(at + 1));
}

bool qn::isURL(const Ref<NSString> &text) {
    const URLParts parts(unitsOf(text));
    return parts.scheme && parts.areValid();
}

bool qn::isHostName(const Ref<NSString> &text) {
    return isHost(unitsOf(text));
}

bool qn::isIPv4Address(const Ref<NSString> &text) {
    return isAddress(AF_INET, unitsOf(text));
}

bool qn::isIPv6Address(const Ref<NSString> &text) {
    return isAddress(AF_INET6, unitsOf(text));
}

bool qn::isMACAddress(const Ref<NSString> &text) {
    thread_local TextMatcher bytes(u"[0-9A-Fa-f]{2}([:-])[0-9A-Fa-f]{2}(?:\\1[0-9A-Fa-f]{2}){4}"
                                   u"|[0-9A-Fa-f]{4}(?:\\.[0-9A-Fa-f]{4}){2}");
    return bytes.matches(unitsOf(text));
}

bool qn::isE164TelephoneNumber(const Ref<NSString> &text) {
    thread_local TextMatcher number(u"\\+[1-9][0-9]{1,14}+");
    return number.matches(unitsOf(text));
}

bool qn::isTelephoneNumber(const Ref<NSString> &text) {
    constexpr std::size_t longest = 64; // the longest number with a separator behind each digit, and more
    constexpr std::ptrdiff_t leastDigits = 3, mostDigits = 15;
    thread_local TextMatcher number(
        u"(?i)\\+?+(?:[0-9]++|\\([0-9]++\\))(?:[ ./-]?+(?:[0-9]++|\\([0-9]++\\)))*+"
        u"(?:(?:;ext=| ?+ext\\.?+ ?+| ?+x ?+)[0-9]{1,7}+)?+");
    const Text units = unitsOf(text);
    if (units.size() > longest || !number.matches(units))
        return false;
    const auto digits = std::ranges::count_if(units.substr(0, units.find_first_of(u";eExX")),
                                              [](char16_t unit) { return unit >= u'0' && unit <= u'9'; });
    return digits >= leastDigits && digits <= mostDigits;
}

bool qn::isPostalCode(const Ref<NSString> &text, const Ref<NSString> &country) {
    return isPostalCodeOf(unitsOf(country), unitsOf(text));
}

bool qn::hasLuhnCheckDigit(const Ref<NSString> &text) {
    const Text units = unitsOf(text);
    return units.size() >= 2 && isDigits(units) && passesLuhn(units);
}

bool qn::isIBAN(const Ref<NSString> &text) {
    thread_local TextMatcher groups(u"(?:[A-Z0-9]{4} ){1,8}[A-Z0-9]{1,4}");
    std::u16string units(unitsOf(text));
    if (groups.matches(units))
        std::erase(units, u' ');
    return isCompactIBAN(units);
}

bool qn::hasMod11_2CheckCharacter(const Ref<NSString> &text) {
    return isMod11_2Number(unitsOf(text));
}

bool qn::isChineseIdentityNumber(const Ref<NSString> &text) {
    const Text units = unitsOf(text);
    return units.size() == 18 && isMod11_2Number(units) && isDate(units.substr(6, 8));
}

bool qn::isHexadecimal(const Ref<NSString> &text) {
    thread_local TextMatcher digits(u"[0-9A-Fa-f]++");
    return digits.matches(unitsOf(text));
}

bool qn::isAllLetters(const Ref<NSString> &text) {
    thread_local TextMatcher letters(u"\\p{L}[\\p{L}\\p{M}]*+");
    return letters.matches(unitsOf(text));
}

bool qn::containsChinese(const Ref<NSString> &text) {
    return han::hasIdeographs(unitsOf(text));
}

bool qn::containsEmoji(const Ref<NSString> &text) {
    thread_local TextMatcher emoji(u"\\p{Emoji_Presentation}(?!\\uFE0E)|\\p{Emoji}\\uFE0F");
    return emoji.finds(unitsOf(text));
}
