// Blocks: callables that are objects, so that they can be stored, copied and passed on like any other object.
#pragma once

#include "Platform/Runtime/Object/NSException.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <functional>

#pragma GCC visibility push(default)

/// The class of every block, whatever its signature. A block is immutable: its copy is itself.
class NSBlock : public NSObject {
    NS_CLASS(NSBlock, NSObject)
public:
    id copy() const override { return self(); }
};

template <class Signature>
class Block;

/// A block that is called as `(*block)(arguments…)`.
template <class R, class... A>
class Block<R(A...)> final : public NSBlock {
public:
    /// Raises NSInvalidArgumentException for an empty function.
    explicit Block(std::function<R(A...)> function) : function_(std::move(function)) {
        if (!function_)
            throw NSException(NSInvalidArgumentException, "NSBlock: function cannot be nil");
    }

    R operator()(A... arguments) const { return function_(std::forward<A>(arguments)...); }

private:
    const std::function<R(A...)> function_;
};

/// Makes a block of the signature from any callable.
template <class Signature, class Callable>
Ref<Block<Signature>> makeBlock(Callable &&callable) {
    return make<Block<Signature>>(std::forward<Callable>(callable));
}

/// The object as a block of exactly this signature, or none.
template <class Signature>
Ref<Block<Signature>> asBlock(const id &object) {
    return as<Block<Signature>>(object);
}

#pragma GCC visibility pop
