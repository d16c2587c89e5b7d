// Finds out why JSON was not mapped, or not all of it. It looks through the JSON once more, after the mapping
// and only for those who ask, so the mapping itself knows nothing of it.
//
// It judges by what the conversions make of each value, and calls neither accessors nor hooks of models but
// `modelCustomClassForDictionary:`. Within an object whose class maps another dictionary instead of it, it
// looks for nothing.
//
// Threads: any.
#pragma once

#include "Platform/Foundation/System/NSError.h"

namespace qn {

/// What was to be made of the JSON: a model, those of an array or of a dictionary, or nothing but the values
/// of an existing model.
enum class ModelRoot { model, array, dictionary, existing };

/// The reason; none when everything was mapped. `made` is the number of models that the mapping made.
Ref<NSError> diagnosis(const id &json, Class cls, ModelRoot root, NSUInteger made);

} // namespace qn
