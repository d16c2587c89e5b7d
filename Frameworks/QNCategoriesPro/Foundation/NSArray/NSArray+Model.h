// Arrays of models. Any thread. What of the JSON was not mapped is told as by `modelWithJSON`.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelError.h"
#include "Platform/Foundation/Collections/NSArray.h"

#pragma GCC visibility push(default)

namespace qn {

/// A new array with a model for each dictionary of the array, in their order; elements that are no
/// dictionaries and those whose mapping fails are left out. None without a class or an array.
Ref<NSArray> modelArrayWithClass(Class cls, const Ref<NSArray> &array);
/// From an array, or from a text or bytes with a JSON array; none for anything else.
Ref<NSArray> modelArrayWithClass(Class cls, const id &json, Ref<NSError> *error = nullptr);

/// The same with the class as a type.
template <class T>
Ref<NSArray> modelArrayWithClass(const id &json, Ref<NSError> *error = nullptr) {
    return modelArrayWithClass(T::class_(), json, error);
}

} // namespace qn

#pragma GCC visibility pop
