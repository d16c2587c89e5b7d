// The typed message send.
#pragma once

#include "Platform/Runtime/Class.h"
#include "Platform/Runtime/NSException.h"

namespace runtime {

/// Raises NSInvalidArgumentException: the receiver lacks the selector, or has it with another signature.
[[noreturn]] void raiseUnrecognizedSelector(const NSObject &receiver, SEL selector, Method found);

} // namespace runtime

/// Sends `selector` to `receiver` with the arguments and returns what the method returns.
///
///     auto text = objc_msgSend<id>(object, sel_registerName("description"));
///
/// Objects are given and returned as `id`; other arguments must have exactly the method's C++ types, which is
/// checked. A receiver of none gives none, zero or false.
template <class R = void, class... A>
R objc_msgSend(const id &receiver, SEL selector, const A &...arguments) {
    using Function = runtime::Result<R> (*)(NSObject *, SEL, runtime::Argument<A>...);
    if (!receiver)
        return R();
    const Method method = receiver->isa()->findMethod(selector);
    if (!method || *method->signature != typeid(Function))
        runtime::raiseUnrecognizedSelector(*receiver, selector, method);
    return reinterpret_cast<Function>(method->imp)(receiver.get(), selector, arguments...);
}
