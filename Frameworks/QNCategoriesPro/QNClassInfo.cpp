#include "Frameworks/QNCategoriesPro/QNClassInfo.h"

#include "Platform/Dispatch/Queues/SemaphoreMutex.h"
#include "Platform/Foundation/Text/NSObjCRuntime.h"

#include <unordered_map>

NS_IMPLEMENTATION(QNClassInfo) {}

namespace {

struct Cache {
    using Records = std::unordered_map<Class, Ref<QNClassInfo>>;

    Records &records(bool isMeta) ZK_REQUIRES(lock) { return isMeta ? metaClasses : classes; }

    dispatch::SemaphoreMutex lock;
    Records classes ZK_GUARDED_BY(lock);
    Records metaClasses ZK_GUARDED_BY(lock);
};

Cache &cache() {
    static auto &theCache = *new Cache;
    return theCache;
}

/// The records of the members, by name; a later one replaces an earlier one of the same name.
template <class Member, class Info>
Ref<NSDictionary> infosByName(const std::vector<Member> &members, Ref<Info> (*infoOf)(Member)) {
    const auto infos = NSMutableDictionary::dictionaryWithCapacity(members.size());
    for (const Member member : members)
        if (const auto info = infoOf(member); info->name())
            infos->setObject(info, info->name());
    return infos;
}

} // namespace

Ref<QNClassInfo> QNClassInfo::classInfoWithClass(Class cls) {
    if (!cls)
        return nullptr;
    {
        const locking::MutexLock guard(cache().lock);
        const auto &records = cache().records(class_isMetaClass(cls));
        if (const auto found = records.find(cls); found != records.end()) {
            if (found->second->needUpdate())
                found->second->_update();
            return found->second;
        }
    }
    const auto info = initWithClass(cls);
    const locking::MutexLock guard(cache().lock);
    auto &slot = cache().records(info->isMeta())[cls];
    if (slot)
        slot->setNeedUpdate();
    return slot = info;
}

Ref<QNClassInfo> QNClassInfo::classInfoWithClassName(const Ref<NSString> &name) {
    return classInfoWithClass(NSClassFromString(name));
}

Ref<QNClassInfo> QNClassInfo::initWithClass(Class cls) {
    if (!cls)
        return nullptr;
    auto info = make<QNClassInfo>(cls);
    info->_update();
    info->_superClassInfo = classInfoWithClass(info->_superCls);
    return info;
}

QNClassInfo::QNClassInfo(Class cls)
    : _cls(cls), _superCls(class_getSuperclass(cls)), _isMeta(class_isMetaClass(cls)),
      _name(NSStringFromClass(cls)) {
    if (!_isMeta)
        _metaCls = objc_getMetaClass(class_getName(cls));
}

void QNClassInfo::_update() {
    const std::uint64_t marks = _marks;
    auto methods = infosByName(class_copyMethodList(_cls), &QNClassMethodInfo::initWithMethod);
    auto properties = infosByName(class_copyPropertyList(_cls), &QNClassPropertyInfo::initWithProperty);
    auto ivars = infosByName(class_copyIvarList(_cls), &QNClassIvarInfo::initWithIvar);
    const locking::MutexLock guard(_reading);
    if (marks < _marksSeen)
        return; // an update that began later was faster
    _methodInfos.swap(methods);
    _propertyInfos.swap(properties);
    _ivarInfos.swap(ivars);
    _marksSeen = marks;
}
