// Property lists in the old text form (see NSPropertyListSerialization.h): text to objects.
#pragma once

#include "Platform/Foundation/Serialization/PropertyList/PropertyListObjects.h"

#include <string>
#include <string_view>

/// None, and `refusal` says in which line what was expected, for a text that is no such list, is not UTF-8 or
/// nests too deep.
id readOpenStepPropertyList(std::string_view text, const PropertyListObjects &objects, std::string &refusal);
