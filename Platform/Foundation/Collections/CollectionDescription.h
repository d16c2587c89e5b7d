// How collections print themselves: the old property-list form, indented by four blanks a level.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <string>

/// The text of one element of a collection at `indent` levels: collections span lines, texts are quoted
/// unless they are plain words, characters beyond ASCII become "\Uxxxx". With a locale, elements that know
/// `descriptionWithLocale:` are asked for that.
std::u16string collectionElementDescription(const id &element, const id &locale, NSUInteger indent);

/// The blanks in front of a line. Levels beyond 512 count as 512.
std::u16string indentation(NSUInteger levels);

/// The text in quotes, escaped as above.
std::u16string quotedDescription(const std::u16string &units);
