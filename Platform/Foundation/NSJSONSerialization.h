// JSON text to objects, in one pass.
//
// Objects become dictionaries, arrays arrays, texts strings, numbers 64-bit integers or doubles, true and
// false booleans, null the null marker. Any thread.
//
// Refused, with an error of NSCocoaErrorDomain (3840) whose debug description names the reason and the offset
// in bytes: text that is not JSON, text after the value, invalid UTF-8, escapes of half a surrogate pair,
// nesting beyond 512 levels, and a single value as the whole text unless `AllowFragments` is given.
#pragma once

#include "Platform/Runtime/NSObject.h"

class NSData;
class NSError;

enum class NSJSONReadingOptions : NSUInteger {
    None = 0,
    MutableContainers = 1,
    AllowFragments = 4,
};
constexpr NSJSONReadingOptions operator|(NSJSONReadingOptions a, NSJSONReadingOptions b) {
    return static_cast<NSJSONReadingOptions>(static_cast<NSUInteger>(a) | static_cast<NSUInteger>(b));
}
constexpr bool operator&(NSJSONReadingOptions a, NSJSONReadingOptions b) {
    return (static_cast<NSUInteger>(a) & static_cast<NSUInteger>(b)) != 0;
}

class NSJSONSerialization {
public:
    /// How deep arrays and objects may nest.
    static constexpr std::size_t deepestNesting = 512;

    /// The value that the UTF-8 text holds, or none with `*error` set when `error` is given.
    static id JSONObjectWithData(const Ref<NSData> &data, NSJSONReadingOptions options, Ref<NSError> *error);
};
