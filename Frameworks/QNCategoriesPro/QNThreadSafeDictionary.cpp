#include "Frameworks/QNCategoriesPro/QNThreadSafeDictionary.h"

#include "Frameworks/QNCategoriesPro/BothLocks.h"
#include "Platform/Foundation/Collections/CollectionDescription.h"
#include "Platform/Foundation/Collections/CollectionEquality.h"
#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(QNThreadSafeDictionary) {}

namespace {

Ref<QNThreadSafeDictionary> guarded(const Ref<NSMutableDictionary> &contents) {
    return contents ? make<QNThreadSafeDictionary>(contents) : nullptr;
}

} // namespace

Ref<QNThreadSafeDictionary> QNThreadSafeDictionary::init() {
    return guarded(NSMutableDictionary::dictionary());
}

Ref<QNThreadSafeDictionary> QNThreadSafeDictionary::initWithCapacity(NSUInteger capacity) {
    return guarded(NSMutableDictionary::dictionaryWithCapacity(capacity));
}

Ref<QNThreadSafeDictionary> QNThreadSafeDictionary::initWithObjects(const Ref<NSArray> &objects,
                                                                    const Ref<NSArray> &keys) {
    return guarded(NSMutableDictionary::dictionaryWithObjects(objects, keys));
}

Ref<QNThreadSafeDictionary> QNThreadSafeDictionary::initWithObjects(const id *objects, const id *keys,
                                                                    NSUInteger count) {
    return guarded(NSMutableDictionary::dictionaryWithObjects(objects, keys, count));
}

Ref<QNThreadSafeDictionary> QNThreadSafeDictionary::initWithDictionary(const Ref<NSDictionary> &dictionary,
                                                                       bool copyItems) {
    return guarded(NSMutableDictionary::dictionaryWithDictionary(dictionary, copyItems));
}

Ref<NSString> QNThreadSafeDictionary::descriptionWithLocale(const id &locale) const {
    return collectionDescription(*this, [&] { return locked()->descriptionWithLocale(locale); });
}

Ref<NSString> QNThreadSafeDictionary::descriptionWithLocale(const id &locale, NSUInteger indent) const {
    return collectionDescription(*this, [&] { return locked()->descriptionWithLocale(locale, indent); });
}

Ref<NSString> QNThreadSafeDictionary::descriptionInStringsFileFormat() const {
    return collectionDescription(*this, [&] { return locked()->descriptionInStringsFileFormat(); });
}

Ref<NSString> QNThreadSafeDictionary::description() const {
    return collectionDescription(*this, [&] { return locked()->description(); });
}

bool QNThreadSafeDictionary::isEqualToDictionary(const Ref<NSDictionary> &other) const {
    if (other.get() == this)
        return true;
    const auto guarded = as<QNThreadSafeDictionary>(other);
    if (!guarded)
        return false;
    return collections::areEqual(*this, *guarded, [&] {
        const BothLocks locks(*this, _lock, *guarded, guarded->_lock);
        return _dic->isEqualToDictionary(guarded->_dic);
    });
}

bool QNThreadSafeDictionary::isEqual(const id &other) const {
    return isEqualToDictionary(as<QNThreadSafeDictionary>(other));
}

id QNThreadSafeDictionary::mutableCopy() const {
    const auto contents = locked();
    const auto copy = as<QNThreadSafeDictionary>(class_createInstance(isa()));
    if (!copy) // The class cannot make instances: raises. NOLINTNEXTLINE(bugprone-parent-virtual-call)
        return NSObject::mutableCopy();
    copy->_dic = NSMutableDictionary::dictionaryWithDictionary(_dic);
    return copy;
}
