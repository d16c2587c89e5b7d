// Operations of several calls on a container that count as one, also on a container that a lock guards:
//
//     return oneStep(array, [](NSMutableArray &contents) { … });
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <type_traits>

namespace qn {

/// What `operation` gives for the container's contents; none, zero or false for a container of none.
template <class Container, class Operation>
auto oneStep(const Ref<Container> &container, const Operation &operation) {
    using Result = std::invoke_result_t<Operation, Container &>;
    if constexpr (std::is_void_v<Result>) {
        if (container)
            container->performAsOneStep(
                [&](auto &contents) { operation(static_cast<Container &>(contents)); });
    } else {
        Result result{};
        oneStep(container, [&](Container &contents) { result = operation(contents); });
        return result;
    }
}

} // namespace qn
