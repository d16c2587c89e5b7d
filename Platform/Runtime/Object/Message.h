// The typed message send.
#pragma once

#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"

namespace runtime {

/// Raises NSInvalidArgumentException: the receiver lacks the selector, or has it with another signature.
[[noreturn]] void raiseUnrecognizedSelector(const NSObject &receiver, SEL selector, Method found);

} // namespace runtime

/// Sends `selector` to `receiver` with the arguments and returns what the method returns.
///
///     auto text = objc_msgSend<id>(object, sel_registerName("description"));
///
/// Objects are given as `id`; other arguments must have the method's types, as told by their encodings, which
/// is checked. A receiver of none gives none, zero or false.
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
