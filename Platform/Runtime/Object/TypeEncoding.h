// Type encodings of the runtime, deduced from C++ types, and the types as which values are passed in a
// message send.
//
// | C++ type                           | encoding              | is passed as                  |
// |------------------------------------|-----------------------|-------------------------------|
// | `id`, `Ref<T>`, `Weak<T>`          | `@`; of a property `@"T"` | `id`; as argument `const id &` |
// | `Ref<NSBlock>`, `Ref<Block<…>>`    | `@?`                  | the same                      |
// | `Class`, `SEL`                     | `#`, `:`              | itself                        |
// | `bool`                             | `B`                   | `bool`                        |
// | whole numbers and enumerations     | `c s i q`, `C S I Q`  | `std::int8_t` … `std::uint64_t` |
// | `float`, `double`, `long double`   | `f`, `d`, `D`         | itself                        |
// | `char *`, `const char *`           | `*`, `r*`             | `void *`                      |
// | other pointers to data             | `^v`, `r^v`           | `void *`                      |
// | pointers to functions              | `^?`                  | itself                        |
// | C arrays, `T[N]`                   | `[NT]`                | `void *` to the first element |
// | structures and unions              | `customEncoding<T>`   | itself                        |
//
// So the C++ signature follows from the encoding alone: a method encoded "v20@0:8i16" can be called as
// `void (*)(NSObject *, SEL, std::int32_t)`. A method that is sent an object of another class than it takes
// receives none.
//
// A structure or union gets its encoding, with all its fields, at namespace scope:
//
//     struct Span { double from, to; };
//     template <> inline constexpr const char *runtime::customEncoding<Span> = "{Span=dd}";
#pragma once

#include "Platform/Runtime/Object/EncodedType.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <concepts>
#include <cstdint>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>

#pragma GCC visibility push(default)

class NSBlock;
template <class Signature>
class Block;

