#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelNumberValue.h"

#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::u16string_view truths[] = {u"TRUE", u"True", u"true", u"YES", u"Yes", u"yes"};
constexpr std::u16string_view falsehoods[] = {u"FALSE", u"False", u"false", u"NO", u"No", u"no"};
constexpr std::u16string_view nulls[] = {u"NIL",    u"Nil",    u"nil",    u"NULL",   u"Null",   u"null",
                                         u"(NULL)", u"(Null)", u"(null)", u"<NULL>", u"<Null>", u"<null>"};

Ref<NSNumber> numberFromText(const NSString &text) {
    const std::u16string &units = text.units();
    if (std::ranges::count(truths, units) > 0)
        return NSNumber::numberWithBool(true);
    if (std::ranges::count(falsehoods, units) > 0)
        return NSNumber::numberWithBool(false);
    if (std::ranges::count(nulls, units) > 0)
        return nullptr;
    if (units.find(u'.') == units.npos)
        return NSNumber::numberWithLongLong(text.integerValue());
    const double value = text.doubleValue();
    return std::isfinite(value) ? NSNumber::numberWithDouble(value) : nullptr;
}

/// What a property of the type gets: 64 bits of a decimal number are read as signed for either signedness,
/// and what is not finite counts as 0, but for the infinity of a `long double`.
template <class T>
T valueFor(const NSNumber &number) {
    if constexpr (std::same_as<T, std::uint64_t>)
        return number.isDecimal() ? static_cast<T>(number.longLongValue()) : number.unsignedLongLongValue();
    else if constexpr (std::same_as<T, long double>)
        return std::isnan(number.doubleValue()) ? 0 : number.doubleValue();
    else if constexpr (std::floating_point<T>)
        return std::isfinite(number.valueAs<T>()) ? number.valueAs<T>() : 0;
    else
        return number.valueAs<T>();
}

} // namespace

Ref<NSNumber> qn::numberFromValue(const id &value) {
    if (const auto *text = peek<NSString>(value))
        return numberFromText(*text);
    return as<NSNumber>(value);
}

bool qn::saysNumber(const NSString &text) {
    const std::u16string &units = text.units();
    const auto isAmong = [&](const auto &words) { return std::ranges::count(words, units) > 0; };
    if (isAmong(truths) || isAmong(falsehoods) || isAmong(nulls))
        return true;
    std::u16string_view rest = units;
    rest.remove_prefix(std::min(rest.find_first_not_of(u" \t\r\n"), rest.size()));
    rest.remove_prefix(rest.starts_with(u'-') || rest.starts_with(u'+') ? 1 : 0);
    rest.remove_prefix(rest.starts_with(u'.') ? 1 : 0);
    return !rest.empty() && rest.front() >= u'0' && rest.front() <= u'9';
}

void qn::setNumber(NSObject &model, const id &value, const _QNModelPropertyMeta &meta) {
    static const auto &zero = *new Ref<NSNumber>(NSNumber::numberWithLongLong(0));
    Ref<NSNumber> made;
    const NSNumber *given = peek<NSNumber>(value);
    if (!given) {
        made = numberFromValue(value);
        given = made ? made.get() : zero.get();
    }
    const NSNumber &number = *given;
    meta.withNumberType([&]<class T>() { meta.set<T>(model, valueFor<T>(number)); });
}
