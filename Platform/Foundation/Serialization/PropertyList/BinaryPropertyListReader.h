// Reads binary property lists (BinaryPropertyListFormat.h).
#pragma once

#include "Platform/Foundation/Serialization/PropertyList/PropertyListObjects.h"

#include <string>
#include <string_view>

/// The property list. Immutable objects that are shared in the bytes are shared; mutable ones are made anew
/// for every reference.
///
/// On failure none, and `refusal` says what was expected at which byte: for any other bytes; for objects that
/// do not belong in property lists, such as sets; for ASCII texts with other bytes and UTF-16 texts with lone
/// surrogates; for integers beyond 64 bits and dates that are not finite; and for lists that contain
/// themselves, nest too deeply or expand too much.
id readBinaryPropertyList(std::string_view bytes, const PropertyListObjects &objects, std::string &refusal);
