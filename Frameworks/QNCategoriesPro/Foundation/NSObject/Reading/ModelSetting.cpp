#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelSetting.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelContainerValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelFoundationValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelNesting.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelNumberValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelRuntimeValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelWalk.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Runtime/Object/Message.h"

namespace {

const _QNModelPropertyMeta &metaOf(const id &element) {
    return static_cast<const _QNModelPropertyMeta &>(*element);
}

/// None where something on the way is not a dictionary.
id valueAtPath(const NSDictionary &dictionary, const NSArray &path) {
    id value;
    const NSDictionary *inner = &dictionary;
    for (NSUInteger part = 0; part < path.count(); ++part) {
        if (!inner)
            return nullptr;
        value = inner->objectForKey(path.objectAtIndex(part));
        inner = peek<NSDictionary>(value);
    }
    return value;
}

id firstValue(const NSDictionary &dictionary, const NSArray &keys) {
    for (NSUInteger index = 0; index < keys.count(); ++index) {
        const id key = keys.objectAtIndex(index);
        const auto *path = peek<NSArray>(key);
        if (id value = path ? valueAtPath(dictionary, *path) : dictionary.objectForKey(key))
            return value;
    }
    return nullptr;
}

void setNestedModel(const qn::PropertyStore &store, const id &dictionary) {
    if (const id existing = store.meta.get<id>(store.model)) {
        qn::fillModel(*existing, dictionary);
        return;
    }
    Class cls = store.meta._cls;
    if (store.meta._hasCustomClassFromDictionary) {
        cls = qn::hooks::customClass(cls, as<NSDictionary>(dictionary));
        if (!cls)
            cls = store.meta._genericCls;
    }
    if (qn::ModelNesting::admits(*dictionary))
        store(qn::newModel(cls, dictionary));
}

void setObject(const qn::PropertyStore &store, const id &value) {
    const auto &meta = store.meta;
    if (meta._nsType != qn::FoundationKind::None) {
        if (!qn::storeFoundationValue(store, value) && !qn::storeContainerValue(store, value) &&
            peek<NSNull>(value))
            store(nullptr);
    } else if (peek<NSNull>(value))
        store(nullptr);
    else if (value && (!meta._cls || value->isKindOfClass(meta._cls)))
        store(value);
    else if (peek<NSDictionary>(value))
        setNestedModel(store, value);
}

void walkProperties(const Ref<NSArray> &metas, const ModelSetContext &context) {
    qn::walkElements(*metas,
                     [&](const id &meta) { ModelSetWithPropertyMetaArrayFunction(metaOf(meta), context); });
}

void fill(const ModelSetContext &context) {
    const _QNModelMeta &meta = context.modelMeta;
    if (meta._keyMappedCount < context.dictionary.count())
        return walkProperties(meta._allPropertyMetas, context);
    qn::walkEntries(context.dictionary, [&](const id &key, const id &value) {
        ModelSetWithDictionaryFunction(key, value, context);
    });
    walkProperties(meta._keyPathPropertyMetas, context);
    walkProperties(meta._multiKeysPropertyMetas, context);
}

} // namespace

void ModelSetWithDictionaryFunction(const id &key, const id &value, const ModelSetContext &context) {
    for (const auto *meta = context.modelMeta.headForKey(key); meta; meta = meta->_next.get())
        if (meta->_setter)
            ModelSetValueForProperty(context.model, value, *meta);
}

void ModelSetWithPropertyMetaArrayFunction(const _QNModelPropertyMeta &meta, const ModelSetContext &context) {
    if (!meta._setter)
        return;
    const NSDictionary &dictionary = context.dictionary;
    const id value = meta._mappedToKeyArray  ? firstValue(dictionary, *meta._mappedToKeyArray)
                     : meta._mappedToKeyPath ? valueAtPath(dictionary, *meta._mappedToKeyPath)
                                             : dictionary.objectForKey(meta._mappedToKey);
    if (value)
        ModelSetValueForProperty(context.model, value, meta);
}

void ModelSetValueForProperty(NSObject &model, const id &value, const _QNModelPropertyMeta &meta) {
    if (meta._isCNumber)
        qn::setNumber(model, value, meta);
    else if (meta.valueType() == QNEncodingTypeObject)
        setObject({model, meta}, value);
    else
        qn::setRuntimeValue(model, value, meta);
}

bool qn::fillModel(NSObject &model, const id &given) {
    if (!peek<NSDictionary>(given))
        return false;
    const auto meta = _QNModelMeta::metaWithClass(model.isa());
    if (meta->_keyMappedCount == 0)
        return false;
    id dictionary = given;
    if (meta->_hasCustomWillTransformFromDictionary)
        dictionary = objc_msgSend<id>(
            model.self(), runtime::selectorOf<hooks::modelCustomWillTransformFromDictionary>(), given);
    const auto *contents = peek<NSDictionary>(dictionary);
    if (!contents || !ModelNesting::admits(*contents))
        return false;
    {
        const ModelNesting nesting(*contents);
        fill({*meta, model, *contents});
    }
    return !meta->_hasCustomTransformFromDictionary ||
           objc_msgSend<bool>(model.self(), runtime::selectorOf<hooks::modelCustomTransformFromDictionary>(),
                              dictionary);
}

id qn::newModel(Class cls, const id &dictionary) {
    id model = class_createInstance(cls);
    if (model)
        fillModel(*model, dictionary);
    return model;
}
