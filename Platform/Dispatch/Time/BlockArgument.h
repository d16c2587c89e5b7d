// What the calls of this folder do with a block of none: nobody could run it, and who gave it is gone by the
// time it would be tried.
#pragma once

#include "Platform/Runtime/Object/NSException.h"

#include <functional>
#include <string>

namespace dispatch {

/// Raises NSInvalidArgumentException, with the name of the call, for a function of none.
template <class Signature>
void checkBlock(const char *call, const std::function<Signature> &block) {
    if (!block)
        throw NSException(NSInvalidArgumentException, std::string(call) + ": block cannot be nil");
}
/// Other callables are always there.
template <class Callable>
void checkBlock(const char *, const Callable &) {}

} // namespace dispatch
