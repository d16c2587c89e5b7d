#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelContainerValue.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelNesting.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelSetting.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelWalk.h"
#include "Platform/Foundation/Collections/NSSet.h"

using qn::PropertyStore;

namespace {

/// A model of the elements' class; none for a value that is not a dictionary and where models nest too deep.
id elementModel(const _QNModelPropertyMeta &meta, const id &value) {
    if (!peek<NSDictionary>(value) || !qn::ModelNesting::admits(*value))
        return nullptr;
    const Class custom = meta._hasCustomClassFromDictionary
                             ? qn::hooks::customClass(meta._genericCls, as<NSDictionary>(value))
                             : nullptr;
    return qn::newModel(custom ? custom : meta._genericCls, value);
}

Ref<NSArray> elementModels(const _QNModelPropertyMeta &meta, const NSArray &array) {
    std::vector<id> models;
    models.reserve(array.count());
    qn::walkElements(array, [&](const id &element) {
        if (element && element->isKindOfClass(meta._genericCls))
            models.push_back(element);
        else if (id model = elementModel(meta, element))
            models.push_back(std::move(model));
    });
    return NSArray::arrayWithObjects(std::move(models));
}

bool storeArray(const PropertyStore &store, const id &value, bool isMutable) {
    id array = value;
    if (const auto *set = peek<NSSet>(value))
        array = set->allObjects();
    const auto *elements = peek<NSArray>(array);
    if (!elements)
        return false;
    if (store.meta._genericCls)
        array = elementModels(store.meta, *elements);
    return store(isMutable ? array->mutableCopy() : array);
}

bool storeDictionary(const PropertyStore &store, const id &value, bool isMutable) {
    const auto *dictionary = peek<NSDictionary>(value);
    if (!dictionary)
        return false;
    if (!store.meta._genericCls)
        return store(isMutable ? value->mutableCopy() : value);
    const auto models = NSMutableDictionary::dictionary();
    qn::walkEntries(*dictionary, [&](const id &key, const id &element) {
        if (const id model = elementModel(store.meta, element))
            models->setObject(model, key);
    });
    return store(isMutable ? models : models->copy());
}

bool storeSet(const PropertyStore &store, const id &value, bool isMutable) {
    auto set = as<NSSet>(value);
    if (const auto array = as<NSArray>(value))
        set = NSSet::setWithArray(array);
    if (!set)
        return false;
    if (store.meta._genericCls)
        set = NSSet::setWithArray(elementModels(store.meta, *set->allObjects()));
    return store(isMutable ? set->mutableCopy() : set);
}

} // namespace

bool qn::storeContainerValue(const PropertyStore &store, const id &value) {
    switch (store.meta._nsType) {
    case qn::FoundationKind::Array:
    case qn::FoundationKind::MutableArray:
        return storeArray(store, value, store.meta._nsType == qn::FoundationKind::MutableArray);
    case qn::FoundationKind::Dictionary:
    case qn::FoundationKind::MutableDictionary:
        return storeDictionary(store, value, store.meta._nsType == qn::FoundationKind::MutableDictionary);
    case qn::FoundationKind::Set:
    case qn::FoundationKind::MutableSet:
        return storeSet(store, value, store.meta._nsType == qn::FoundationKind::MutableSet);
    default:
        return false;
    }
}
