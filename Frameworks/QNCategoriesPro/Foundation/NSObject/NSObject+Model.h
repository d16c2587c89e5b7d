// Fills objects with what JSON tells: the values of a dictionary go to the properties of the same names,
// converted to their types. ModelHooks.h tells how a class changes that.
//
//     auto book = qn::modelWithJSON<Book>(u"{\"title\": \"Emma\", \"pages\": \"474\"}"_ns);
//     book->pages;   // 474
//
// JSON is a dictionary, or a text or bytes that hold one. Models within models nest as deep as
// ModelSetting.h tells. Values of JSON never raise; setters and hooks may.
//
// Threads: any, one at a time for each model.
#pragma once

#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Runtime/Object/NSProperties.h" // so that models are declared with one header

namespace qn {

/// None unless JSON is, or is the text or the bytes of, a dictionary.
Ref<NSDictionary> _dictionaryWithJSON(const id &json);

/// A new object of the class, or of the one that the class names for the dictionary. None for a class of
/// Foundation, without properties, or that cannot be instantiated, and when mapping fails.
id modelWithDictionary(Class cls, const id &dictionary);
id modelWithJSON(Class cls, const id &json);

/// The same; none as well when the class names one that is no `T`.
template <class T>
Ref<T> modelWithDictionary(const id &dictionary) {
    return as<T>(modelWithDictionary(T::class_(), dictionary));
}
template <class T>
Ref<T> modelWithJSON(const id &json) {
    return as<T>(modelWithJSON(T::class_(), json));
}

/// False when nothing could be mapped or a hook says so.
bool modelSetWithDictionary(const id &model, const id &dictionary);
bool modelSetWithJSON(const id &model, const id &json);

} // namespace qn
