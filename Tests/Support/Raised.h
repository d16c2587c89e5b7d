// What operations raise, as text.
#pragma once

#include "Platform/Runtime/Object/NSException.h"
#include "Tests/Support/Testing.h"

/// Name and reason of what the operation raises; empty when it raises nothing.
template <class Operation>
std::string complaint(Operation &&operation) {
    try {
        static_cast<void>(operation());
        return "";
    } catch (const NSException &exception) {
        return exception.name() + " " + exception.reason();
    }
}

/// The name alone.
template <class Operation>
std::string raised(Operation &&operation) {
    const std::string all = complaint(std::forward<Operation>(operation));
    return all.substr(0, all.find(' '));
}
