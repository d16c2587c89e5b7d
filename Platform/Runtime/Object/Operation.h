// Operations that a class may have and others then call, e.g. hooks. An agreement fixes the C++ type of such
// an operation, once, for all classes.
//
//     inline constexpr runtime::ClassOperation<Ref<NSArray>()> favourites{"favourites"};
//     [[gnu::init_priority(101)]] const runtime::Agreement agreed{favourites};
//
//     NS_IMPLEMENTATION(Reader) { cls.implement<favourites, &Reader::favourites>(); }
//
// The compiler checks `implement`. A class may also add the operation by its selector; `addMethod` then
// raises NSInvalidArgumentException for a method of that name with other types, or of instances where it
// should be of the class object.
#pragma once

#include "Platform/Runtime/Object/TypeEncoding.h"

#include <concepts>
#include <functional>

#pragma GCC visibility push(default)

struct objc_method;

namespace runtime {

template <bool ofClassObject, class Signature>
struct Operation;

template <bool ofClassObject, class R, class... A>
struct Operation<ofClassObject, R(A...)> {
    const char *selector;

    static constexpr bool isOfClassObject = ofClassObject;
    static std::string encoding() { return methodEncoding<R, A...>(); }

    /// Whether the function can implement the operation, as a member function of `T` or as a static one. It
    /// may take objects of a base class and return those of a subclass.
    template <class T, auto Function>
    static constexpr bool isImplementedBy() {
        if constexpr (ofClassObject)
            return fits<Function, const A &...>();
        else
            return std::is_member_function_pointer_v<decltype(Function)> &&
                   fits<Function, T &, const A &...>();
    }

private:
    template <auto Function, class... Given>
    static constexpr bool fits() {
        if constexpr (!std::invocable<decltype(Function), Given...>)
            return false;
        else {
            using Result = std::remove_cvref_t<std::invoke_result_t<decltype(Function), Given...>>;
            return isObject<R> ? std::convertible_to<Result, R> : std::same_as<Result, R>;
        }
    }
};

template <class Signature>
using ClassOperation = Operation<true, Signature>;
template <class Signature>
using InstanceOperation = Operation<false, Signature>;

/// Has every method of the operation's name checked that is added from now on. A static object; with the
/// `init_priority` above it is made before all classes.
class Agreement {
public:
    template <bool ofClassObject, class Signature>
    explicit Agreement(const Operation<ofClassObject, Signature> &operation)
        : Agreement(operation.selector, ofClassObject, &operation.encoding) {}
    Agreement(const Agreement &) = delete;
    Agreement &operator=(const Agreement &) = delete;

    /// Raises NSInvalidArgumentException when the method, which is to be added to the class or meta-class,
    /// breaks an agreement.
    static void check(const objc_class &cls, const objc_method &method);

private:
    Agreement(const char *selector, bool ofClassObject, std::string (*encoding)());

    const char *const selector_;
    const bool ofClassObject_;
    std::string (*const encoding_)();
    const Agreement *next_ = nullptr;
};

/// The selector of an agreed operation.
template <const auto &operation>
SEL selectorOf() {
    static const SEL selector = sel_registerName(operation.selector);
    return selector;
}

} // namespace runtime

#pragma GCC visibility pop
