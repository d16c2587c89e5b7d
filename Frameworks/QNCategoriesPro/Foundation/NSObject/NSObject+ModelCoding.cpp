// Archiving models; declared in NSObject+ModelValue.h.
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelNumberValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelRuntimeValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/PropertyValue.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Serialization/Archive/KeyedCoding.h"
#include "Platform/Foundation/Serialization/Archive/NSCoder.h"
#include "Platform/Foundation/Text/NSObjCRuntime.h"
#include "Platform/Runtime/Object/Message.h"

namespace {

SEL encodeSelector() {
    static const SEL selector = sel_registerName("encodeWithCoder:");
    return selector;
}

/// The object when it can be coded.
id coded(const id &value) {
    const bool isBareValue = peek<NSValue>(value) && !peek<NSNumber>(value);
    const bool takesPart =
        value && (KeyedCoding::ofObject(value) || value->respondsToSelector(encodeSelector()));
    return takesPart && !isBareValue ? value : nullptr;
}

/// The object that represents the property in an archive; none to leave it out.
id codedValue(NSObject &model, const _QNModelPropertyMeta &meta) {
    if (meta._isCNumber)
        return qn::finiteNumberOfProperty(model, meta);
    switch (meta.valueType()) {
    case QNEncodingTypeObject:
        return coded(meta.get<id>(model));
    case QNEncodingTypeSEL:
        return NSStringFromSelector(meta.get<SEL>(model));
    case QNEncodingTypeStruct:
    case QNEncodingTypeUnion:
        return meta._isStructAvailableForKeyedArchiver ? qn::valueOfProperty(model, meta) : nullptr;
    default:
        return nullptr;
    }
}

void setDecoded(NSObject &model, const _QNModelPropertyMeta &meta, NSCoder &coder) {
    const auto decoded = [&] { return coder.decodeObjectForKey(meta._name); };
    if (meta._isCNumber) {
        if (const auto number = as<NSNumber>(decoded()))
            qn::setNumber(model, number, meta);
        return;
    }
    switch (meta.valueType()) {
    case QNEncodingTypeObject:
        return meta.set<id>(model, decoded());
    case QNEncodingTypeSEL:
        if (const auto name = as<NSString>(decoded()))
            qn::setRuntimeValue(model, name, meta);
        return;
    case QNEncodingTypeStruct:
    case QNEncodingTypeUnion:
        return qn::setRuntimeValue(model, decoded(), meta);
    default:
        return;
    }
}

Ref<NSArray> propertiesOf(const id &model) {
    return _QNModelMeta::metaWithClass(model->isa())->_allPropertyMetas;
}

bool codesItself(const id &object) {
    return peek<NSNull>(object) || qn::foundationKindOf(object->isa()) != qn::FoundationKind::None;
}

} // namespace

void qn::modelEncodeWithCoder(const id &model, const Ref<NSCoder> &coder) {
    if (!model || !coder)
        return;
    if (codesItself(model))
        return objc_msgSend(model, encodeSelector(), id(coder));
    for (const id &property : propertiesOf(model)) {
        const auto &meta = static_cast<const _QNModelPropertyMeta &>(*property);
        if (const id value = codedValue(*model, meta))
            coder->encodeObject(value, meta._name);
    }
}

id qn::modelInitWithCoder(const id &model, const Ref<NSCoder> &coder) {
    if (!model || !coder || codesItself(model))
        return model;
    for (const id &property : propertiesOf(model))
        setDecoded(*model, static_cast<const _QNModelPropertyMeta &>(*property), *coder);
    return model;
}
