// Values of a dictionary for properties of Foundation's plain classes: texts, numbers, bytes, dates, URLs.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/PropertyStore.h"

namespace qn {

/// Stores the value, converted to what the property holds. False, and nothing is stored, for a value that
/// does not convert and for a property that is none of these.
bool storeFoundationValue(const PropertyStore &store, const id &value);

} // namespace qn
