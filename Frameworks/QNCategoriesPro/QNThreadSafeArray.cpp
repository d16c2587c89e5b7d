#include "Frameworks/QNCategoriesPro/QNThreadSafeArray.h"

#include "Frameworks/QNCategoriesPro/BothLocks.h"
#include "Platform/Foundation/Collections/CollectionDescription.h"
#include "Platform/Foundation/Collections/CollectionEquality.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/Raise.h"

NS_IMPLEMENTATION(QNThreadSafeArray) {}

namespace {

Ref<QNThreadSafeArray> guarded(const Ref<NSMutableArray> &contents) {
    return contents ? make<QNThreadSafeArray>(contents) : nullptr;
}

} // namespace

Ref<QNThreadSafeArray> QNThreadSafeArray::init() {
    return guarded(NSMutableArray::array());
}

Ref<QNThreadSafeArray> QNThreadSafeArray::initWithCapacity(NSUInteger capacity) {
    return guarded(NSMutableArray::arrayWithCapacity(capacity));
}

Ref<QNThreadSafeArray> QNThreadSafeArray::initWithArray(const Ref<NSArray> &array) {
    return guarded(NSMutableArray::arrayWithArray(array));
}

Ref<QNThreadSafeArray> QNThreadSafeArray::initWithObjects(const id *objects, NSUInteger count) {
    runtime::checkCount("QNThreadSafeArray initWithObjects:count:", count);
    return guarded(NSMutableArray::arrayWithObjects(std::vector<id>(objects, objects + count)));
}

Ref<QNThreadSafeArray> QNThreadSafeArray::initWithContentsOfFile(const Ref<NSString> &path) {
    return guarded(NSMutableArray::arrayWithContentsOfFile(path));
}

Ref<QNThreadSafeArray> QNThreadSafeArray::initWithContentsOfURL(const Ref<NSURL> &url) {
    return guarded(NSMutableArray::arrayWithContentsOfURL(url));
}

Ref<NSString> QNThreadSafeArray::componentsJoinedByString(const Ref<NSString> &separator) const {
    return collectionDescription(*this, [&] { return locked()->componentsJoinedByString(separator); });
}

Ref<NSString> QNThreadSafeArray::descriptionWithLocale(const id &locale) const {
    return collectionDescription(*this, [&] { return locked()->descriptionWithLocale(locale); });
}

Ref<NSString> QNThreadSafeArray::descriptionWithLocale(const id &locale, NSUInteger indent) const {
    return collectionDescription(*this, [&] { return locked()->descriptionWithLocale(locale, indent); });
}

Ref<NSString> QNThreadSafeArray::description() const {
    return collectionDescription(*this, [&] { return locked()->description(); });
}

bool QNThreadSafeArray::isEqualToArray(const Ref<NSArray> &other) const {
    if (other.get() == this)
        return true;
    const auto guarded = as<QNThreadSafeArray>(other);
    if (!guarded)
        return false;
    return collections::areEqual(*this, *guarded, [&] {
        const BothLocks locks(*this, _lock, *guarded, guarded->_lock);
        return _arr->isEqualToArray(guarded->_arr);
    });
}

bool QNThreadSafeArray::isEqual(const id &other) const {
    return isEqualToArray(as<QNThreadSafeArray>(other));
}

id QNThreadSafeArray::mutableCopy() const {
    const auto contents = locked();
    const auto copy = as<QNThreadSafeArray>(class_createInstance(isa()));
    if (!copy) // The class cannot make instances: raises. NOLINTNEXTLINE(bugprone-parent-virtual-call)
        return NSObject::mutableCopy();
    copy->_arr = NSMutableArray::arrayWithArray(_arr);
    return copy;
}
