// Walks over objects that may become JSON: what JSON makes of each, and the contents of collections.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/ObjectTable.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"

#include <functional>
#include <span>

namespace json {

enum class Kind { string, number, array, dictionary, null, other };

/// What JSON makes of an object. Ordinary objects are told by their very class, others by their ancestors.
Kind kindOf(const NSObject *object);

/// Why an object is no JSON; null when all is well. Each of the reasons below is one object in the whole
/// program, so that their addresses can be compared.
using Reason = const char *;
inline constexpr char invalidType[] = "Invalid type.";
inline constexpr char tooDeep[] = "Too many nested arrays or dictionaries.";
inline constexpr char notText[] = "Invalid key: not a text.";
inline constexpr char notFinite[] = "Invalid number: not finite.";

/// Every item, until `visit` gives a reason. Objects lie scattered in memory: those of the next items are
/// fetched while one is written.
template <class Item, class ObjectOf, class Visit>
Reason eachItem(std::span<const Item> items, ObjectOf objectOf, Visit visit) {
    constexpr std::size_t ahead = 4;
    const auto fetch = [&](std::size_t i) {
        if (i < items.size())
            __builtin_prefetch(objectOf(items[i]).get());
    };
    for (std::size_t i = 0; i < ahead; ++i)
        fetch(i);
    for (std::size_t i = 0; i < items.size(); ++i) {
        fetch(i + ahead);
        if (Reason reason = visit(items[i]))
            return reason;
    }
    return nullptr;
}

/// For who makes JSON of a guarded collection while he holds its lock: it cannot be walked within itself.
using LockedVisit = ObjectVisit<struct WritingLocked>;

/// Every entry of the dictionary, in the same way.
template <class Visit>
Reason eachEntry(const NSDictionary &dictionary, Visit visit) {
    if (const ObjectTable *table = dictionary.table())
        return eachItem(
            table->entries(), [](const auto &entry) -> const id & { return entry.value; },
            [&](const auto &entry) { return entry.key ? visit(entry.key, entry.value) : nullptr; });
    if (LockedVisit::isWithin(dictionary))
        return tooDeep;
    for (const auto &[key, value] : dictionary.allEntries()) // without the lock of a guarded one
        if (Reason reason = visit(key, value))
            return reason;
    return nullptr;
}

/// Every element of the array, in the same way.
template <class Visit>
Reason eachElement(const NSArray &array, Visit visit) {
    const auto walk = [&](std::span<const id> elements) {
        return eachItem(elements, std::identity(), visit);
    };
    if (const auto elements = array.elements())
        return walk(*elements);
    if (LockedVisit::isWithin(array))
        return tooDeep;
    return walk(array.allObjects());
}

} // namespace json
