// Dictionaries of models. Any thread.
#pragma once

#include "Platform/Foundation/Collections/NSDictionary.h"

namespace qn {

/// A new dictionary of a model for each value that is a dictionary, under its key, but those whose mapping
/// fails. None without a class or a dictionary.
Ref<NSDictionary> modelDictionaryWithClass(Class cls, const Ref<NSDictionary> &dictionary);
/// Of a dictionary, or of a text or bytes that hold one.
Ref<NSDictionary> modelDictionaryWithClass(Class cls, const id &json);

/// The same of either.
template <class T>
Ref<NSDictionary> modelDictionaryWithClass(const id &json) {
    return modelDictionaryWithClass(T::class_(), json);
}

} // namespace qn
