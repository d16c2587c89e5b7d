// Property lists: dictionaries with texts for keys, arrays, texts, data, dates, numbers and booleans as bytes
// in three formats. Any thread.
//
// Reading finds the format out by itself: binary (see BinaryPropertyListFormat.h), XML (see
// XMLPropertyListReader.h), or OpenStep text (UTF-8), the old form
//
//     { name = "Zelkor L200"; levels = (10, 20); key = <0fbd7777 1c2735ae>; /* or this */ plain; }
//
// in which every leaf is a text or data, `plain;` stands for `plain = plain;`, and the braces around a whole
// file may be left out, so that a file of blanks and comments alone is the empty dictionary.
//
// Bytes from outside cannot exhaust the stack, the memory or the time: lists that nest beyond 512 levels or
// hold themselves are refused, and so are binary lists that share objects so often that they would unfold
// beyond all measure, and XML with definitions of its own. Nothing here follows the C locale.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

class NSData;
class NSError;

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

    /// The property list that the bytes hold. None for bytes that hold none, with `*error`
    /// (NSCocoaErrorDomain, 3840, the debug description says where what was expected) set when `error` is
    /// given.
    static id
    propertyListWithData(const Ref<NSData> &data,
                         NSPropertyListMutabilityOptions options = NSPropertyListMutabilityOptions::Immutable,
                         Ref<NSError> *error = nullptr);

    /// The bytes of a property list. None, with an error of code 3852 in the same way, for any other object
    /// and for what the format cannot hold: texts with a surrogate that stands alone, dates that are not
    /// finite; in XML also control characters, U+FFFE, U+FFFF, and years outside 0 to 9999. XML dates are
    /// whole seconds. All else comes back as it was, but numbers as wide as the format has them.
    static Ref<NSData> dataWithPropertyList(const id &list, NSPropertyListFormat format,
                                            Ref<NSError> *error = nullptr);
};
