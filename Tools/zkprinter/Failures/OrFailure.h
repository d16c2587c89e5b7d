// What was found out, or why it was not.
#pragma once

#include "Tools/zkprinter/Failures/Failure.h"

#include <variant>

template <class Value>
using OrFailure = std::variant<Value, Failure>;

/// What `find` returns, or the Failure that it throws.
template <class Find>
auto orFailure(Find find) -> OrFailure<decltype(find())> {
    try {
        return find();
    } catch (const Failure &failure) {
        return failure;
    }
}
