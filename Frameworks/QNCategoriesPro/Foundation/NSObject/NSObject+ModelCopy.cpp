// Copying models; declared in NSObject+ModelValue.h.
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/PropertyValue.h"
#include "Platform/Foundation/Collections/NSNull.h"

namespace {

template <class T>
void copyAs(const _QNModelPropertyMeta &meta, NSObject &from, NSObject &to) {
    meta.set<T>(to, meta.get<T>(from));
}

void copyProperty(const _QNModelPropertyMeta &meta, NSObject &from, NSObject &to) {
    if (meta._isCNumber)
        return meta.withNumberType([&]<class T>() { copyAs<T>(meta, from, to); });
    switch (meta.valueType()) {
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
