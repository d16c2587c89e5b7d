// Values of a dictionary for properties of Foundation's plain classes: texts, numbers, bytes, dates, URLs.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/PropertyStore.h"

namespace qn {

/// Stores the value, converted to the class of the property; none where a text does not convert. False, and
/// nothing is stored, for a value of an unsuitable class and for a property that is none of these.
bool storeFoundationValue(const PropertyStore &store, const id &value);

} // namespace qn
