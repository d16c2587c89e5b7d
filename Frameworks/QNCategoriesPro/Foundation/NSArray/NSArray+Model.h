// Arrays of models. Any thread.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"

#pragma GCC visibility push(default)

namespace qn {

/// A new array with a model for each dictionary of the array, in their order; elements that are no
/// dictionaries and those whose mapping fails are left out. None without a class or an array.
Ref<NSArray> modelArrayWithClass(Class cls, const Ref<NSArray> &array);
/// From an array, or from a text or bytes with a JSON array; none for anything else.
Ref<NSArray> modelArrayWithClass(Class cls, const id &json);

/// The same with the class as a type.
template <class T>
Ref<NSArray> modelArrayWithClass(const id &json) {
    return modelArrayWithClass(T::class_(), json);
}

} // namespace qn

#pragma GCC visibility pop
