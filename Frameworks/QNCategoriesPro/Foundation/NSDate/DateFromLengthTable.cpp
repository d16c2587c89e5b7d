#include "Frameworks/QNCategoriesPro/Foundation/NSDate/DateFromLengthTable.h"

#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSDateFormatter.h"
#include "Platform/Foundation/NSLocale.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Foundation/NSTimeZone.h"

#include <array>

namespace {

constexpr std::size_t longestText = 34, indexOfT = 10;

using Parse = Ref<NSDate> (*)(const Ref<NSString> &text);

/// One shared formatter a pattern.
template <const char16_t *pattern>
Ref<NSDate> parse(const Ref<NSString> &text) {
    static const auto &formatter = *new Ref<NSDateFormatter>(make<NSDateFormatter>(
        make<NSString>(pattern), NSLocale::posixLocale(), NSTimeZone::timeZoneWithName(u"GMT"_ns)));
    return formatter->dateFromString(text);
}

template <Parse withT, Parse withBlank>
Ref<NSDate> parseEither(const Ref<NSString> &text) {
    return text->units()[indexOfT] == u'T' ? withT(text) : withBlank(text);
}

template <Parse first, Parse second>
Ref<NSDate> parseFirstOf(const Ref<NSString> &text) {
    const auto date = first(text);
    return date ? date : second(text);
}

constexpr char16_t day[] = u"yyyy-MM-dd";
constexpr char16_t second[] = u"yyyy-MM-dd'T'HH:mm:ss";
constexpr char16_t secondBlank[] = u"yyyy-MM-dd HH:mm:ss";
constexpr char16_t fraction[] = u"yyyy-MM-dd'T'HH:mm:ss.SSS";
constexpr char16_t fractionBlank[] = u"yyyy-MM-dd HH:mm:ss.SSS";
constexpr char16_t secondOffset[] = u"yyyy-MM-dd'T'HH:mm:ssZ";
constexpr char16_t fractionOffset[] = u"yyyy-MM-dd'T'HH:mm:ss.SSSZ";
constexpr char16_t words[] = u"EEE MMM dd HH:mm:ss Z yyyy";
constexpr char16_t wordsFraction[] = u"EEE MMM dd HH:mm:ss.SSS Z yyyy";

constexpr auto table = [] {
    std::array<Parse, longestText + 1> made{};
    made[10] = parse<day>;
    made[19] = parseEither<parse<second>, parse<secondBlank>>;
    made[20] = made[25] = parse<secondOffset>;
    made[23] = parseEither<parse<fraction>, parse<fractionBlank>>;
    made[24] = parseFirstOf<parse<secondOffset>, parse<fractionOffset>>;
    made[28] = made[29] = parse<fractionOffset>;
    made[30] = parse<words>;
    made[34] = parse<wordsFraction>;
    return made;
}();

} // namespace

Ref<NSDate> qn::dateFromLengthTable(const Ref<NSString> &text) {
    const Parse parser = text && text->length() < table.size() ? table[text->length()] : nullptr;
    return parser ? parser(text) : nullptr;
}