namespace runtime {

template <class T>
inline constexpr const char *customEncoding = nullptr;

template <class T>
inline constexpr bool isRef = false;
template <class T>
inline constexpr bool isRef<Ref<T>> = true;
template <class T>
inline constexpr bool isWeak = false;
template <class T>
inline constexpr bool isWeak<Weak<T>> = true;
template <class T>
inline constexpr bool isObject = isRef<T> || isWeak<T>;

template <class T>
inline constexpr bool isBlock = std::same_as<T, NSBlock>;
template <class Signature>
inline constexpr bool isBlock<Block<Signature>> = true;

template <class T>
inline constexpr bool isDataPointer = std::is_pointer_v<T> && !std::is_function_v<std::remove_pointer_t<T>> &&
                                      !std::same_as<T, Class> && !std::same_as<T, SEL>;

/// Whether the encoding given to a structure or union describes its exact size and alignment.
template <class T>
constexpr bool isEncodedWhole() {
    const auto type = firstType(customEncoding<T>);
    return type && type->length == std::string_view(customEncoding<T>).size() && type->size == sizeof(T) &&
           type->alignment == alignof(T);
}

template <class T>
concept isTextLike =
    std::convertible_to<const T &, std::string_view> || std::convertible_to<const T &, std::u16string_view>;

/// The encoding of one type. A type without an encoding does not compile.
template <class T>
std::string typeEncoding() {
    using U = std::remove_cvref_t<T>;
    if constexpr (std::is_void_v<U>)
        return "v";
    else if constexpr (isObject<U>)
        return isBlock<typename U::element_type> ? "@?" : "@";
    else if constexpr (std::is_array_v<U>)
        return "[" + std::to_string(std::extent_v<U>) + typeEncoding<std::remove_extent_t<U>>() + "]";
    else if constexpr (std::same_as<U, Class>)
        return "#";
    else if constexpr (std::same_as<U, SEL>)
        return ":";
    else if constexpr (std::is_pointer_v<U> && !isDataPointer<U>)
        return "^?";
    else if constexpr (std::is_pointer_v<U>) {
        using Pointee = std::remove_pointer_t<U>;
        return std::string(std::is_const_v<Pointee> ? "r" : "") +
               (std::same_as<std::remove_const_t<Pointee>, char> ? "*" : "^v");
    } else if constexpr (std::same_as<U, bool>)
        return "B";
    else if constexpr (std::same_as<U, float>)
        return "f";
    else if constexpr (std::same_as<U, double>)
        return "d";
    else if constexpr (std::same_as<U, long double>)
        return "D";
    else if constexpr (std::is_enum_v<U>)
        return typeEncoding<std::underlying_type_t<U>>();
    else if constexpr (std::is_integral_v<U> && sizeof(U) <= 8) {
        constexpr const char *codes = std::is_signed_v<U> ? "csiq" : "CSIQ";
        constexpr int index = sizeof(U) == 1 ? 0 : sizeof(U) == 2 ? 1 : sizeof(U) == 4 ? 2 : 3;
        return std::string(1, codes[index]);
    } else if constexpr (!customEncoding<U> && isTextLike<U>)
        static_assert(!isTextLike<U>, "a text is an object here: Ref<NSString>");
    else if constexpr (!customEncoding<U> && std::ranges::range<U>)
        static_assert(!std::ranges::range<U>,
                      "a list is an object here: Ref<NSArray>, Ref<NSSet>, Ref<NSDictionary> or Ref<NSData>");
    else if constexpr (std::derived_from<U, NSObject>)
        static_assert(!std::derived_from<U, NSObject>, "objects are held by a Ref");
    else {
        static_assert(customEncoding<U> != nullptr,
                      "this type has no encoding: specialise runtime::customEncoding for it");
        static_assert(std::is_trivially_copyable_v<U>, "only plain bytes can have an encoding of their own");
        static_assert(!customEncoding<U> || isEncodedWhole<U>(),
                      "the encoding does not describe the size of this type");
        return customEncoding<U>;
    }
}

template <class T>
constexpr auto carried() {
    if constexpr (isObject<T>)
        return std::type_identity<id>();
    else if constexpr (std::is_array_v<T> || isDataPointer<T>)
        return std::type_identity<void *>();
    else if constexpr (std::is_enum_v<T>)
        return carried<std::underlying_type_t<T>>();
    else if constexpr (std::is_integral_v<T> && !std::same_as<T, bool>) {
        using Signed = std::conditional_t<
            sizeof(T) == 1, std::int8_t,
            std::conditional_t<sizeof(T) == 2, std::int16_t,
                               std::conditional_t<sizeof(T) == 4, std::int32_t, std::int64_t>>>;
        return std::type_identity<
            std::conditional_t<std::is_signed_v<T>, Signed, std::make_unsigned_t<Signed>>>();
    } else
        return std::type_identity<T>();
}

/// The type as which a value is passed, by the table above.
template <class T>
using Result = typename decltype(carried<std::remove_cvref_t<T>>())::type;
template <class T>
using Argument = std::conditional_t<isObject<std::remove_cvref_t<T>>, const id &, Result<T>>;

/// The value as it is passed in a send; a reference to itself where it needs no change.
template <class T>
decltype(auto) carry(const T &value) {
    if constexpr (std::same_as<T, Result<T>>)
        return (value);
    else if constexpr (isWeak<T>)
        return id(value.lock());
    else if constexpr (std::is_array_v<T> || isDataPointer<T>)
        return const_cast<void *>(static_cast<const void *>(value));
    else
        return static_cast<Result<T>>(value);
}

/// The value that was passed in a send, as a `T`; an object of another class becomes none.
template <class T, class Source>
decltype(auto) uncarry(const Source &value) {
    using U = std::remove_cvref_t<T>;
    if constexpr (std::same_as<U, Source>)
        return (value);
    else if constexpr (isObject<U>)
        return as<typename U::element_type>(value);
    else
        return static_cast<U>(value);
}

/// The encoding of a method: result, frame size, receiver, selector and arguments with their offsets in
/// bytes, e.g. "v24@0:8@16" for an operation that takes one object and returns nothing. Arguments follow each
/// other without gaps; those narrower than an int count as four bytes: "v28@0:8B16@20".
template <class R, class... A>
std::string methodEncoding() {
    std::size_t offset = 16;
    std::string arguments;
    [[maybe_unused]] const auto add = [&](const std::string &encoding, std::size_t size) {
        arguments += encoding + std::to_string(offset);
        offset += size < sizeof(int) ? sizeof(int) : size;
    };
    (add(typeEncoding<A>(), isObject<std::remove_cvref_t<A>> ? sizeof(void *) : sizeof(Result<A>)), ...);
    return typeEncoding<R>() + std::to_string(offset) + "@0:8" + arguments;
}

} // namespace runtime

#pragma GCC visibility pop
