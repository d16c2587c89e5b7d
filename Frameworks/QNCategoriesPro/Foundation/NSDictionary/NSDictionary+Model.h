// Dictionaries of models. Any thread. What of the JSON was not mapped is told as by `modelWithJSON`.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelError.h"
#include "Platform/Foundation/Collections/NSDictionary.h"

#pragma GCC visibility push(default)

namespace qn {

/// A new dictionary with a model for each value that is a dictionary, under its key; other values and those
/// whose mapping fails are left out. None without a class or a dictionary.
Ref<NSDictionary> modelDictionaryWithClass(Class cls, const Ref<NSDictionary> &dictionary);
/// From a dictionary, or from a text or bytes with a JSON object; none for anything else.
Ref<NSDictionary> modelDictionaryWithClass(Class cls, const id &json, Ref<NSError> *error = nullptr);

/// The same with the class as a type.
template <class T>
Ref<NSDictionary> modelDictionaryWithClass(const id &json, Ref<NSError> *error = nullptr) {
    return modelDictionaryWithClass(T::class_(), json, error);
}

} // namespace qn

#pragma GCC visibility pop
