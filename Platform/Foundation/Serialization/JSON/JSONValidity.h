// Whether objects are valid JSON, and what is not.
//
// Threads: one at a time.
#pragma once

#include "Platform/Foundation/Serialization/JSON/JSONWalk.h"

#include <vector>

class JSONValidity {
public:
    /// Null for a value of JSON that nests as deep as NSJSONSerialization takes it.
    json::Reason whyInvalid(const id &value) { return whyInvalid(value, 0); }
    /// The containers around what was found invalid last, the value asked for at the end: none of them is
    /// valid by itself either, unless it was too deep.
    const std::vector<id> &invalidContainers() const { return invalidContainers_; }

private:
    json::Reason whyInvalid(const id &value, std::size_t depth);

    std::vector<id> invalidContainers_;
};
