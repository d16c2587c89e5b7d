// Property lists in binary: bytes to objects, in one pass.
#pragma once

#include "Platform/Foundation/Serialization/PropertyList/PropertyListObjects.h"

#include <string>
#include <string_view>

/// The list that the bytes hold. Immutable objects that the list shares are shared; what is to be mutable is
/// made anew for every place.
///
/// None, and `refusal` says at which byte what was expected, for bytes that hold none; for objects other than
/// those of a property list, such as sets; for texts that are not ASCII or in which a surrogate stands alone;
/// for whole numbers beyond 64 bits and dates that are not finite; and for lists that hold themselves, nest
/// too deep or unfold beyond all measure (see BinaryPropertyListFormat.h).
id readBinaryPropertyList(std::string_view bytes, const PropertyListObjects &objects, std::string &refusal);
