// One walk over a collection: one object per call, or with range-for.
#pragma once

#include "Platform/Foundation/Collections/NSFastEnumeration.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <functional>

#pragma GCC visibility push(default)

class NSArray;

class NSEnumerator : public NSObject {
    NS_CLASS(NSEnumerator, NSObject)
public:
    /// `next` returns one object per call and none at the end. It must keep the collection that `changes`
    /// watches. Raises NSInvalidArgumentException for an empty function.
    explicit NSEnumerator(std::function<id()> next, NSMutationWatch changes = NSMutationWatch());

    /// None at the end.
    id nextObject() {
        changes_.check();
        return next_();
    }
    /// The objects that are left.
    Ref<NSArray> allObjects();
    /// Copies the next objects to `objects`, which has room for `count`; returns their number, 0 at the end.
    NSUInteger countByEnumeratingWithState(NSFastEnumerationState &state, id *objects,
                                           NSUInteger count) const;
    NSFastIterator<NSEnumerator> begin() const {
        return NSFastIterator<NSEnumerator>(as<NSEnumerator>(self()));
    }
    std::default_sentinel_t end() const { return {}; }

private:
    const std::function<id()> next_;
    const NSMutationWatch changes_;
};

#pragma GCC visibility pop
