// Values that are kept with any object, of whatever class, and are gone with it.
//
//     constexpr char noteKey = 0;
//     qn::setAssociatedValue(book, &noteKey, u"lent to Emma"_ns, qn::Association::copied);
//     const auto note = qn::associatedValue<NSString>(book, &noteKey);
//
// A key is an address that nothing else uses as one, best that of a constant of the file. Copies of an object
// have none of its values. `Platform/Runtime/Object/AssociatedValues.h` tells what the associations mean:
// `strong`, `copied`, `weak`, and `strongNonatomic` and `copiedNonatomic`.
//
// For an object of none, reading gives none and everything else does nothing. A null key raises
// NSInvalidArgumentException when a value is set; there is never one to read.
//
// Threads: any.
#pragma once

#include "Platform/Runtime/Object/AssociatedValues.h"

#pragma GCC visibility push(default)

namespace qn {

using runtime::Association;

/// Replaces the value of that key; none removes it. Raises NSInvalidArgumentException when the value is to be
/// copied and cannot be; the old value stays then.
inline void setAssociatedValue(const id &object, const void *key, const id &value,
                               Association association = Association::strong) {
    runtime::setAssociatedValue(object, key, value, association);
}

/// None without one, when it is not a `T`, and for a weak one that has gone.
template <class T = NSObject>
Ref<T> associatedValue(const id &object, const void *key) {
    return as<T>(runtime::associatedValue(object, key));
}

/// The same without sharing ownership: valid until it is replaced or the object ends. Null instead of none.
/// Raises NSInvalidArgumentException for a value that is atomic or weak, as it may go at any time.
template <class T = NSObject>
T *peekAssociatedValue(const id &object, const void *key) {
    NSObject *const value = runtime::peekAssociatedValue(object, key);
    return value && value->isKindOfClass(T::class_()) ? static_cast<T *>(value) : nullptr;
}

inline void removeAssociatedValue(const id &object, const void *key) {
    runtime::removeAssociatedValue(object, key);
}
/// Those of all keys, also of code that the caller does not know.
inline void removeAssociatedValues(const id &object) {
    runtime::removeAssociatedValues(object);
}

} // namespace qn

#pragma GCC visibility pop
