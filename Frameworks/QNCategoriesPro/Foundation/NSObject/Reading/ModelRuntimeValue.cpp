#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelRuntimeValue.h"

#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Numbers/NSValue.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSBlock.h"

namespace {

void setClass(NSObject &model, const id &value, const _QNModelPropertyMeta &meta) {
    const auto name = as<NSString>(value);
    const Class cls = name ? runtime::findForeignClass(name->utf8()) : as<objc_class>(value).get();
    if (cls || peek<NSNull>(value))
        meta.set<Class>(model, cls);
}

void setSelector(NSObject &model, const id &value, const _QNModelPropertyMeta &meta) {
    const auto *name = peek<NSString>(value);
    const SEL selector = name ? runtime::registerForeignName(name->utf8()) : nullptr;
    if (selector || peek<NSNull>(value))
        meta.set<SEL>(model, selector);
}

void setBlock(NSObject &model, const id &value, const _QNModelPropertyMeta &meta) {
    if (peek<NSBlock>(value))
        meta.set<id>(model, value);
    else if (peek<NSNull>(value))
        meta.set<id>(model, nullptr);
}

void setPointer(NSObject &model, const id &value, const _QNModelPropertyMeta &meta) {
    if (const auto *pointer = peek<NSValue>(value); pointer && pointer->objCType() == "^v")
        meta.set<void *>(model, pointer->pointerValue());
    else if (peek<NSNull>(value))
        meta.set<void *>(model, nullptr);
}

void setBytes(NSObject &model, const id &value, const _QNModelPropertyMeta &meta) {
    if (const auto *bytes = peek<NSValue>(value);
        bytes && bytes->objCType() == meta._info->typeEncoding()->utf8())
        model.setValue(value, meta._name);
}

} // namespace

void qn::setRuntimeValue(NSObject &model, const id &value, const _QNModelPropertyMeta &meta) {
    switch (meta.valueType()) {
    case QNEncodingTypeClass:
        return setClass(model, value, meta);
    case QNEncodingTypeSEL:
        return setSelector(model, value, meta);
    case QNEncodingTypeBlock:
        return setBlock(model, value, meta);
    case QNEncodingTypePointer:
    case QNEncodingTypeCString:
        return setPointer(model, value, meta);
    case QNEncodingTypeStruct:
    case QNEncodingTypeUnion:
    case QNEncodingTypeCArray:
        return setBytes(model, value, meta);
    default:
        return;
    }
}
