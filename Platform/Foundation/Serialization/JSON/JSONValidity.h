// Checks whether objects can be written as JSON, and finds what cannot.
//
// An object of this class belongs to one thread at a time.
#pragma once

#include "Platform/Foundation/Serialization/JSON/JSONWalk.h"

#include <vector>

#pragma GCC visibility push(default)

class JSONValidity {
public:
    /// Null for a value that can be written, and nests no deeper than NSJSONSerialization allows.
    json::Reason whyInvalid(const id &value) { return whyInvalid(value, 0); }
    /// The containers around the invalid object found last, the innermost first and the checked value last.
    /// None of them is valid by itself either, unless the reason was the depth.
    const std::vector<id> &invalidContainers() const { return invalidContainers_; }

private:
    json::Reason whyInvalid(const id &value, std::size_t depth);

    std::vector<id> invalidContainers_;
};

#pragma GCC visibility pop
