// Arrays of models. Any thread.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"

namespace qn {

/// A new array of a model for each dictionary of the array, but those whose mapping fails. None without a
/// class or an array.
Ref<NSArray> modelArrayWithClass(Class cls, const Ref<NSArray> &array);
/// Of an array, or of a text or bytes that hold one.
Ref<NSArray> modelArrayWithClass(Class cls, const id &json);

/// The same of either.
template <class T>
Ref<NSArray> modelArrayWithClass(const id &json) {
    return modelArrayWithClass(T::class_(), json);
}

} // namespace qn
