#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelMapper.h"
#include "Platform/Dispatch/Queues/SemaphoreMutex.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Serialization/JSON/JSONWriter.h"
#include "Platform/Foundation/Text/NSObjCRuntime.h"

#include <algorithm>
#include <atomic>
#include <unordered_map>

NS_IMPLEMENTATION(_QNModelMeta) {}

namespace {

struct Cache {
    dispatch::SemaphoreMutex lock;
    std::unordered_map<Class, Ref<_QNModelMeta>> metas ZK_GUARDED_BY(lock);
    std::atomic<std::uint64_t> stores = 0;
};

Cache &cache() {
    static auto &theCache = *new Cache;
    return theCache;
}

bool mayHoldModels(const _QNModelPropertyMeta &property) {
    return property.valueType() == QNEncodingTypeObject &&
           (property._nsType == qn::FoundationKind::None || property._nsType >= qn::FoundationKind::Array);
}

/// A record that the thread found in the cache before, so that it need not take the lock again; valid while
/// nothing has been stored there since. Reading and writing a thousand models takes 0.86 and 0.89 times as
/// long with it.
struct Recent {
    Class cls = nullptr;
    Ref<_QNModelMeta> meta;
    std::uint64_t stores = 0;
};

Recent &recentOf(Class cls) {
    static thread_local Recent recent[16];
    return recent[reinterpret_cast<std::uintptr_t>(cls) / alignof(objc_class) % std::size(recent)];
}

/// The names that the hook lists; none without the hook or names.
Ref<NSSet> names(Class cls, SEL hook) {
    const auto list = as<NSArray>(qn::hooks::ask(cls, hook));
    return list && list->count() > 0 ? NSSet::setWithArray(list) : nullptr;
}

/// The properties that a class has and inherits, as its hooks let them through.
class Properties {
public:
    explicit Properties(Ref<QNClassInfo> classInfo)
        : classInfo_(std::move(classInfo)),
          excluded_(names(classInfo_->cls(), runtime::selectorOf<qn::hooks::modelPropertyBlacklist>())),
          included_(names(classInfo_->cls(), runtime::selectorOf<qn::hooks::modelPropertyWhitelist>())),
          generics_(as<NSDictionary>(qn::hooks::ask(
              classInfo_->cls(), runtime::selectorOf<qn::hooks::modelContainerPropertyGenericClass>()))) {}

    /// By name. A class's own property hides an inherited one.
    Ref<NSMutableDictionary> collect() {
        auto metas = NSMutableDictionary::dictionary();
        // The root class has no properties of a model.
        for (auto info = classInfo_; info && info->superCls(); info = info->superClassInfo())
            for (const auto &[name, property] : info->propertyInfos()->allEntries())
                if (isWanted(name) && !metas->objectForKey(name))
                    if (const auto meta = _QNModelPropertyMeta::metaWithClassInfo(
                            classInfo_, as<QNClassPropertyInfo>(property), genericClass(name));
                        meta && meta->_getter && meta->_setter) {
                        metas->setObject(meta, name);
                        nameUnknownClass_ |= meta->_namesUnknownClass;
                    }
        return metas;
    }

    /// Whether some class that is named was not known.
    bool nameUnknownClass() const { return nameUnknownClass_; }

private:
    bool isWanted(const id &name) const {
        return !(excluded_ && excluded_->containsObject(name)) &&
               (!included_ || included_->containsObject(name));
    }

    Class genericClass(const id &name) {
        const id generic = generics_ ? generics_->objectForKey(name) : nullptr;
        const auto className = as<NSString>(generic);
        const Class cls = className ? NSClassFromString(className) : as<objc_class>(generic).get();
        nameUnknownClass_ |= className && !cls;
        return cls;
    }

    const Ref<QNClassInfo> classInfo_;
    const Ref<NSSet> excluded_;
    const Ref<NSSet> included_;
    const Ref<NSDictionary> generics_;
    bool nameUnknownClass_ = false;
};

} // namespace

Ref<_QNModelMeta> _QNModelMeta::metaWithClass(Class cls) {
    if (!cls)
        return nullptr;
    const std::uint64_t stores = cache().stores; // before the look into the cache
    Recent &recent = recentOf(cls);
    if (recent.cls == cls && recent.stores == stores && !recent.meta->isStale())
        return recent.meta;
    {
        const locking::MutexLock guard(cache().lock);
        const auto found = cache().metas.find(cls);
        if (found != cache().metas.end() && !found->second->isStale()) {
            recent = {cls, found->second, stores};
            return found->second;
        }
    }
    auto meta = initWithClass(cls);
    auto kept = meta; // so that the record it replaces is released outside the lock
    const locking::MutexLock guard(cache().lock);
    cache().metas[cls].swap(kept);
    ++cache().stores;
    return meta;
}

