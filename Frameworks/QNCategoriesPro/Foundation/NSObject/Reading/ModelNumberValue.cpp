#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelNumberValue.h"

#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <cmath>
#include <optional>

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

/// 64 bits of a number. A decimal one is read as signed for either signedness.
template <class T>
T wide(const NSNumber &number) {
    return std::is_signed_v<T> || number.isDecimal() ? static_cast<T>(number.longLongValue())
                                                     : static_cast<T>(number.unsignedLongLongValue());
}

template <class T>
T finiteOrZero(T value) {
    return std::isfinite(value) ? value : 0;
}

} // namespace

Ref<NSNumber> qn::numberFromValue(const id &value) {
    if (const auto *text = peek<NSString>(value))
        return numberFromText(*text);
    return as<NSNumber>(value);
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
    switch (meta.valueType()) {
    case QNEncodingTypeBool:
        return meta.set<bool>(model, number.boolValue());
    case QNEncodingTypeInt8:
        return meta.set<std::int8_t>(model, number.charValue());
    case QNEncodingTypeUInt8:
        return meta.set<std::uint8_t>(model, number.unsignedCharValue());
    case QNEncodingTypeInt16:
        return meta.set<std::int16_t>(model, number.shortValue());
    case QNEncodingTypeUInt16:
        return meta.set<std::uint16_t>(model, number.unsignedShortValue());
    case QNEncodingTypeInt32:
        return meta.set<std::int32_t>(model, number.intValue());
    case QNEncodingTypeUInt32:
        return meta.set<std::uint32_t>(model, number.unsignedIntValue());
    case QNEncodingTypeInt64:
        return meta.set<std::int64_t>(model, wide<std::int64_t>(number));
    case QNEncodingTypeUInt64:
        return meta.set<std::uint64_t>(model, wide<std::uint64_t>(number));
    case QNEncodingTypeFloat:
        return meta.set<float>(model, finiteOrZero(number.floatValue()));
    case QNEncodingTypeDouble:
        return meta.set<double>(model, finiteOrZero(number.doubleValue()));
    default:
        return meta.set<long double>(model, std::isnan(number.doubleValue()) ? 0 : number.doubleValue());
    }
}
