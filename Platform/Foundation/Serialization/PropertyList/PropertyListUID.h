// A number in a binary property list that refers to an object, as used by keyed archives.
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
