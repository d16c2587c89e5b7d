#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/PropertyValue.h"

#include <cmath>

Ref<NSNumber> qn::numberOfProperty(NSObject &model, const _QNModelPropertyMeta &meta) {
    return meta.withNumberType([&]<class T>() { return NSNumber::numberWith(meta.get<T>(model)); });
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
