// Property lists in the old text form (see NSPropertyListSerialization.h).
#pragma once

#include "Platform/Foundation/PropertyListObjects.h"

#include <string_view>

/// The list that the UTF-8 text holds; none when it holds none or nests too deep.
id openStepPropertyList(std::string_view text, const PropertyListObjects &objects);
