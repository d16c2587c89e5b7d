// Walking arrays: enumerators, blocks, tests, selectors and batches.
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSIndexSet.h"
#include "Platform/Runtime/Object/Message.h"
#include "Platform/Runtime/Object/Raise.h"

#include <algorithm>

namespace {

/// The array itself; a copy when its changes are not counted, since others may then change it at any time.
Ref<NSArray> walked(const NSArray &array) {
    return array.mutations() ? as<NSArray>(array.self()) : NSArray::arrayWithObjects(array.allObjects());
}

/// A walk that calls a block for one index at a time.
class Walk {
public:
    Walk(const NSArray &array, const NSArray::Visitor &visitor)
        : array_(walked(array)), visitor_(visitor), changes_(array_->mutations()) {}

    NSUInteger count() const { return array_->count(); }
    void visit(NSUInteger index, bool &stop) const {
        visitor_(array_->objectAtIndex(index), index, stop);
        if (!stop)
            changes_.check();
    }

private:
    const Ref<NSArray> array_;
    const NSArray::Visitor &visitor_;
    const NSMutationWatch changes_;
};

/// A visitor that stops at the first element that passes and leaves its index in `found`.
NSArray::Visitor firstPassing(const NSArray::Test &test, NSUInteger &found) {
    runtime::checkBlock("NSArray indexOfObjectPassingTest:", test);
    return [&](const id &object, NSUInteger index, bool &stop) {
        if (test(object, index, stop)) {
            found = index;
            stop = true;
        }
    };
}

/// A visitor that collects the indexes of the elements that pass.
NSArray::Visitor allPassing(const NSArray::Test &test, NSMutableIndexSet &found) {
    runtime::checkBlock("NSArray indexesOfObjectsPassingTest:", test);
    return [&](const id &object, NSUInteger index, bool &stop) {
        if (test(object, index, stop))
            found.addIndex(index);
    };
}

} // namespace

Ref<NSEnumerator> NSArray::objectEnumerator() const {
    const auto array = walked(*this);
    return make<NSEnumerator>(
        [array, index = NSUInteger{0}]() mutable -> id {
            return index < array->count() ? array->objectAtIndex(index++) : nullptr;
        },
        NSMutationWatch(array->mutations()));
}

Ref<NSEnumerator> NSArray::reverseObjectEnumerator() const {
    const auto array = walked(*this);
    return make<NSEnumerator>(
        [array, index = array->count()]() mutable -> id {
            return index ? array->objectAtIndex(--index) : nullptr;
        },
        NSMutationWatch(array->mutations()));
}

void NSArray::enumerateObjectsUsingBlock(const Visitor &visitor) const {
    enumerateObjectsWithOptions(0, visitor);
}

void NSArray::enumerateObjectsWithOptions(NSEnumerationOptions options, const Visitor &visitor) const {
    runtime::checkBlock("NSArray enumerateObjectsWithOptions:usingBlock:", visitor);
    const Walk walk(*this, visitor);
    const NSUInteger size = walk.count();
    bool stop = false;
    for (NSUInteger i = 0; !stop && i < size; ++i)
        walk.visit(options & NSEnumerationReverse ? size - 1 - i : i, stop);
}

void NSArray::enumerateObjectsAtIndexes(const Ref<NSIndexSet> &indexes, NSEnumerationOptions options,
                                        const Visitor &visitor) const {
    constexpr auto operation = "NSArray enumerateObjectsAtIndexes:options:usingBlock:";
    runtime::checkBlock(operation, visitor);
    if (!indexes || !indexes->count())
        return;
    const Walk walk(*this, visitor);
    runtime::checkIndex(operation, indexes->lastIndex(), walk.count());
    indexes->enumerateIndexesWithOptions(options,
                                         [&](NSUInteger index, bool &stop) { walk.visit(index, stop); });
}

NSUInteger NSArray::indexOfObjectPassingTest(const Test &test) const {
    return indexOfObjectWithOptions(0, test);
}

NSUInteger NSArray::indexOfObjectWithOptions(NSEnumerationOptions options, const Test &test) const {
    NSUInteger found = NSNotFound;
    enumerateObjectsWithOptions(options, firstPassing(test, found));
    return found;
}

NSUInteger NSArray::indexOfObjectAtIndexes(const Ref<NSIndexSet> &indexes, NSEnumerationOptions options,
                                           const Test &test) const {
    NSUInteger found = NSNotFound;
    enumerateObjectsAtIndexes(indexes, options, firstPassing(test, found));
    return found;
}

Ref<NSIndexSet> NSArray::indexesOfObjectsPassingTest(const Test &test) const {
    return indexesOfObjectsWithOptions(0, test);
}

Ref<NSIndexSet> NSArray::indexesOfObjectsWithOptions(NSEnumerationOptions options, const Test &test) const {
    const auto found = NSMutableIndexSet::indexSet();
    enumerateObjectsWithOptions(options, allPassing(test, *found));
    return found;
}

Ref<NSIndexSet> NSArray::indexesOfObjectsAtIndexes(const Ref<NSIndexSet> &indexes,
                                                   NSEnumerationOptions options, const Test &test) const {
    const auto found = NSMutableIndexSet::indexSet();
    enumerateObjectsAtIndexes(indexes, options, allPassing(test, *found));
    return found;
}

void NSArray::makeObjectsPerformSelector(SEL selector) const {
    for (const id &object : *this)
        objc_msgSend(object, selector);
}

void NSArray::makeObjectsPerformSelector(SEL selector, const id &argument) const {
    for (const id &object : *this)
        objc_msgSend(object, selector, argument);
}

NSUInteger NSArray::countByEnumeratingWithState(NSFastEnumerationState &state, id *objects,
                                                NSUInteger room) const {
    if (!mutations()) {
        if (!state.extra)
            state.extra = walked(*this);
        return as<NSArray>(state.extra)->countByEnumeratingWithState(state, objects, room);
    }
    const NSUInteger size = count();
    if (state.state >= size)
        return 0;
    auto batch = getObjects({state.state, std::min(room, size - state.state)});
    state.state += batch.size();
    std::move(batch.begin(), batch.end(), objects);
    return batch.size();
}
