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

/// A wrong number of arguments, or else the first one that does not fit.
[[noreturn]] void refuse(const NSObject &receiver, Method method, const std::vector<id> &arguments,
                         std::size_t fitting) {
    const std::size_t taken = method_getNumberOfArguments(method) - receiverAndSelector;
    if (arguments.size() != taken)
        raise(receiver, method->name,
              "takes " + std::to_string(taken) + " arguments, given " + std::to_string(arguments.size()));
    const id &argument = arguments[fitting];
    raise(receiver, method->name,
          "argument " + std::to_string(fitting + 1) + " is of type \"" +
              std::string(runtime::typeAt(method->types, fitting + 1 + receiverAndSelector)) + "\", which " +
              (argument ? "an object of " + argument->isa()->name() : "none") + " does not fit");
}

} // namespace

BoxedInvocation::BoxedInvocation(id receiver, SEL selector, const std::vector<id> &arguments)
    : receiver_(std::move(receiver)), selector_(selector) {
    if (!receiver_)
        return;
    method_ = selector ? receiver_->isa()->findMethod(selector) : nullptr;
    if (!method_)
        runtime::raiseUnrecognizedSelector(*receiver_, selector, nullptr);
    std::string_view types = method_->types;
    resultType_ = runtime::takeType(types);
    for (unsigned i = 0; i < receiverAndSelector; ++i)
        runtime::takeType(types);
    arguments_.reserve(arguments.size());
    addresses_.reserve(arguments.size());
    for (const id &argument : arguments) {
        const auto type = runtime::takeType(types);
        if (type.empty() || !arguments_.emplace_back(type).set(argument))
            refuse(*receiver_, method_, arguments, addresses_.size());
        addresses_.push_back(arguments_.back().argument());
    }
    if (!types.empty())
        refuse(*receiver_, method_, arguments, addresses_.size());
}

id BoxedInvocation::invoke() {
    if (!method_)
        return nullptr;
    BoxedValue result(resultType_);
    method_->invoke(method_->imp, receiver_.get(), selector_, addresses_.data(), result.result());
    return result.object();
}
