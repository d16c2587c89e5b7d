// Type encodings of the runtime, deduced from C++ types, and the shape in which values cross a message send.
#pragma once

#include "Platform/Runtime/Ref.h"
#include "Platform/Runtime/SEL.h"

#include <concepts>
#include <string>
#include <type_traits>

namespace runtime {

template <class T>
inline constexpr bool isRef = false;
template <class T>
inline constexpr bool isRef<std::shared_ptr<T>> = true;

/// Objects cross a send as `id`, everything else as itself. So every send of the same shape has one C++ type.
template <class T>
using Result = std::conditional_t<isRef<std::decay_t<T>>, id, std::decay_t<T>>;
template <class T>
using Argument = std::conditional_t<isRef<std::decay_t<T>>, const id &, std::decay_t<T>>;

/// The encoding of one type, e.g. "q" for a signed 64-bit integer and "@" for an object.
/// A type without an encoding does not compile.
template <class T>
std::string typeEncoding() {
    using U = std::decay_t<T>;
    if constexpr (std::is_void_v<U>)
        return "v";
    else if constexpr (isRef<U>)
        return "@";
    else if constexpr (std::same_as<U, Class>)
        return "#";
    else if constexpr (std::same_as<U, SEL>)
        return ":";
    else if constexpr (std::same_as<U, bool>)
        return "B";
    else if constexpr (std::same_as<U, const char *>)
        return "r*";
    else if constexpr (std::same_as<U, char *>)
        return "*";
    else if constexpr (std::is_pointer_v<U>)
        return "^v";
    else if constexpr (std::same_as<U, float>)
        return "f";
    else if constexpr (std::same_as<U, double>)
        return "d";
    else if constexpr (std::same_as<U, long double>)
        return "D";
    else if constexpr (std::is_enum_v<U>)
        return typeEncoding<std::underlying_type_t<U>>();
    else {
        static_assert(std::is_integral_v<U>, "this type has no encoding the runtime can carry");
        constexpr const char *codes = std::is_signed_v<U> ? "csiq" : "CSIQ";
        constexpr int index = sizeof(U) == 1 ? 0 : sizeof(U) == 2 ? 1 : sizeof(U) == 4 ? 2 : 3;
        return std::string(1, codes[index]);
    }
}

/// The encoding of a method: result, frame size, receiver, selector and arguments with their offsets,
/// e.g. "v24@0:8@16" for an operation that takes one object and returns nothing. Arguments follow each other
/// without gaps, those narrower than an int as wide as one: "v28@0:8B16@20".
template <class R, class... A>
std::string methodEncoding() {
    std::size_t offset = 16;
    std::string arguments;
    [[maybe_unused]] const auto add = [&](const std::string &encoding, std::size_t size) {
        arguments += encoding + std::to_string(offset);
        offset += size < sizeof(int) ? sizeof(int) : size;
    };
    (add(typeEncoding<A>(), isRef<std::decay_t<A>> ? sizeof(void *) : sizeof(std::decay_t<A>)), ...);
    return typeEncoding<R>() + std::to_string(offset) + "@0:8" + arguments;
}

} // namespace runtime
