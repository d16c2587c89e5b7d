#include "Platform/Foundation/Collections/NSEnumerator.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(NSEnumerator) {
    cls.method<&NSEnumerator::nextObject>("nextObject");
}

NSEnumerator::NSEnumerator(std::function<id()> next, NSMutationWatch changes)
    : next_(std::move(next)), changes_(changes) {
    runtime::checkBlock("NSEnumerator initWithNext:", next_);
}

Ref<NSArray> NSEnumerator::allObjects() {
    std::vector<id> objects;
    while (id object = nextObject())
        objects.push_back(std::move(object));
    return NSArray::arrayWithObjects(std::move(objects));
}

NSUInteger NSEnumerator::countByEnumeratingWithState(NSFastEnumerationState &state, id *objects,
                                                     NSUInteger count) const {
    state.mutations = changes_;
    changes_.check();
    NSUInteger filled = 0;
    while (filled < count && (objects[filled] = next_()))
        ++filled;
    return filled;
}
