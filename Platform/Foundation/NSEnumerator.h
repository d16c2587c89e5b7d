// One walk over a collection.
#pragma once

#include "Platform/Runtime/NSObject.h"

#include <functional>

class NSEnumerator : public NSObject {
    NS_CLASS(NSEnumerator, NSObject)
public:
    /// `next` gives one object a call, none at the end.
    explicit NSEnumerator(std::function<id()> next) : next_(std::move(next)) {}

    id nextObject() { return next_(); }

private:
    const std::function<id()> next_;
};
