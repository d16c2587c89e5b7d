// What kind of object it is, by a table of classes.
#pragma once

#include "Platform/Runtime/Object/Class.h"

#include <utility>

namespace runtime {

/// The kind of the object's class in the table, else that of the first class there that it descends from,
/// else `other`, as for none. Most objects are of a class in the table, and are told without a look at
/// ancestors.
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
