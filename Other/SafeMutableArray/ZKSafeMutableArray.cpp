#include "Other/SafeMutableArray/ZKSafeMutableArray.h"

#include "Platform/Dispatch/Queues/ConcurrentQueue.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"

#include <algorithm>

NS_IMPLEMENTATION(ZKSafeMutableArray) {}

namespace {

constexpr NSUInteger absentFromStore = ~NSUInteger{0};

} // namespace

ZKSafeMutableArray::ZKSafeMutableArray() : _array(NSMutableArray::arrayWithCapacity(10)) {}

dispatch::ConcurrentQueue &ZKSafeMutableArray::syncQueue() {
    static auto &queue = *new dispatch::ConcurrentQueue("com.zelkor.safeArray");
    return queue;
}

NSUInteger ZKSafeMutableArray::count() const {
    return syncQueue().sync([&] { return _array->count(); });
}

id ZKSafeMutableArray::objectAtIndex(NSUInteger index) const {
    return syncQueue().sync([&] { return index < _array->count() ? _array->objectAtIndex(index) : nullptr; });
}

NSUInteger ZKSafeMutableArray::indexOfObject(const id &object) const {
    if (!object)
        return NSNotFound;
    const NSUInteger index = syncQueue().sync([&] { return _array->indexOfObject(object); });
    return index == NSNotFound ? absentFromStore : index;
}

std::vector<id> ZKSafeMutableArray::getObjects(NSRange range) const {
    return syncQueue().sync([&] {
        const NSUInteger count = _array->count(), start = std::min(range.location, count);
        return _array->getObjects({start, std::min(range.length, count - start)});
    });
}

void ZKSafeMutableArray::addObject(const id &object) {
    syncQueue().barrierAsync([array = _array, object] {
        if (object)
            array->addObject(object);
    });
}

void ZKSafeMutableArray::insertObject(const id &object, NSUInteger index) {
    syncQueue().barrierAsync([array = _array, object, index] {
        if (!object)
            return;
        try {
            array->insertObject(object, index);
        } catch (const NSException &exception) {
            NSLog("%s", exception.what());
        }
    });
}

void ZKSafeMutableArray::removeObjectAtIndex(NSUInteger index) {
    syncQueue().barrierAsync([array = _array, index] {
        if (index < array->count())
            array->removeObjectAtIndex(index);
    });
}

void ZKSafeMutableArray::removeLastObject() {
    syncQueue().barrierAsync([array = _array] { array->removeLastObject(); });
}

void ZKSafeMutableArray::replaceObjectAtIndex(NSUInteger index, const id &object) {
    syncQueue().barrierAsync([array = _array, index, object] {
        if (object && index < array->count())
            array->replaceObjectAtIndex(index, object);
    });
}

void ZKSafeMutableArray::removeAllObjects() {
    syncQueue().barrierAsync([array = _array] { array->removeAllObjects(); });
}
