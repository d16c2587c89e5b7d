#include "Frameworks/QNCategoriesPro/DateFromLengthTable.h"

#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Dates/NSDateFormatter.h"
#include "Platform/Foundation/Dates/NSTimeZone.h"
#include "Platform/Foundation/Text/NSLocale.h"
#include "Platform/Foundation/Text/NSString.h"

#include <array>

namespace {

constexpr char16_t day[] = u"yyyy-MM-dd";
constexpr char16_t second[] = u"yyyy-MM-dd'T'HH:mm:ss";
constexpr char16_t secondBlank[] = u"yyyy-MM-dd HH:mm:ss";
constexpr char16_t fraction[] = u"yyyy-MM-dd'T'HH:mm:ss.SSS";
constexpr char16_t fractionBlank[] = u"yyyy-MM-dd HH:mm:ss.SSS";
constexpr char16_t secondOffset[] = u"yyyy-MM-dd'T'HH:mm:ssZ";
constexpr char16_t fractionOffset[] = u"yyyy-MM-dd'T'HH:mm:ss.SSSZ";
constexpr char16_t words[] = u"EEE MMM dd HH:mm:ss Z yyyy";
constexpr char16_t wordsFraction[] = u"EEE MMM dd HH:mm:ss.SSS Z yyyy";

/// The shared formatter of a pattern.
template <const char16_t *pattern>
const NSDateFormatter *shared() {
    static const auto &formatter = *new Ref<NSDateFormatter>(make<NSDateFormatter>(
        make<NSString>(pattern), NSLocale::posixLocale(), NSTimeZone::timeZoneWithName(u"GMT"_ns)));
    return formatter.get();
}

/// Tried in turn; null where there are no more.
using Formatters = std::array<const NSDateFormatter *, 2>;

Formatters formattersFor(const NSString &text) {
    constexpr std::size_t indexOfT = 10;
    const auto hasT = [&text] { return text.units()[indexOfT] == u'T'; };
    switch (text.length()) {
    case 10:
        return {shared<day>()};
    case 19:
        return {hasT() ? shared<second>() : shared<secondBlank>()};
    case 20:
    case 25:
        return {shared<secondOffset>()};
    case 23:
        return {hasT() ? shared<fraction>() : shared<fractionBlank>()};
    case 24:
        return {shared<secondOffset>(), shared<fractionOffset>()};
    case 28:
    case 29:
        return {shared<fractionOffset>()};
    case 30:
        return {shared<words>()};
    case 34:
        return {shared<wordsFraction>()};
    default:
        return {};
    }
}

using Read = Ref<NSDate> (NSDateFormatter::*)(const Ref<NSString> &text) const;

template <Read read>
Ref<NSDate> firstDate(const Ref<NSString> &text) {
    if (text)
        for (const auto *formatter : formattersFor(*text))
            if (auto date = formatter ? (formatter->*read)(text) : nullptr)
                return date;
    return nullptr;
}

} // namespace

Ref<NSDate> qn::dateFromFixedForm(const Ref<NSString> &text) {
    return firstDate<&NSDateFormatter::dateFromFixedString>(text);
}

Ref<NSDate> qn::dateFromLengthTable(const Ref<NSString> &text) {
    // No text fits two of the forms, so trying the quick way first changes no result.
    const auto date = dateFromFixedForm(text);
    return date ? date : firstDate<&NSDateFormatter::dateFromString>(text);
}
