// Dictionaries of models. Any thread.
#pragma once

#include "Platform/Foundation/Collections/NSDictionary.h"

#pragma GCC visibility push(default)

namespace qn {

/// A new dictionary with a model for each value that is a dictionary, under its key; other values and those
/// whose mapping fails are left out. None without a class or a dictionary.
Ref<NSDictionary> modelDictionaryWithClass(Class cls, const Ref<NSDictionary> &dictionary);
/// From a dictionary, or from a text or bytes with a JSON object; none for anything else.
Ref<NSDictionary> modelDictionaryWithClass(Class cls, const id &json);

/// The same with the class as a type.
template <class T>
Ref<NSDictionary> modelDictionaryWithClass(const id &json) {
    return modelDictionaryWithClass(T::class_(), json);
}

} // namespace qn

#pragma GCC visibility pop
