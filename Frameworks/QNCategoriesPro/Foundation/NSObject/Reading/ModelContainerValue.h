// Values of a dictionary for properties that hold arrays, dictionaries or sets, maybe of models.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/PropertyStore.h"

namespace qn {

/// Stores the value, its dictionaries as models when the property has a class for its elements; then what
/// neither is nor becomes one is left out. False, and nothing is stored, for a value that does not fit and
/// for a property of another kind.
bool storeContainerValue(const PropertyStore &store, const id &value);

} // namespace qn
