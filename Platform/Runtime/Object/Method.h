// Methods, and how they are made from member functions, free functions and data members.
#pragma once

#include "Platform/Runtime/Object/TypeEncoding.h"

#include <cstring>
#include <new>
#include <typeinfo>
#include <utility>

#pragma GCC visibility push(default)

/// An implementation, stored untyped: an `R (*)(NSObject *, SEL, A…)` with the types of TypeEncoding.h. Check
/// the method's encoding or `signature` before casting it back.
using IMP = void (*)();

/// A method of a class. Lives as long as the class.
struct objc_method {
    /// Calls an implementation whose types are not known when the caller is compiled. `arguments` are the
    /// addresses of the arguments after the selector; the result is constructed at `result`, uninitialised
    /// memory of its size and alignment. The caller destroys it.
    using Invoke = void (*)(IMP imp, NSObject *self, SEL selector, const void *const *arguments,
                            void *result);

    SEL name;
    std::string types; ///< e.g. "v24@0:8@16"
    IMP imp;
    const std::type_info *signature; ///< the C++ type behind `imp`
    Invoke invoke;
    bool synthesized = false; ///< reads or writes a data member, and runs no other code than `copy`
};
using Method = const objc_method *;

namespace runtime {

template <class R, class... A>
struct Invocation {
    static void invoke(IMP imp, NSObject *self, SEL selector, const void *const *arguments, void *result) {
        call(imp, self, selector, arguments, result, std::index_sequence_for<A...>());
    }

private:
    template <std::size_t... Index>
    static void call(IMP imp, NSObject *self, SEL selector, [[maybe_unused]] const void *const *arguments,
                     [[maybe_unused]] void *result, std::index_sequence<Index...>) {
        const auto function = reinterpret_cast<R (*)(NSObject *, SEL, A...)>(imp);
        if constexpr (std::is_void_v<R>)
            function(self, selector, *static_cast<const std::remove_cvref_t<A> *>(arguments[Index])...);
        else
            new (result) R(
                function(self, selector, *static_cast<const std::remove_cvref_t<A> *>(arguments[Index])...));
    }
};

template <class R, class... A>
objc_method makeMethod(SEL name, R (*function)(NSObject *, SEL, A...), std::string types) {
    static_assert(std::same_as<R, Result<R>> && (std::same_as<A, Argument<A>> && ...),
                  "values cross a send as TypeEncoding.h tells");
    return {name, std::move(types), reinterpret_cast<IMP>(function), &typeid(function),
            &Invocation<R, A...>::invoke};
}

/// Adapts a member function or a free function to the signature of an implementation.
template <auto Function>
struct Thunk;

template <class R, class Call>
Result<R> carryResult(Call &&call) {
    if constexpr (std::is_void_v<R>)
        call();
    else if constexpr (isRef<std::remove_cvref_t<R>>)
        return call();
    else
        return carry<std::remove_cvref_t<R>>(call());
}

template <class T, class R, class... A, R (T::*Member)(A...)>
struct Thunk<Member> {
    static Result<R> call(NSObject *self, SEL, Argument<A>... arguments) {
        return carryResult<R>(
            [&]() -> R { return (static_cast<T *>(self)->*Member)(uncarry<A>(arguments)...); });
    }
    static std::string types() { return methodEncoding<R, A...>(); }
};

template <class T, class R, class... A, R (T::*Member)(A...) const>
struct Thunk<Member> {
    static Result<R> call(NSObject *self, SEL, Argument<A>... arguments) {
        return carryResult<R>(
            [&]() -> R { return (static_cast<const T *>(self)->*Member)(uncarry<A>(arguments)...); });
    }
    static std::string types() { return methodEncoding<R, A...>(); }
};

template <class R, class... A, R (*Free)(A...)>
struct Thunk<Free> {
    static Result<R> call(NSObject *, SEL, Argument<A>... arguments) {
        return carryResult<R>([&]() -> R { return Free(uncarry<A>(arguments)...); });
    }
    static std::string types() { return methodEncoding<R, A...>(); }
};

/// A method whose name is still to be set.
template <auto Function>
objc_method methodOf() {
    return makeMethod(nullptr, &Thunk<Function>::call, Thunk<Function>::types());
}

/// Getter and setters of a data member `M T::*Member`.
template <class T, class M, M T::*Member>
struct MemberAccess {
    static Result<M> get(NSObject *self, SEL) { return carry<M>(static_cast<T *>(self)->*Member); }

    static void set(NSObject *self, SEL, Argument<M> value) {
        M &member = static_cast<T *>(self)->*Member;
        if constexpr (std::is_array_v<M>) {
            if (value)
                std::memcpy(member, value, sizeof member);
        } else
            member = uncarry<M>(value);
    }

    /// Stores an immutable copy, or a mutable one where the member's class admits only that.
    static void setCopy(NSObject *self, SEL selector, Argument<M> value) {
        if constexpr (isRef<M>) {
            const auto given = uncarry<M>(value);
            auto copied = as<typename M::element_type>(given ? given->copy() : nullptr);
            if (given && !copied)
                copied = as<typename M::element_type>(given->mutableCopy());
            static_cast<T *>(self)->*Member = copied;
        } else
            set(self, selector, value);
    }
};

} // namespace runtime

#pragma GCC visibility pop
