// Values of a dictionary for properties that hold arrays, dictionaries or sets, maybe of models.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/PropertyStore.h"

namespace qn {

/// Stores the value. If the property has a class for its elements, dictionaries in the value become models of
/// it, and elements that neither are such models nor become one are left out. False, and nothing is stored,
/// for a value of another kind and for a property of another kind.
bool storeContainerValue(const PropertyStore &store, const id &value);

} // namespace qn
