// The steps by which a dictionary fills a model. Callers map with NSObject+Model.h.
//
// Models nest at most `deepestVisits` levels, and none is made of a dictionary within itself: what lies
// deeper is left out. So no dictionary, however built, exhausts the stack or keeps a mapping from ending.
// One that holds the same dictionaries many times over, though, is mapped as many times.
//
// Threads: as the setters and hooks of the models.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"

/// What is being filled, with what. The caller keeps all three.
struct ModelSetContext {
    const _QNModelMeta &modelMeta;
    NSObject &model; ///< of the class of the record
    const NSDictionary &dictionary;
};

/// Sets every property that is mapped to the key.
void ModelSetWithDictionaryFunction(const id &key, const id &value, const ModelSetContext &context);
/// Sets the property when the dictionary has a value under its key, its path or one of its several keys.
void ModelSetWithPropertyMetaArrayFunction(const _QNModelPropertyMeta &propertyMeta,
                                           const ModelSetContext &context);
/// Converts the value to the type of the property and calls the setter. A number is always set, to 0 for
/// what is none; an object of another kind is left as it is by a value that does not convert.
void ModelSetValueForProperty(NSObject &model, const id &value, const _QNModelPropertyMeta &meta);

namespace qn {

/// Whether the model took the dictionary, as `modelSetWithDictionary` says.
bool fillModel(NSObject &model, const id &dictionary);
/// A new instance filled with the dictionary, returned even if the model refuses it; none for a class that
/// cannot be instantiated.
id newModel(Class cls, const id &dictionary);

} // namespace qn
