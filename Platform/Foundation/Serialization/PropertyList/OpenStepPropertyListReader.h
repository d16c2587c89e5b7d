// Reads property lists in OpenStep's text format (NSPropertyListSerialization.h).
#pragma once

#include "Platform/Foundation/Serialization/PropertyList/PropertyListObjects.h"

#include <string>
#include <string_view>

/// On failure none, and `refusal` says what was expected in which line: for any other text, for invalid
/// UTF-8, and for lists that nest too deeply.
id readOpenStepPropertyList(std::string_view text, const PropertyListObjects &objects, std::string &refusal);
