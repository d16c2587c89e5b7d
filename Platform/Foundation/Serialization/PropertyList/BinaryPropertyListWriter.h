// Writes binary property lists (BinaryPropertyListFormat.h).
//
// Equal lists with entries in the same order yield the same bytes: a container comes before its parts, and
// the keys of a dictionary before its values; integers are as short as possible, reals have 8 bytes. Equal
// leaves of up to 224 bytes are written once.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <string>

class NSData;

/// On failure none, and `refusal` says what was expected where. Binary property lists cannot contain texts
/// with lone surrogates, dates that are not finite, more than 512 levels, or objects other than those of
/// property lists and references (PropertyListUID).
Ref<NSData> writeBinaryPropertyList(const id &list, std::string &refusal);
