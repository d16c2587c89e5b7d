// A reference to another object of the same binary property list, as keyed archives use them.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

class PropertyListUID : public NSObject {
    NS_CLASS(PropertyListUID, NSObject)
public:
    explicit PropertyListUID(std::uint64_t index) : index_(index) {}

    std::uint64_t index() const { return index_; }

private:
    const std::uint64_t index_;
};
