// Ownership of objects: a `Ref` shares an object, a `Weak` refers to it without keeping it, `id` is a `Ref`
// to any object. "None" is an empty `Ref`.
#pragma once

#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>

#pragma GCC visibility push(default)

class NSObject;
struct objc_class;

template <class T>
requires std::is_class_v<T>
using Ref = std::shared_ptr<T>;
template <class T>
requires std::is_class_v<T>
using Weak = std::weak_ptr<T>;

using id = Ref<NSObject>;
/// Classes live as long as the process, so a plain pointer names one. As an object: `cls->self()`.
using Class = objc_class *;

using NSInteger = std::int64_t;
using NSUInteger = std::uint64_t;
using unichar = char16_t;

/// Returned by a search that found nothing.
inline constexpr NSUInteger NSNotFound = 0x7FFFFFFFFFFFFFFF;

/// Makes an object. Objects are always made like this, never on the stack.
template <class T, class... Arguments>
Ref<T> make(Arguments &&...arguments) {
    return std::make_shared<T>(std::forward<Arguments>(arguments)...);
}

#pragma GCC visibility pop
