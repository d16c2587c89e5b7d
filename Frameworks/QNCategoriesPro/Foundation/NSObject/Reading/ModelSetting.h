// The steps by which a dictionary fills a model. Callers map with NSObject+Model.h.
//
// Models nest at most `deepestVisits` levels, and no model is made from a dictionary within itself; such
// values are left out. So no dictionary, however built, exhausts the stack or keeps a mapping from ending. A
// dictionary that is contained several times is mapped each time, though.
//
// Threads: those that the setters and hooks of the models allow.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"

/// What is being filled, and from what. The caller keeps all three alive.
struct ModelSetContext {
    const _QNModelMeta &modelMeta;
    NSObject &model; ///< of the class of the record
    const NSDictionary &dictionary;
};

/// Sets every property with that key.
void ModelSetWithDictionaryFunction(const id &key, const id &value, const ModelSetContext &context);
/// Sets the property if the dictionary has a value under its key, its path or one of its several keys.
void ModelSetWithPropertyMetaArrayFunction(const _QNModelPropertyMeta &propertyMeta,
                                           const ModelSetContext &context);
/// Converts the value to the type of the property and calls the setter. A number property is always set, to 0
/// for a value that is not a number. An object property becomes none when a text does not convert, and keeps
/// its value when this one is of an unsuitable kind.
void ModelSetValueForProperty(NSObject &model, const id &value, const _QNModelPropertyMeta &meta);

namespace qn {

/// Fills the model; the result is that of `modelSetWithDictionary`.
bool fillModel(NSObject &model, const id &dictionary);
/// A new instance filled with the dictionary, returned even if the model refuses it; none for a class that
/// cannot be instantiated.
id newModel(Class cls, const id &dictionary);

} // namespace qn
