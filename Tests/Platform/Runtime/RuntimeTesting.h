// What the tests of this folder share: selectors as literals, and what an operation raises.
#pragma once

#include "Platform/Runtime/Object/NSException.h"
#include "Platform/Runtime/Object/SEL.h"

#include <string>

inline SEL operator""_sel(const char *name, std::size_t length) {
    return sel_registerName({name, length});
}

/// Name and reason of what the operation raises; empty when it raises nothing.
template <class Operation>
std::string complaint(Operation &&operation) {
    try {
        operation();
        return "";
    } catch (const NSException &exception) {
        return exception.name() + " " + exception.reason();
    }
}
