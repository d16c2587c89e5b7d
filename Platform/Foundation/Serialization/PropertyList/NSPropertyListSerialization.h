// Property lists: dictionaries with texts as keys, arrays, texts, data, dates, numbers and booleans, as bytes
// in three formats, of which two can be written. Safe from any thread.
//
// The reader recognises the format: binary (BinaryPropertyListFormat.h), XML (XMLPropertyListReader.h), or
// OpenStep text in UTF-8:
//
//     { name = "Zelkor L200"; levels = (10, 20); key = <0fbd7777 1c2735ae>; /* or this */ plain; }
//
// There every leaf is a text or data, `plain;` is short for `plain = plain;`, and the braces around a whole
// file may be omitted, so a file with only blanks and comments is the empty dictionary.
//
// Bytes from outside cannot exhaust the stack, the memory or the time: refused are lists that nest beyond 512
// levels or contain themselves, binary lists that share objects so often that they would expand too much, and
// XML whose document type has definitions. The C library's locale does not matter.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

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
    /// The most levels of arrays and dictionaries, read or written.
    static constexpr unsigned deepestNesting = 512;

    /// The property list. On failure none, with `*error` set unless `error` is null: NSCocoaErrorDomain,
    /// 3840; the debug description says what was expected where.
    static id
    propertyListWithData(const Ref<NSData> &data,
                         NSPropertyListMutabilityOptions options = NSPropertyListMutabilityOptions::Immutable,
                         Ref<NSError> *error = nullptr);

    /// The bytes of a property list. On failure none, with an error of code 3852 in the same way: for other
    /// objects, and for those that the format cannot express. These are texts with lone surrogates and dates
    /// that are not finite; in XML also control characters, U+FFFE, U+FFFF, and years outside 0 to 9999.
    /// Read back, the objects are equal, except that decimal numbers become doubles and that XML cuts dates
    /// to whole seconds. Numbers may have another type.
    static Ref<NSData> dataWithPropertyList(const id &list, NSPropertyListFormat format,
                                            Ref<NSError> *error = nullptr);
};

#pragma GCC visibility pop
