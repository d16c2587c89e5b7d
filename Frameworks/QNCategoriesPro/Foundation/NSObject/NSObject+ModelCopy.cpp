#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/PropertyValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/_QNModelMeta.h"
#include "Platform/Foundation/NSNull.h"

namespace {

template <class T>
void copyAs(const _QNModelPropertyMeta &meta, NSObject &from, NSObject &to) {
    meta.set<T>(to, meta.get<T>(from));
}

void copyProperty(const _QNModelPropertyMeta &meta, NSObject &from, NSObject &to) {
    switch (meta.valueType()) {
    case QNEncodingTypeBool:
        return copyAs<bool>(meta, from, to);
    case QNEncodingTypeInt8:
        return copyAs<std::int8_t>(meta, from, to);
    case QNEncodingTypeUInt8:
        return copyAs<std::uint8_t>(meta, from, to);
    case QNEncodingTypeInt16:
        return copyAs<std::int16_t>(meta, from, to);
    case QNEncodingTypeUInt16:
        return copyAs<std::uint16_t>(meta, from, to);
    case QNEncodingTypeInt32:
        return copyAs<std::int32_t>(meta, from, to);
    case QNEncodingTypeUInt32:
        return copyAs<std::uint32_t>(meta, from, to);
    case QNEncodingTypeInt64:
        return copyAs<std::int64_t>(meta, from, to);
    case QNEncodingTypeUInt64:
        return copyAs<std::uint64_t>(meta, from, to);
    case QNEncodingTypeFloat:
        return copyAs<float>(meta, from, to);
    case QNEncodingTypeDouble:
        return copyAs<double>(meta, from, to);
    case QNEncodingTypeLongDouble:
        return copyAs<long double>(meta, from, to);
    case QNEncodingTypeObject:
    case QNEncodingTypeBlock:
        return copyAs<id>(meta, from, to);
    case QNEncodingTypeClass:
        return copyAs<Class>(meta, from, to);
    case QNEncodingTypeSEL:
        return copyAs<SEL>(meta, from, to);
    case QNEncodingTypePointer:
    case QNEncodingTypeCString:
        return copyAs<void *>(meta, from, to);
    case QNEncodingTypeStruct:
    case QNEncodingTypeUnion:
        return to.setValue(qn::valueOfProperty(from, meta), meta._name);
    default:
        return;
    }
}

} // namespace

id qn::modelCopy(const id &model) {
    if (!model || peek<NSNull>(model))
        return model;
    const auto meta = _QNModelMeta::metaWithClass(model->isa());
    if (meta->_nsType != FoundationKind::None)
        return model->copy();
    id copy = class_createInstance(model->isa());
    if (copy)
        for (const id &property : meta->_allPropertyMetas)
            copyProperty(static_cast<const _QNModelPropertyMeta &>(*property), *model, *copy);
    return copy;
}
