#include "Platform/Foundation/KeyValueCoding/BoxedInvocation.h"

#include "Platform/Runtime/Object/Message.h"
#include "Platform/Runtime/Reflection/Reflection.h"

NS_IMPLEMENTATION(BoxedInvocation) {
    cls.method<&BoxedInvocation::run>("run");
}

namespace {

constexpr unsigned receiverAndSelector = 2;

[[noreturn]] void raise(const NSObject &receiver, SEL selector, const std::string &fault) {
    throw NSException(NSInvalidArgumentException,
                      "-[" + receiver.isa()->name() + " " + sel_getName(selector) + "]: " + fault);
}

} // namespace

BoxedInvocation::BoxedInvocation(id receiver, SEL selector, const std::vector<id> &arguments)
    : receiver_(std::move(receiver)), selector_(selector) {
    if (!receiver_)
        return;
    method_ = selector ? receiver_->isa()->findMethod(selector) : nullptr;
    if (!method_)
        runtime::raiseUnrecognizedSelector(*receiver_, selector, nullptr);
    const std::size_t taken = method_getNumberOfArguments(method_) - receiverAndSelector;
    if (arguments.size() != taken)
        raise(*receiver_, selector,
              "takes " + std::to_string(taken) + " arguments, given " + std::to_string(arguments.size()));
    for (unsigned i = 0; i < taken; ++i) {
        const std::string encoding = method_copyArgumentType(method_, i + receiverAndSelector);
        if (!arguments_.emplace_back(encoding).set(arguments[i]))
            raise(*receiver_, selector,
                  "argument " + std::to_string(i + 1) + " is of type \"" + encoding + "\", which " +
                      (arguments[i] ? "an object of " + arguments[i]->isa()->name() : "none") +
                      " does not fit");
        addresses_.push_back(arguments_.back().argument());
    }
}

id BoxedInvocation::invoke() {
    if (!method_)
        return nullptr;
    BoxedValue result(method_copyReturnType(method_));
    method_->invoke(method_->imp, receiver_.get(), selector_, addresses_.data(), result.result());
    return result.object();
}
