#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/PropertyValue.h"

#include <cmath>

Ref<NSNumber> qn::numberOfProperty(NSObject &model, const _QNModelPropertyMeta &meta) {
    switch (meta.valueType()) {
    case QNEncodingTypeBool:
        return NSNumber::numberWithBool(meta.get<bool>(model));
    case QNEncodingTypeInt8:
        return NSNumber::numberWithChar(meta.get<std::int8_t>(model));
    case QNEncodingTypeUInt8:
        return NSNumber::numberWithUnsignedChar(meta.get<std::uint8_t>(model));
    case QNEncodingTypeInt16:
        return NSNumber::numberWithShort(meta.get<std::int16_t>(model));
    case QNEncodingTypeUInt16:
        return NSNumber::numberWithUnsignedShort(meta.get<std::uint16_t>(model));
    case QNEncodingTypeInt32:
        return NSNumber::numberWithInt(meta.get<std::int32_t>(model));
    case QNEncodingTypeUInt32:
        return NSNumber::numberWithUnsignedInt(meta.get<std::uint32_t>(model));
    case QNEncodingTypeInt64:
        return NSNumber::numberWithLongLong(meta.get<std::int64_t>(model));
    case QNEncodingTypeUInt64:
        return NSNumber::numberWithUnsignedLongLong(meta.get<std::uint64_t>(model));
    case QNEncodingTypeFloat:
        return NSNumber::numberWithFloat(meta.get<float>(model));
    case QNEncodingTypeDouble:
        return NSNumber::numberWithDouble(meta.get<double>(model));
    default:
        return NSNumber::numberWithDouble(static_cast<double>(meta.get<long double>(model)));
    }
}

Ref<NSNumber> qn::finiteNumberOfProperty(NSObject &model, const _QNModelPropertyMeta &meta) {
    auto number = numberOfProperty(model, meta);
    return number->isFloating() && !std::isfinite(number->doubleValue()) ? nullptr : number;
}

id qn::valueOfProperty(const NSObject &model, const _QNModelPropertyMeta &meta) {
    auto &read = const_cast<NSObject &>(model); // key-value coding takes getters for const, too
    if (meta._isReadByGetter && meta._isCNumber)
        return numberOfProperty(read, meta);
    if (meta._isReadByGetter &&
        (meta.valueType() == QNEncodingTypeObject || meta.valueType() == QNEncodingTypeBlock))
        return meta.get<id>(read);
    return model.valueForKey(NSString::stringWithUTF8String(sel_getName(meta._getter)));
}
