// Walking arrays: enumerators, blocks, tests, selectors and batches.
#include "Platform/Foundation/CollectionArguments.h"
#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSIndexSet.h"
#include "Platform/Runtime/Message.h"

#include <algorithm>

namespace {

/// A visitor that stops at the first element that passes and leaves its index in `found`.
NSArray::Visitor firstPassing(const NSArray::Test &test, NSUInteger &found) {
    return [&](const id &object, NSUInteger index, bool &stop) {
        if (test(object, index, stop)) {
            found = index;
            stop = true;
        }
    };
}

/// A visitor that collects the indexes of the elements that pass.
NSArray::Visitor allPassing(const NSArray::Test &test, NSMutableIndexSet &found) {
    return [&](const id &object, NSUInteger index, bool &stop) {
        if (test(object, index, stop))
            found.addIndex(index);
    };
}

} // namespace

Ref<NSEnumerator> NSArray::objectEnumerator() const {
    return make<NSEnumerator>([array = as<NSArray>(self()), index = NSUInteger{0}]() mutable -> id {
        return index < array->count() ? array->objectAtIndex(index++) : nullptr;
    });
}

Ref<NSEnumerator> NSArray::reverseObjectEnumerator() const {
    return make<NSEnumerator>([array = as<NSArray>(self()), index = count()]() mutable -> id {
        return index ? array->objectAtIndex(--index) : nullptr;
    });
}

void NSArray::enumerateObjectsUsingBlock(const Visitor &visitor) const {
    enumerateObjectsWithOptions(0, visitor);
}

void NSArray::enumerateObjectsWithOptions(NSEnumerationOptions options, const Visitor &visitor) const {
    bool stop = false;
    const auto visit = [&](NSUInteger index) {
        if (const id object = objectAtIndex(index)) // a guarded array may have shrunk meanwhile
            visitor(object, index, stop);
    };
    if (options & NSEnumerationReverse)
        for (NSUInteger i = count(); !stop && i-- > 0;)
            visit(i);
    else
        for (NSUInteger i = 0; !stop && i < count(); ++i)
            visit(i);
}

void NSArray::enumerateObjectsAtIndexes(const Ref<NSIndexSet> &indexes, NSEnumerationOptions options,
                                        const Visitor &visitor) const {
    if (!indexes || !indexes->count())
        return;
    collections::checkIndex("NSArray enumerateObjectsAtIndexes:options:usingBlock:", indexes->lastIndex(),
                            count());
    indexes->enumerateIndexesWithOptions(options, [&](NSUInteger index, bool &stop) {
        if (const id object = objectAtIndex(index)) // see above
            visitor(object, index, stop);
    });
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
    const NSUInteger size = count();
    if (state.state >= size)
        return 0;
    auto batch = getObjects({state.state, std::min(room, size - state.state)});
    state.state += batch.size();
    std::move(batch.begin(), batch.end(), objects);
    return batch.size();
}
