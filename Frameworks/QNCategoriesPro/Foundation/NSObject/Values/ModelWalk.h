// Walks over the contents of collections while setters and hooks run, which may change them.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/ObjectTable.h"

#include <algorithm>

namespace qn {

/// Calls `visit(element)` for every element. The caller keeps the collection alive. An ordinary immutable
/// collection is read in place, any other from a snapshot.
template <class Visitor>
void walkElements(const NSArray &array, const Visitor &visit) {
    const auto elements = array.isKindOfClass(NSMutableArray::class_()) ? std::nullopt : array.elements();
    if (elements)
        std::ranges::for_each(*elements, visit);
    else
        std::ranges::for_each(array.allObjects(), visit);
}

/// The same with `visit(key, value)` for every entry.
template <class Visitor>
void walkEntries(const NSDictionary &dictionary, const Visitor &visit) {
    const ObjectTable *table =
        dictionary.isKindOfClass(NSMutableDictionary::class_()) ? nullptr : dictionary.table();
    if (!table)
        for (const auto &[key, value] : dictionary.allEntries())
            visit(key, value);
    else
        for (const ObjectTable::Entry &entry : table->entries())
            if (entry.key)
                visit(entry.key, entry.value);
}

} // namespace qn
