// The reflection calls: they list what a class consists of, and add to it at run time.
//
// Handles (Class, Method, Ivar, objc_property_t, SEL) live as long as the process. Lists and texts that are
// returned by value belong to the caller; a `const char *` lives as long as its handle. For a null handle the
// calls return an empty list, an empty text, zero, null or false.
//
// Threads: everything here may be called from any thread.
#pragma once

#include "Platform/Runtime/Object/Class.h"

#pragma GCC visibility push(default)

/// The members of the class itself, without those of its superclasses, in the order they were added.
/// Operations of the class object are the methods of its meta-class.
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
/// In bytes, from the start of the instance.
std::ptrdiff_t ivar_getOffset(Ivar ivar);
const char *ivar_getTypeEncoding(Ivar ivar);

SEL method_getName(Method method);
IMP method_getImplementation(Method method);
const char *method_getTypeEncoding(Method method);
std::string method_copyReturnType(Method method);
/// Includes the receiver and the selector.
unsigned method_getNumberOfArguments(Method method);
/// Index 0 is the receiver, 1 the selector; empty for an index past the last argument.
std::string method_copyArgumentType(Method method, unsigned index);

const char *property_getName(objc_property_t property);
std::vector<objc_property_attribute_t> property_copyAttributeList(objc_property_t property);

/// Adds a method, encoded by the C++ types of the function; see TypeEncoding.h for the types it may take and
/// return. False when the class itself has the selector already. Raises NSInvalidArgumentException when the
/// method breaks an agreement (Operation.h).
///
///     class_addMethod(cls, sel_registerName("answer"), +[](NSObject *, SEL) { return 42; });
template <class R, class... A>
bool class_addMethod(Class cls, SEL selector, R (*function)(NSObject *, SEL, A...)) {
    return cls && selector && function &&
           cls->addMethod(runtime::makeMethod(selector, function, runtime::methodEncoding<R, A...>()));
}

/// Adds a property without accessors or an instance variable: its attributes are not checked. False when the
/// class itself has one of that name, and for an empty name.
bool class_addProperty(Class cls, std::string_view name, std::vector<objc_property_attribute_t> attributes);

namespace runtime {

/// The C++ type of instances whose class was made at run time as a subclass of `Base`.
template <class Base>
class InstanceOf final : public Base {
public:
    explicit InstanceOf(Class cls) : cls_(cls) {}
    Class isa() const override { return cls_; }

private:
    const Class cls_;
};

} // namespace runtime

/// Makes a subclass of `Base` at run time. `declare` adds its methods and properties before the class can be
/// found by name; what it raises reaches the caller, and no class is made. Null when a class of that name
/// exists. Raises NSInvalidArgumentException for an empty name or none.
template <class Base>
Class objc_registerSubclass(const char *name, const std::function<void(Class)> &declare = nullptr) {
    return objc_class::registerClass(name, Base::class_(), [&](Class made) {
        made->instantiate = [made] { return make<runtime::InstanceOf<Base>>(made); };
        if (declare)
            declare(made);
    });
}

#pragma GCC visibility pop
