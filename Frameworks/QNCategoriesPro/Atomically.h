// Several calls on a container as one step, which other threads see whole when a lock guards the container:
//
//     return atomically(array, [](NSMutableArray &contents) { … });
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <type_traits>

#pragma GCC visibility push(default)

namespace qn {

/// Calls `operation` with the container's contents and returns its result. When the container is none,
/// `operation` is not called, and the result is none, zero or false.
template <class Container, class Operation>
auto atomically(const Ref<Container> &container, const Operation &operation) {
    using Result = std::invoke_result_t<Operation, Container &>;
    if constexpr (std::is_void_v<Result>) {
        if (container)
            container->performAtomically(
                [&](auto &contents) { operation(static_cast<Container &>(contents)); });
    } else {
        Result result{};
        atomically(container, [&](Container &contents) { result = operation(contents); });
        return result;
    }
}

} // namespace qn

#pragma GCC visibility pop