Ref<_QNModelMeta> _QNModelMeta::initWithClass(Class cls) {
    const auto methodChanges = objc_class::changes();
    const auto namesKnown = runtime::ClassRegistry::shared().namesKnown();
    const auto classInfo = QNClassInfo::classInfoWithClass(cls);
    if (!classInfo)
        return nullptr;
    auto meta = make<_QNModelMeta>();
    meta->_classInfo = classInfo;
    meta->_methodChanges = methodChanges;
    meta->_marksSeen =
        classInfo->marksSeen(); // read before everything else, so that a later mark makes this record stale
    meta->_nsType = qn::foundationKindOf(cls);
    Properties properties(classInfo);
    const auto metas = properties.collect();
    if (properties.nameUnknownClass())
        meta->_namesKnown = namesKnown;
    meta->_keyMappedCount = metas->count();
    if (metas->count() > 0)
        meta->_allPropertyMetas = metas->allValues();
    qn::ModelMapper mapper(metas);
    mapper.mapCustom(
        as<NSDictionary>(qn::hooks::ask(cls, runtime::selectorOf<qn::hooks::modelCustomPropertyMapper>())));
    mapper.mapDeclared();
    mapper.mapRest();
    meta->_mapper = mapper.mapper();
    meta->_keys = qn::ModelKeyIndex(meta->_mapper);
    meta->_keyPathPropertyMetas = mapper.keyPathMetas();
    meta->_multiKeysPropertyMetas = mapper.multiKeysMetas();
    meta->findHooks();
    meta->findComparedProperties();
    meta->findWrittenKeys();
    meta->_runsOwnCode = meta->runsOwnCode();
    meta->_isPlain = !meta->_runsOwnCode && meta->_keyMappedCount > 0 &&
                     meta->_keyPathPropertyMetas->count() == 0 && meta->_multiKeysPropertyMetas->count() == 0;
    meta->findModelClasses();
    return meta;
}

bool _QNModelMeta::isStale() const {
    return _classInfo->marks() != _marksSeen || _methodChanges != objc_class::changes() ||
           (_namesKnown != 0 && _namesKnown != runtime::ClassRegistry::shared().namesKnown());
}

void _QNModelMeta::findHooks() {
    const Class cls = _classInfo->cls();
    const auto has = [cls](SEL hook) { return cls->findMethod(hook) != nullptr; };
    _hasCustomWillTransformFromDictionary =
        has(runtime::selectorOf<qn::hooks::modelCustomWillTransformFromDictionary>());
    _hasCustomTransformFromDictionary =
        has(runtime::selectorOf<qn::hooks::modelCustomTransformFromDictionary>());
    _hasCustomTransformToDictionary = has(runtime::selectorOf<qn::hooks::modelCustomTransformToDictionary>());
    _hasCustomClassFromDictionary =
        cls->respondsToSelector(runtime::selectorOf<qn::hooks::modelCustomClassForDictionary>());
}

void _QNModelMeta::findComparedProperties() {
    if (!_allPropertyMetas)
        return;
    for (const id &each : *_allPropertyMetas)
        if (const auto *property = peek<_QNModelPropertyMeta>(each); property->_isKVCCompatible) {
            _comparedPropertyMetas.push_back(property);
            _leadsToModels |= mayHoldModels(*property);
        }
}

void _QNModelMeta::findWrittenKeys() {
    _isWrittenPlainly = !_hasCustomTransformToDictionary && _keyPathPropertyMetas->count() == 0 &&
                        _multiKeysPropertyMetas->count() == 0;
    if (!_mapper || !_isWrittenPlainly)
        return;
    for (const auto &[key, head] : _mapper->allEntries()) {
        JSONWriter writer(NSJSONWritingOptions::None);
        _isWrittenPlainly &=
            !writer.string(*peek<NSString>(key)); // a key that JSON cannot hold would spoil the whole text
        writer.put(":");
        const auto text = writer.take();
        _writtenKeys.emplace_back(std::string(text.begin(), text.end()), peek<_QNModelPropertyMeta>(head));
    }
}

bool _QNModelMeta::runsOwnCode() const {
    return _hasCustomWillTransformFromDictionary || _hasCustomTransformFromDictionary ||
           _hasCustomClassFromDictionary ||
           (_allPropertyMetas && !std::ranges::all_of(_allPropertyMetas->allObjects(), [](const id &meta) {
                return peek<_QNModelPropertyMeta>(meta)->hasSynthesizedAccessors();
            }));
}

void _QNModelMeta::findModelClasses() {
    if (!_allPropertyMetas)
        return;
    for (const id &each : *_allPropertyMetas)
        if (const auto *property = peek<_QNModelPropertyMeta>(each); mayHoldModels(*property))
            for (const Class cls : {property->_genericCls, property->_cls})
                if (cls && qn::foundationKindOf(cls) == qn::FoundationKind::None)
                    _modelClasses.push_back(cls);
}

const _QNModelPropertyMeta *_QNModelMeta::headForKey(const id &key) const {
    if (const auto *text = peek<NSString>(key)) {
        const auto *slot = _keys.find(*text);
        return slot ? slot->head : nullptr;
    }
    return _mapper ? peek<_QNModelPropertyMeta>(_mapper->objectForKey(key)) : nullptr; // an array of keys
}
