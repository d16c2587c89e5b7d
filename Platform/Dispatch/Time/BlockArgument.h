// The check for empty blocks. They are refused at once, since nobody could handle the error when they are
// run.
#pragma once

#include "Platform/Runtime/Object/NSException.h"

#include <functional>
#include <string>

namespace dispatch {

/// Raises NSInvalidArgumentException, with the name of the call, for an empty function.
template <class Signature>
void checkBlock(const char *call, const std::function<Signature> &block) {
    if (!block)
        throw NSException(NSInvalidArgumentException, std::string(call) + ": block cannot be nil");
}
/// Other callables are never empty.
template <class Callable>
void checkBlock(const char *, const Callable &) {}

} // namespace dispatch
