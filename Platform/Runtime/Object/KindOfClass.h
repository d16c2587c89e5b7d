// Maps an object to a kind by a table of classes.
#pragma once

#include "Platform/Runtime/Object/Class.h"

#include <utility>

#pragma GCC visibility push(default)

namespace runtime {

/// The kind of the object's own class if that is in the table, else of the first class in the table that it
/// descends from, else `other`; `other` for null, too.
template <class Kind, std::size_t size>
Kind kindOfClass(const NSObject *object, const std::pair<Class, Kind> (&kinds)[size], Kind other) {
    const Class own = object ? object->isa() : nullptr;
    for (const auto &[cls, kind] : kinds)
        if (own == cls)
            return kind;
    for (const auto &[cls, kind] : kinds)
        if (own && own->isSubclassOf(cls))
            return kind;
    return other;
}

} // namespace runtime

#pragma GCC visibility pop
