// Class objects: their place in the hierarchy, their methods, and the registry that finds them by name.
//
// Threads: everything here may be called from any thread. Looking a method up takes no lock; a method added
// at run time is seen by every send that starts after `class_addMethod` returned.
#pragma once

#include "Platform/Runtime/Property.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

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

    /// False, and nothing changes, when the class itself has one of that name already. Instance variables are
    /// parts of the C++ class, so none is added once instances exist.
    bool addIvar(objc_ivar ivar);
    bool addProperty(objc_property property);
    /// Those of this class itself, in the order they were added.
    std::vector<Ivar> ivars() const;
    std::vector<objc_property_t> properties() const;
    /// The instance variable of that name of this class or a superclass; none when there is none.
    Ivar findIvar(std::string_view name) const;

    void addProtocol(std::string_view name);
    /// Whether this class or a superclass conforms to the protocol.
    bool conformsToProtocol(std::string_view name) const;

    Instantiate instantiate; ///< set once, while the class is declared

private:
    struct MethodTable;

    const std::string name_;
    Class superclass_;
    Class const metaClass_;
    mutable std::mutex writing_;
    std::vector<std::unique_ptr<objc_method>> methods_;      // guarded by writing_
    std::vector<std::unique_ptr<MethodTable>> publications_; // old ones stay: readers hold no lock
    std::vector<std::unique_ptr<objc_ivar>> ivars_;          // guarded by writing_, as are the next two
    std::vector<std::unique_ptr<objc_property>> properties_;
    std::vector<std::string> protocols_;
    std::atomic<const MethodTable *> table_{nullptr};
};

/// A new instance by the class's own way of making one; none for a class that has none.
id class_createInstance(Class cls);
/// None for an unknown name.
Class objc_getClass(std::string_view name);

/// Makes the classes known by name now instead of at their first use.
template <class... Classes>
void objc_registerClasses() {
    (static_cast<void>(Classes::class_()), ...);
}

namespace runtime {

/// Gives the class a member function or a free function as an operation; false when it has the selector.
template <auto Function>
bool addMethod(Class cls, const char *selector) {
    auto method = methodOf<Function>();
    method.name = sel_registerName(selector);
    return cls->addMethod(std::move(method));
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

    /// A property: of a data member, or computed by a member function. See Property.h.
    template <auto Member>
    ClassBuilder &property(const char *name, std::string_view attributes = "",
                           runtime::Protocols protocols = {}) {
        runtime::declareProperty(cls_, runtime::MemberDeclaration<Member>::declaration(protocols), name,
                                 attributes);
        return *this;
    }

    /// A property computed by two member functions.
    template <auto Getter, auto Setter>
    ClassBuilder &property(const char *name, std::string_view attributes = "",
                           runtime::Protocols protocols = {}) {
        auto declaration = runtime::MemberDeclaration<Getter>::declaration(protocols);
        declaration.set = declaration.setCopy = runtime::methodOf<Setter>();
        runtime::declareProperty(cls_, declaration, name, attributes);
        return *this;
    }

    /// A property of the type without a member: for dynamic ones.
    template <class Type>
    ClassBuilder &property(const char *name, std::string_view attributes = "D",
                           runtime::Protocols protocols = {}) {
        runtime::declareProperty(cls_, runtime::declarationOf<Type>(protocols), name, attributes);
        return *this;
    }

    /// An instance variable that is no property.
    template <auto Member>
    ClassBuilder &ivar(const char *name) {
        runtime::declareIvar(cls_, runtime::MemberDeclaration<Member>::declaration({}), name);
        return *this;
    }

    /// The class conforms to the protocol, which is no more than a name.
    ClassBuilder &protocol(const char *name) {
        cls_->addProtocol(name);
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
