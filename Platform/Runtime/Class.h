// Class objects: their place in the hierarchy, their methods, and the registry that finds them by name.
//
// Threads: everything here may be called from any thread. Looking a method up takes no lock; a method added
// at run time is seen by every send that starts after `class_addMethod` returned.
#pragma once

#include "Platform/Runtime/NSObject.h"
#include "Platform/Runtime/TypeEncoding.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <typeinfo>
#include <vector>

/// An implementation, kept untyped; the typed message send casts it back after checking the signature.
using IMP = void (*)();

/// A method of a class. Lives as long as the class.
struct objc_method {
    SEL name;
    std::string types;               ///< e.g. "v24@0:8@16"
    IMP imp;                         ///< `R (*)(NSObject *, SEL, A…)`
    const std::type_info *signature; ///< the C++ type behind `imp`
};
using Method = const objc_method *;

struct objc_class final : NSObject {
    using Instantiate = std::function<id()>;

    /// For `registerClass` only, which makes a class together with its meta-class.
    objc_class(std::string name, Class superclass, Class metaClass);
    ~objc_class() override;

    /// Makes a class and its meta-class, and enters it in the registry when `declare` has run on it, so that
    /// nobody finds half a class. A name is registered once.
    static Class registerClass(const char *name, Class superclass,
                               const std::function<void(Class)> &declare = nullptr);

    /// A class is an instance of its meta-class; a meta-class of the root's meta-class.
    Class isa() const override;
    Ref<NSString> description() const override;
    id copy() const override { return self(); }

    const std::string &name() const { return name_; }
    Class superclass() const { return superclass_; }
    /// None for a meta-class.
    Class metaClass() const { return metaClass_; }
    bool isMetaClass() const { return metaClass_ == nullptr; }
    bool isSubclassOf(Class other) const;

    /// The method this class itself has or inherits; none when there is none.
    Method findMethod(SEL selector) const;
    /// False, and nothing changes, when the class itself has the selector already.
    bool addMethod(objc_method method);
    /// The methods this class itself has, in the order they were added.
    std::vector<Method> methods() const;

    Instantiate instantiate; ///< set once, while the class is declared

private:
    struct MethodTable;

    const std::string name_;
    Class superclass_;
    Class const metaClass_;
    mutable std::mutex writing_;
    std::vector<std::unique_ptr<objc_method>> methods_;      // guarded by writing_
    std::vector<std::unique_ptr<MethodTable>> publications_; // old ones stay: readers hold no lock
    std::atomic<const MethodTable *> table_{nullptr};
};

/// None for an unknown name.
Class objc_getClass(std::string_view name);
/// A new instance by the class's own way of making one; none for a class that has none.
id class_createInstance(Class cls);
/// False when the class itself has the selector already.
bool class_addMethod(Class cls, SEL selector, IMP imp, std::string types, const std::type_info &signature);

/// Makes the classes known by name now instead of at their first use.
template <class... Classes>
void objc_registerClasses() {
    (static_cast<void>(Classes::class_()), ...);
}

namespace runtime {

template <class T, class Source>
decltype(auto) unwrap(Source &&value) {
    if constexpr (isRef<std::decay_t<T>>)
        return as<typename std::decay_t<T>::element_type>(value);
    else
        return std::forward<Source>(value);
}

/// A function with the shape of a message send for a member function or a free function.
template <auto Function>
struct Thunk;

template <class T, class R, class... A, R (T::*Member)(A...)>
struct Thunk<Member> {
    static Result<R> call(NSObject *self, SEL, Argument<A>... arguments) {
        return (static_cast<T *>(self)->*Member)(unwrap<A>(arguments)...);
    }
    static std::string types() { return methodEncoding<R, A...>(); }
};

template <class T, class R, class... A, R (T::*Member)(A...) const>
struct Thunk<Member> {
    static Result<R> call(NSObject *self, SEL, Argument<A>... arguments) {
        return (static_cast<const T *>(self)->*Member)(unwrap<A>(arguments)...);
    }
    static std::string types() { return methodEncoding<R, A...>(); }
};

template <class R, class... A, R (*Free)(A...)>
struct Thunk<Free> {
    static Result<R> call(NSObject *, SEL, Argument<A>... arguments) { return Free(unwrap<A>(arguments)...); }
    static std::string types() { return methodEncoding<R, A...>(); }
};

template <auto Function>
bool addMethod(Class cls, const char *selector) {
    using Thunk = Thunk<Function>;
    return class_addMethod(cls, sel_registerName(selector), reinterpret_cast<IMP>(&Thunk::call),
                           Thunk::types(), typeid(&Thunk::call));
}

} // namespace runtime

/// What NS_IMPLEMENTATION hands to a class to declare itself with.
template <class T>
class ClassBuilder {
public:
    explicit ClassBuilder(Class cls) : cls_(cls) {
        if constexpr (std::is_default_constructible_v<T> && !std::is_abstract_v<T>)
            cls_->instantiate = [] { return make<T>(); };
    }

    /// An operation of instances: a member function under its full selector.
    template <auto Member>
    ClassBuilder &method(const char *selector) {
        runtime::addMethod<Member>(cls_, selector);
        return *this;
    }

    /// An operation of the class object: a static function under its full selector.
    template <auto Function>
    ClassBuilder &classMethod(const char *selector) {
        runtime::addMethod<Function>(cls_->metaClass(), selector);
        return *this;
    }

    /// Replaces the way `class_createInstance` makes an instance, e.g. for a singleton.
    ClassBuilder &instantiate(objc_class::Instantiate function) {
        cls_->instantiate = std::move(function);
        return *this;
    }

private:
    Class cls_;
};

#define NS_IMPLEMENTATION(Type)                                                                              \
    Class Type::class_() {                                                                                   \
        static const Class theClass = objc_class::registerClass(#Type, super::class_(), [](Class made) {     \
            ClassBuilder<Type> builder(made);                                                                \
            declare(builder);                                                                                \
        });                                                                                                  \
        return theClass;                                                                                     \
    }                                                                                                        \
    void Type::declare([[maybe_unused]] ClassBuilder<Type> &cls)
