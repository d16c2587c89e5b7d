// JSON text to objects and back. Any thread.
//
// Reading, in one pass: objects become dictionaries, arrays arrays, texts strings, numbers 64-bit integers or
// doubles, true and false booleans, null the null marker.
//
// Refused, with an error of NSCocoaErrorDomain (3840) whose debug description names the reason and the offset
// in bytes: text that is not JSON, text after the value, invalid UTF-8, escapes of half a surrogate pair,
// nesting beyond 512 levels, and a single value as the whole text unless `AllowFragments` is given.
//
// Writing, as UTF-8: dictionaries keep their order unless `SortedKeys` asks for that of the keys' code units.
// Whole numbers keep 64 bits, any other number gets the fewest digits that read back equal as a double.
// "/" becomes "\/" unless `WithoutEscapingSlashes` is given. The pretty form has two blanks a level:
//
//     {
//       "list" : [
//         1,
//         true
//       ],
//       "nothing" : {
//
//       }
//     }
//
// Refused, with an error of NSCocoaErrorDomain (3852) whose debug description names the reason: whatever is
// no valid JSON object (unless `FragmentsAllowed` lets a single value pass), and texts with a surrogate that
// stands alone.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <concepts>

class NSData;
class NSError;

enum class NSJSONReadingOptions : NSUInteger {
    None = 0,
    MutableContainers = 1,
    AllowFragments = 4,
};

enum class NSJSONWritingOptions : NSUInteger {
    None = 0,
    PrettyPrinted = 1,
    SortedKeys = 2,
    FragmentsAllowed = 4,
    WithoutEscapingSlashes = 8,
};

template <class T>
concept NSJSONOptions = std::same_as<T, NSJSONReadingOptions> || std::same_as<T, NSJSONWritingOptions>;

template <NSJSONOptions Options>
constexpr Options operator|(Options a, Options b) {
    return static_cast<Options>(static_cast<NSUInteger>(a) | static_cast<NSUInteger>(b));
}
template <NSJSONOptions Options>
constexpr bool operator&(Options a, Options b) {
    return (static_cast<NSUInteger>(a) & static_cast<NSUInteger>(b)) != 0;
}

class NSJSONSerialization {
public:
    /// How deep arrays and objects may nest.
    static constexpr std::size_t deepestNesting = 512;

    /// The value that the UTF-8 text holds, or none with `*error` set when `error` is given.
    static id JSONObjectWithData(const Ref<NSData> &data, NSJSONReadingOptions options, Ref<NSError> *error);

    /// Whether it is an array or dictionary of texts, finite numbers, null markers, arrays and dictionaries
    /// with texts for keys, nested 512 levels at most. One that holds itself nests without end.
    static bool isValidJSONObject(const id &object);
    /// The object as text, or none with `*error` set when `error` is given.
    static Ref<NSData> dataWithJSONObject(const id &object, NSJSONWritingOptions options,
                                          Ref<NSError> *error);
};
