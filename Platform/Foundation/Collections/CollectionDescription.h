// The descriptions of collections: the old property-list form, indented by four blanks per level.
#pragma once

#include "Platform/Foundation/Collections/ObjectVisit.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <string>

using DescriptionVisit = ObjectVisit<struct DescribingCollections>;

/// The text that `describe` makes of the collection, or the root object's "<Class: 0x…>" within just that and
/// below 512 collections: of one that holds itself, and of one that nests very deep, there would be no end.
template <class Describe>
Ref<NSString> collectionDescription(const NSObject &collection, const Describe &describe) {
    if (!DescriptionVisit::admits(collection))
        return collection.NSObject::description();
    const DescriptionVisit visit(collection);
    return describe();
}

/// The text of one element of a collection at `indent` levels: collections span lines, texts are quoted
/// unless they are plain words, characters beyond ASCII become "\Uxxxx". With a locale, elements that know
/// `descriptionWithLocale:` are asked for that.
std::u16string collectionElementDescription(const id &element, const id &locale, NSUInteger indent);

/// The blanks in front of a line. More than 512 levels count as 512.
std::u16string indentation(NSUInteger levels);

/// The text in quotes: `\"`, `\\`, `\n`, `\r`, `\t`, and "\Uxxxx" for other code units outside 0x20 to 0x7E.
std::u16string quotedDescription(const std::u16string &units);
