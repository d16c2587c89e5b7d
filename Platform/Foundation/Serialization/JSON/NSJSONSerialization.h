// JSON text to objects and back. Safe from any thread.
//
// Reading: objects become NSDictionary, arrays NSArray, strings NSString, numbers NSNumber (64-bit integers
// or doubles), true and false boolean NSNumbers, null NSNull. Of equal keys the last one counts.
//
// Refused, with an error of NSCocoaErrorDomain (3840) whose debug description gives the reason and the offset
// in bytes: invalid JSON, text after the value, invalid UTF-8, escapes of half a surrogate pair, numbers too
// large for a double, nesting beyond 512 levels, and a top-level value other than an array or object unless
// `AllowFragments` is given.
//
// Writing, as UTF-8: dictionaries keep their order unless `SortedKeys` asks for the order of the keys' code
// units. Integers keep their 64 bits and decimal numbers all digits; other numbers get the fewest digits that
// read back equal as a double. "/" becomes "\/" unless `WithoutEscapingSlashes` is given. The pretty form
// indents by two blanks per level:
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
// Refused, with an error of NSCocoaErrorDomain (3852) whose debug description gives the reason: objects that
// are not valid JSON objects (`FragmentsAllowed` admits any value at the top level), and texts with a lone
// surrogate.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <concepts>

#pragma GCC visibility push(default)

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
    /// The most levels of arrays and objects.
    static constexpr std::size_t deepestNesting = 512;

    /// The value of the UTF-8 text. On failure none, with `*error` set unless `error` is null.
    static id JSONObjectWithData(const Ref<NSData> &data, NSJSONReadingOptions options, Ref<NSError> *error);

    /// Whether it is an array or dictionary that consists of texts, finite numbers, NSNull, arrays, and
    /// dictionaries with texts as keys, in at most 512 levels. Collections that contain themselves are not.
    static bool isValidJSONObject(const id &object);
    /// The object as UTF-8 text. On failure none, with `*error` set unless `error` is null.
    static Ref<NSData> dataWithJSONObject(const id &object, NSJSONWritingOptions options,
                                          Ref<NSError> *error);
};

#pragma GCC visibility pop
