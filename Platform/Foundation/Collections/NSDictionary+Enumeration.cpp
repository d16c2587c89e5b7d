// Walking dictionaries, testing their entries, and their keys in the order of their values.
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Collections/StableSort.h"
#include "Platform/Runtime/Object/Message.h"

Ref<NSEnumerator> NSDictionary::objectEnumerator() const {
    return make<NSEnumerator>(
        [dictionary = as<NSDictionary>(self()), keys = keyEnumerator()]() -> id {
            return dictionary->objectForKey(keys->nextObject());
        },
        NSMutationWatch(mutations()));
}

void NSDictionary::enumerateKeysAndObjectsUsingBlock(const Visitor &visitor) const {
    runtime::checkBlock("NSDictionary enumerateKeysAndObjectsUsingBlock:", visitor);
    const auto keys = keyEnumerator();
    bool stop = false;
    for (id key; !stop && (key = keys->nextObject());)
        visitor(key, objectForKey(key), stop);
}

void NSDictionary::enumerateKeysAndObjectsWithOptions(NSEnumerationOptions options,
                                                      const Visitor &visitor) const {
    if (!(options & NSEnumerationReverse)) {
        enumerateKeysAndObjectsUsingBlock(visitor);
        return;
    }
    runtime::checkBlock("NSDictionary enumerateKeysAndObjectsWithOptions:usingBlock:", visitor);
    const NSMutationWatch changes(mutations());
    const auto entries = allEntries();
    bool stop = false;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        visitor(entry->first, entry->second, stop);
        if (stop)
            return;
        changes.check();
    }
}

Ref<NSSet> NSDictionary::keysOfEntriesPassingTest(const Test &test) const {
    return keysOfEntriesWithOptions(0, test);
}

Ref<NSSet> NSDictionary::keysOfEntriesWithOptions(NSEnumerationOptions options, const Test &test) const {
    runtime::checkBlock("NSDictionary keysOfEntriesPassingTest:", test);
    const auto keys = NSMutableSet::set();
    enumerateKeysAndObjectsWithOptions(options, [&](const id &key, const id &value, bool &stop) {
        if (test(key, value, stop))
            keys->addObject(key);
    });
    return keys;
}

Ref<NSArray> NSDictionary::keysSortedByValueUsingSelector(SEL selector) const {
    return keysSortedByValueUsingComparator([=](const id &first, const id &second) {
        return objc_msgSend<NSComparisonResult>(first, selector, second);
    });
}

Ref<NSArray> NSDictionary::keysSortedByValueUsingComparator(const NSComparator &comparator) const {
    return keysSortedByValueWithOptions(0, comparator);
}

Ref<NSArray> NSDictionary::keysSortedByValueWithOptions(NSSortOptions, const NSComparator &comparator) const {
    runtime::checkBlock("NSDictionary keysSortedByValueUsingComparator:", comparator);
    std::vector<id> keys;
    for (const auto &entry : stableSorted(allEntries(), [&](const auto &earlier, const auto &later) {
             return comparator(earlier.second, later.second) == NSComparisonResult::OrderedDescending;
         }))
        keys.push_back(entry.first);
    return NSArray::arrayWithObjects(std::move(keys));
}

NSUInteger NSDictionary::countByEnumeratingWithState(NSFastEnumerationState &state, id *keys,
                                                     NSUInteger count) const {
    if (!state.extra)
        state.extra = keyEnumerator();
    return as<NSEnumerator>(state.extra)->countByEnumeratingWithState(state, keys, count);
}
