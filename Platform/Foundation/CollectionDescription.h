// How collections print themselves: the old property-list form, indented by four blanks a level.
#pragma once

#include "Platform/Runtime/NSObject.h"

#include <string>

/// The text of one element of a collection at `indent` levels: collections span lines, texts are quoted
/// unless they are plain words, characters beyond ASCII become "\Uxxxx".
std::u16string collectionElementDescription(const id &element, NSUInteger indent);
