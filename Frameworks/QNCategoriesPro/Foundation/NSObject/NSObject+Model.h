// Fills objects from JSON: the values of a dictionary go to the properties of the same names, converted to
// their types. A class changes that by the hooks of ModelHooks.h.
//
//     auto book = qn::modelWithJSON<Book>(u"{\"title\": \"Emma\", \"pages\": \"474\"}"_ns);
//     book->pages;   // 474
//
// JSON is a dictionary, or a text or bytes with a JSON object. Models nest at most 512 levels
// (ModelSetting.h). No JSON, however wrong, raises; setters and hooks may.
//
// What of the JSON was not mapped, and why, is told on request:
//
//     Ref<NSError> error;
//     auto book = qn::modelWithJSON<Book>(json, &error);
//
// `*error` is then set to the first fault, or to none (Diagnosis/ModelError.h). The JSON is looked through
// once more for it, after the mapping.
//
// Threads: any, one at a time per model.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelError.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Runtime/Object/NSProperties.h" // so that models are declared with one header

#pragma GCC visibility push(default)

namespace qn {

/// The dictionary itself, or the one in a text or bytes; none for anything else.
Ref<NSDictionary> _dictionaryWithJSON(const id &json);

/// A new object of the class, or of the class that its hook chooses for the dictionary. None for a class of
/// Foundation, without mapped properties, or that cannot be instantiated, and when mapping fails.
id modelWithDictionary(Class cls, const id &dictionary);
id modelWithJSON(Class cls, const id &json, Ref<NSError> *error = nullptr);

/// The same as a `T`; none also when the hook chooses a class that is not a `T`.
template <class T>
Ref<T> modelWithDictionary(const id &dictionary) {
    return as<T>(modelWithDictionary(T::class_(), dictionary));
}
template <class T>
Ref<T> modelWithJSON(const id &json, Ref<NSError> *error = nullptr) {
    return as<T>(modelWithJSON(T::class_(), json, error));
}

/// Fills an existing object. False when it has no mapped properties, the JSON is not a dictionary, or a hook
/// refuses.
bool modelSetWithDictionary(const id &model, const id &dictionary);
bool modelSetWithJSON(const id &model, const id &json, Ref<NSError> *error = nullptr);

} // namespace qn

#pragma GCC visibility pop
