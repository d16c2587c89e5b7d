// The typed message send.
#pragma once

#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"

#pragma GCC visibility push(default)

namespace runtime {

/// Raises NSInvalidArgumentException: the receiver lacks the selector (`found` is null), or has it with
/// another signature.
[[noreturn]] void raiseUnrecognizedSelector(const NSObject &receiver, SEL selector, Method found);

} // namespace runtime

/// Calls the method that `receiver` has for `selector`, and returns its result.
///
///     auto text = objc_msgSend<id>(object, sel_registerName("description"));
///
/// Objects of any class may be given; other arguments, and the result, must have the method's types, as
/// TypeEncoding.h maps them. Raises NSInvalidArgumentException when they have not, and when there is no such
/// method. A receiver of none returns none, zero or false.
template <class R = void, class... A>
R objc_msgSend(const id &receiver, SEL selector, const A &...arguments) {
    using Function = runtime::Result<R> (*)(NSObject *, SEL, runtime::Argument<A>...);
    if (!receiver)
        return R();
    const Method method = receiver->isa()->findMethod(selector);
    if (!method || *method->signature != typeid(Function))
        runtime::raiseUnrecognizedSelector(*receiver, selector, method);
    const auto send = [&] {
        return reinterpret_cast<Function>(method->imp)(receiver.get(), selector,
                                                       runtime::carry<A>(arguments)...);
    };
    if constexpr (std::is_void_v<R>)
        send();
    else
        return static_cast<R>(runtime::uncarry<R>(send()));
}

#pragma GCC visibility pop
