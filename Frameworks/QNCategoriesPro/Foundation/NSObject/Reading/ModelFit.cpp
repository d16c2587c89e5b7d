#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelFit.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelFoundationValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelNumberValue.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/NSBlock.h"
#include "Platform/Runtime/Object/NSProperties.h"

#include <cmath>
#include <limits>

namespace {

/// Stands in for a model: the conversions store into it.
class ConvertedValue : public NSObject {
    NS_CLASS(ConvertedValue, NSObject)
public:
    id value;

    /// A property like the given one of a model.
    static Ref<_QNModelPropertyMeta> propertyLike(const _QNModelPropertyMeta &property) {
        const auto info = QNClassInfo::classInfoWithClass<ConvertedValue>();
        auto meta = _QNModelPropertyMeta::metaWithClassInfo(
            info, as<QNClassPropertyInfo>(info->propertyInfos()->objectForKey(u"value"_ns)), nullptr);
        meta->_nsType = property._nsType;
        return meta;
    }
};
NS_PROPERTIES(ConvertedValue, value)

/// As many digits as any whole number needs.
long double exactly(const NSNumber &number) {
    const char type = number.objCType();
    return type == 'Q'   ? static_cast<long double>(number.unsignedLongLongValue())
           : type == 'q' ? static_cast<long double>(number.longLongValue())
                         : static_cast<long double>(number.doubleValue());
}

template <class T>
bool isInRange(const NSNumber &number) {
    if constexpr (std::same_as<T, bool> || std::same_as<T, double> || std::same_as<T, long double>)
        return true;
    else {
        using Limits = std::numeric_limits<T>;
        const long double value = std::trunc(exactly(number));
        return value >= static_cast<long double>(Limits::lowest()) &&
               value <= static_cast<long double>(Limits::max());
    }
}

bool isNumber(const id &value) {
    const auto *text = peek<NSString>(value);
    return text ? qn::saysNumber(*text) : peek<NSNumber>(value) != nullptr;
}

std::optional<std::string> numberMisfit(const _QNModelPropertyMeta &property, const id &value) {
    if (!isNumber(value))
        return "which is no number";
    const auto number = qn::numberFromValue(value);
    const bool fits = !number || property.withNumberType([&]<class T>() { return isInRange<T>(*number); });
    return fits ? std::nullopt : std::optional<std::string>("which is out of range");
}

std::optional<std::string> foundationMisfit(const _QNModelPropertyMeta &property, const id &value) {
    if (property._nsType == qn::FoundationKind::Number)
        return isNumber(value) ? std::nullopt : std::optional<std::string>("which is no number");
    const auto converted = make<ConvertedValue>();
    const auto like = ConvertedValue::propertyLike(property);
    if (qn::storeFoundationValue({*converted, *like}, value) && converted->value)
        return std::nullopt;
    return "which makes no " + (property._cls ? property._cls->name() : "value");
}

std::optional<std::string> objectMisfit(const _QNModelPropertyMeta &property, const id &value) {
    const auto unless = [](bool fits, std::string reason) {
        return fits ? std::nullopt : std::optional(std::move(reason));
    };
    switch (property._nsType) {
    case qn::FoundationKind::None:
        return unless(!property._cls || value->isKindOfClass(property._cls) || peek<NSDictionary>(value),
                      "which is no object to make a " + (property._cls ? property._cls->name() : "model") +
                          " of");
    case qn::FoundationKind::Array:
    case qn::FoundationKind::MutableArray:
    case qn::FoundationKind::Set:
    case qn::FoundationKind::MutableSet:
        return unless(peek<NSArray>(value) || peek<NSSet>(value), "which is no array");
    case qn::FoundationKind::Dictionary:
    case qn::FoundationKind::MutableDictionary:
        return unless(peek<NSDictionary>(value), "which is no object");
    default:
        return foundationMisfit(property, value);
    }
}

std::optional<std::string> runtimeMisfit(const _QNModelPropertyMeta &property, const id &value) {
    const auto text = as<NSString>(value);
    switch (property.valueType()) {
    case QNEncodingTypeClass:
        if (text ? runtime::findForeignClass(text->utf8()) != nullptr : peek<objc_class>(value) != nullptr)
            return std::nullopt;
        return "which is no class";
    case QNEncodingTypeSEL:
        return text ? std::nullopt : std::optional<std::string>("which is no selector");
    default: // blocks, pointers and plain bytes
        if (peek<NSBlock>(value) || (peek<NSValue>(value) && !peek<NSNumber>(value)))
            return std::nullopt;
        return "which JSON cannot hold";
    }
}

} // namespace

std::optional<std::string> qn::misfitOf(const _QNModelPropertyMeta &property, const id &value) {
    if (property._isCNumber)
        return numberMisfit(property, value);
    return property.valueType() == QNEncodingTypeObject ? objectMisfit(property, value)
                                                        : runtimeMisfit(property, value);
}
