// Property lists in binary: objects to bytes. The layout is told in BinaryPropertyListFormat.h.
//
// Equal lists whose entries are in the same order have the same bytes: a container comes before its parts,
// and the keys of a dictionary before its values; numbers are as short as they can be, reals have 8 bytes.
// Short leaves with the same bytes are written once.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <string>

class NSData;

/// None, and `refusal` says where what was expected, for what a binary property list cannot hold: texts with
/// a surrogate that stands alone, dates that are not finite, more than 512 levels, and other objects than
/// those of property lists and references (PropertyListUID).
Ref<NSData> writeBinaryPropertyList(const id &list, std::string &refusal);
