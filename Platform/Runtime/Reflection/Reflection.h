// The reflection calls: what a class is made of, and how to add to it at run time.
//
// Handles (Class, Method, Ivar, objc_property_t, SEL) live as long as the process. Lists and texts that are
// returned by value belong to the caller; a `const char *` lives as long as its handle. A null handle gives
// an empty list, an empty text, zero, null or false.
//
// Threads: everything here may be called from any thread.
#pragma once

#include "Platform/Runtime/Object/Class.h"

/// What the class itself has, without its superclasses, in the order of declaration. Operations of the class
/// object are those of its meta-class.
std::vector<Method> class_copyMethodList(Class cls);
std::vector<objc_property_t> class_copyPropertyList(Class cls);
std::vector<Ivar> class_copyIvarList(Class cls);

Class class_getSuperclass(Class cls);
bool class_isMetaClass(Class cls);
/// "nil" for null.
const char *class_getName(Class cls);
bool class_conformsToProtocol(Class cls, std::string_view protocol);
/// Null for an unknown name.
Class objc_getMetaClass(std::string_view name);

const char *ivar_getName(Ivar ivar);
std::ptrdiff_t ivar_getOffset(Ivar ivar);
const char *ivar_getTypeEncoding(Ivar ivar);

SEL method_getName(Method method);
IMP method_getImplementation(Method method);
const char *method_getTypeEncoding(Method method);
std::string method_copyReturnType(Method method);
/// The receiver and the selector are counted.
unsigned method_getNumberOfArguments(Method method);
/// Empty from the number of arguments on.
std::string method_copyArgumentType(Method method, unsigned index);

const char *property_getName(objc_property_t property);
std::vector<objc_property_attribute_t> property_copyAttributeList(objc_property_t property);

/// Adds a method, encoded by the C++ types of the function; see TypeEncoding.h for its shape. False when the
/// class itself has the selector already.
///
///     class_addMethod(cls, sel_registerName("answer"), +[](NSObject *, SEL) { return 42; });
template <class R, class... A>
bool class_addMethod(Class cls, SEL selector, R (*function)(NSObject *, SEL, A...)) {
    return cls && selector && function &&
           cls->addMethod(runtime::makeMethod(selector, function, runtime::methodEncoding<R, A...>()));
}

/// Adds a property that is no more than its attributes. False when the class itself has one of that name.
bool class_addProperty(Class cls, std::string_view name, std::vector<objc_property_attribute_t> attributes);

namespace runtime {

/// A `Base` in C++ whose class was made at run time.
template <class Base>
class InstanceOf final : public Base {
public:
    explicit InstanceOf(Class cls) : cls_(cls) {}
    Class isa() const override { return cls_; }

private:
    const Class cls_;
};

} // namespace runtime

/// Makes a subclass of `Base` at run time. `declare` adds what it has before others find it. Null when a
/// class of that name exists.
template <class Base>
Class objc_registerSubclass(const char *name, const std::function<void(Class)> &declare = nullptr) {
    return objc_class::registerClass(name, Base::class_(), [&](Class made) {
        made->instantiate = [made] { return make<runtime::InstanceOf<Base>>(made); };
        if (declare)
            declare(made);
    });
}
