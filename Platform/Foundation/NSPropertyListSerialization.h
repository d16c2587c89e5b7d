// Property lists: dictionaries with texts for keys, arrays, texts, data, dates, numbers and booleans as bytes
// in three formats. Any thread.
//
// Reading finds the format out by itself: binary, XML (UTF-8), or OpenStep text (UTF-8), the old form
//
//     { name = "Zelkor L200"; levels = (10, 20); key = <0fbd7777 1c2735ae>; /* or this */ plain; }
//
// in which every leaf is a text or data, `plain;` stands for `plain = plain;`, and the braces around a whole
// file may be left out, so that a file of blanks and comments alone is the empty dictionary.
//
// Bytes from outside cannot exhaust the stack or the memory: lists that nest beyond 512 levels are refused,
// and so are binary lists that share objects so often that they would unfold beyond all measure, and XML with
// entity definitions of its own or with more than about a hundred thousand references such as "&amp;" in one
// text. Binary texts end at their first zero character.
#pragma once

#include "Platform/Runtime/NSObject.h"

class NSData;

enum class NSPropertyListFormat : NSUInteger {
    XMLFormat_v1_0 = 100,
    BinaryFormat_v1_0 = 200,
};

enum class NSPropertyListMutabilityOptions : NSUInteger {
    Immutable = 0,
    MutableContainers = 1,
    MutableContainersAndLeaves = 2, ///< leaves: texts and data; keys stay immutable
};

class NSPropertyListSerialization {
public:
    /// How deep arrays and dictionaries may nest, read or written.
    static constexpr unsigned deepestNesting = 512;

    /// The property list that the bytes hold; none when they hold none.
    static id propertyListWithData(const Ref<NSData> &data, NSPropertyListMutabilityOptions options =
                                                                NSPropertyListMutabilityOptions::Immutable);

    /// The bytes of a property list; none for any other object, and for what the format cannot hold: texts
    /// with a surrogate that stands alone or with the character 0, dates that are not finite; in XML also the
    /// other control characters, U+FFFE, U+FFFF, and years outside 1 to 9999. XML dates are whole seconds.
    static Ref<NSData> dataWithPropertyList(const id &list, NSPropertyListFormat format);
};
