// One walk over a collection, an object at a time or with range-for.
#pragma once

#include "Platform/Foundation/Collections/NSFastEnumeration.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <functional>

class NSArray;

class NSEnumerator : public NSObject {
    NS_CLASS(NSEnumerator, NSObject)
public:
    /// `next` gives one object a call, none at the end, and keeps what `changes` watches. Raises
    /// NSInvalidArgumentException for none.
    explicit NSEnumerator(std::function<id()> next, NSMutationWatch changes = NSMutationWatch());

    id nextObject() {
        changes_.check();
        return next_();
    }
    /// The objects that are left.
    Ref<NSArray> allObjects();
    /// The next objects, at most `count`; gives how many, 0 at the end.
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
