// Class objects: their place in the hierarchy, and the members that a class declares.
//
// Threads: everything here may be called from any thread. Looking a method up takes no lock; a method added
// at run time is seen by every send that starts after `class_addMethod` returned.
#pragma once

#include "Platform/Locking/Mutex.h"
#include "Platform/Runtime/Object/ClassRegistry.h"
#include "Platform/Runtime/Object/Operation.h"
#include "Platform/Runtime/Object/Property.h"

#include <atomic>
#include <functional>
#include <string>
#include <vector>

#pragma GCC visibility push(default)

struct objc_class final : NSObject {
    using Instantiate = std::function<id()>;
    using Declare = std::function<void(Class)>;

    /// Only for the two functions below, which make a class together with its meta-class.
    objc_class(std::string name, Class superclass, Class metaClass);
    ~objc_class() override;

    /// Makes the class that was announced. It can be found by name only once `declare` has run on it, so that
    /// nobody finds half a class. Raises NSInvalidArgumentException when another class has the name, and for
    /// a property whose accessors are not of its type. When `declare` raises, no class is made.
    static Class declareClass(const runtime::ClassAnnouncement &announcement, Class superclass,
                              const Declare &declare);
    /// Makes a class at run time in the same way. Null when another class has the name. Raises
    /// NSInvalidArgumentException for an empty name or none.
    static Class registerClass(const char *name, Class superclass, const Declare &declare = nullptr);

    /// A class is an instance of its meta-class; a meta-class is an instance of the root's meta-class.
    Class isa() const override;
    Ref<NSString> description() const override;
    id copy() const override { return self(); }

    const std::string &name() const { return name_; }
    Class superclass() const { return superclass_; }
    /// None for a meta-class.
    Class metaClass() const { return metaClass_; }
    bool isMetaClass() const { return metaClass_ == nullptr; }
    bool isSubclassOf(Class other) const;

    /// The method that this class has or inherits; null without one.
    Method findMethod(SEL selector) const;
    /// False, and nothing changes, when the class itself has the selector already. Raises
    /// NSInvalidArgumentException when the method breaks an agreement (Operation.h).
    bool addMethod(objc_method method);
    /// For declarations: like `addMethod`, but a hand-written method replaces a synthesized accessor of the
    /// same selector, whichever is declared first. False only for two of the same kind.
    bool declareMethod(objc_method method);
    /// The methods this class itself has, in the order they were added, as they are exchanged now.
    std::vector<Method> methods() const;

    /// Has each of the two selectors call what the other one called, here and in subclasses that do not
    /// override it; an inherited method is overridden here for that. Returns what `takeBack` takes. A send
    /// finds both methods as before or both exchanged. Raises NSInvalidArgumentException when there is no
    /// such method, when their types differ, and for two equal selectors.
    std::uint64_t exchangeMethods(SEL first, SEL second);
    /// Afterwards the class is as if this exchange had never been made: later ones are made anew on what
    /// there was before. Does nothing for one that was taken back.
    void takeBack(std::uint64_t exchange);
    /// Grows whenever methods of any class were exchanged, or were so no more: as long as it is what it was
    /// before a method was found, sends still call that one.
    static std::uint64_t changes() { return theChanges.load(std::memory_order_acquire); }

    /// False, and nothing changes, when the class itself has one of that name already. Instance variables are
    /// members of the C++ class: `addIvar` describes one and makes no room for it.
    bool addIvar(objc_ivar ivar);
    bool addProperty(objc_property property);
    /// For declarations. False without such a property, and for one that has keys.
    bool setPropertyKeys(std::string_view property, std::vector<std::string> keys);
    /// Those of this class itself, in the order they were added.
    std::vector<Ivar> ivars() const;
    std::vector<objc_property_t> properties() const;
    /// The instance variable of that name of this class or a superclass; null without one.
    Ivar findIvar(std::string_view name) const;

    /// False when the class itself conforms to it already.
    bool addProtocol(std::string_view name);
    /// Whether this class or a superclass conforms to the protocol.
    bool conformsToProtocol(std::string_view name) const;

    // Set once, while the class is declared.
    Instantiate instantiate;
    bool overridesValueForKey = false; ///< the C++ class itself does; false when only a superclass does

private:
    struct MethodTable;
    struct Exchange {
        std::uint64_t number;
        SEL first, second;
        Method inheritedFirst, inheritedSecond; ///< null for those that the class itself was declared with
    };

    static Class makeClass(const std::string &name, Class superclass, const Declare &declare);
    MethodTable *ownMethods() const { return table_.load(std::memory_order_relaxed); }
    Method ownMethod(SEL selector) const;
    Method inheritedMethod(SEL selector) const ZK_REQUIRES(writing_);
    void publish(Method method) ZK_REQUIRES(writing_);
    void publishAll() ZK_REQUIRES(writing_);
    std::vector<Method> exchangedMethods() const ZK_REQUIRES(writing_);
    Method underName(Method method, SEL selector) const ZK_REQUIRES(writing_);

    const std::string name_;
    Class superclass_;
    Class const metaClass_;
    mutable locking::Mutex writing_;
    std::vector<std::unique_ptr<objc_method>> methods_ ZK_GUARDED_BY(writing_);
    std::vector<Exchange> exchanges_ ZK_GUARDED_BY(writing_);
    std::uint64_t lastExchange_ ZK_GUARDED_BY(writing_) = 0;
    // Old ones stay, as readers hold no lock, and are used again when exchanges come and go.
    mutable std::vector<std::unique_ptr<objc_method>> renamed_ ZK_GUARDED_BY(writing_);
    std::vector<std::unique_ptr<MethodTable>> tables_ ZK_GUARDED_BY(writing_);
    std::vector<std::unique_ptr<objc_ivar>> ivars_ ZK_GUARDED_BY(writing_);
    std::vector<std::unique_ptr<objc_property>> properties_ ZK_GUARDED_BY(writing_);
    std::vector<std::string> protocols_ ZK_GUARDED_BY(writing_);
    std::atomic<MethodTable *> table_{nullptr};
    static std::atomic<std::uint64_t> theChanges;
};

/// A new instance, made by the class's `instantiate`; none for a null class and for one that cannot make any,
/// e.g. an abstract one.
id class_createInstance(Class cls);
/// Any class that is linked into the program or was made at run time; null for an unknown name. Raises
/// NSInvalidArgumentException when two classes of the program have the name, or when the declaration of the
/// class contradicts itself.
Class objc_getClass(std::string_view name);

namespace runtime {

/// Like `objc_getClass`, for names from outside: returns null where that raises.
Class findForeignClass(std::string_view name);

/// For declarations. Raises NSInvalidArgumentException unless it is the first of the class, and for an empty
/// function.
void declareInstantiation(Class cls, objc_class::Instantiate function, bool isFirst);

/// Gives the class a member function or a free function as an operation; false when it has the selector.
template <auto Function>
bool addMethod(Class cls, const char *selector) {
    auto method = methodOf<Function>();
    method.name = sel_registerName(selector);
    return cls->addMethod(std::move(method));
}

} // namespace runtime

/// NS_IMPLEMENTATION hands one to the class, which declares its members with it. Nothing that is declared is
/// ignored: a contradiction raises NSInvalidArgumentException, which names the class and the member.
template <class T>
class ClassBuilder {
public:
    explicit ClassBuilder(Class cls) : cls_(cls) {
        cls_->overridesValueForKey = !requires {
            requires std::same_as<decltype(&T::valueForKey), decltype(&NSObject::valueForKey)>;
        };
        if constexpr (std::is_default_constructible_v<T> && !std::is_abstract_v<T>)
            cls_->instantiate = [] { return make<T>(); };
    }

    /// An operation of instances: a member function under its full selector. One with the selector of a
    /// property's accessor is that accessor.
    template <auto Member>
    ClassBuilder &method(const char *selector) {
        runtime::declareMethod(cls_, runtime::methodOf<Member>(), selector);
        return *this;
    }

    /// An operation of the class object: a static function under its full selector.
    template <auto Function>
    ClassBuilder &classMethod(const char *selector) {
        runtime::declareMethod(cls_->metaClass(), runtime::methodOf<Function>(), selector);
        return *this;
    }

    /// An agreed operation (Operation.h), e.g. a hook: a member function for one of instances, a static
    /// function for one of the class object.
    template <const auto &operation, auto Function>
    ClassBuilder &implement() {
        using Agreed = std::remove_cvref_t<decltype(operation)>;
        static_assert(Agreed::template isImplementedBy<T, Function>(),
                      "this function has not the type of the operation");
        if constexpr (Agreed::isOfClassObject)
            return classMethod<Function>(operation.selector);
        else
            return method<Function>(operation.selector);
    }

    /// A property: of a data member, or computed by a member function. `Element` is the class of a
    /// collection's elements. See Property.h.
    template <auto Member, class Element = void>
    ClassBuilder &property(const char *name, std::string_view attributes = "",
                           runtime::Protocols protocols = {}) {
        return declare<Element>(runtime::MemberDeclaration<Member>::declaration(protocols), name, attributes);
    }

    /// A property computed by two member functions.
    template <auto Getter, auto Setter, class Element = void>
    ClassBuilder &property(const char *name, std::string_view attributes = "",
                           runtime::Protocols protocols = {}) {
        auto declaration = runtime::MemberDeclaration<Getter>::declaration(protocols);
        declaration.set = declaration.setCopy = runtime::methodOf<Setter>();
        return declare<Element>(std::move(declaration), name, attributes);
    }

    /// A property of the given type without a member, for dynamic ones.
    template <class Type, class Element = void>
    ClassBuilder &property(const char *name, std::string_view attributes = "D",
                           runtime::Protocols protocols = {}) {
        return declare<Element>(runtime::declarationOf<Type>(protocols), name, attributes);
    }

    /// The key of the property declared just before, under which models find it in JSON: a path if it has
    /// dots. Of several the first with a value is read, and the first one is written.
    template <std::convertible_to<std::string>... More>
    ClassBuilder &key(std::string first, More... more) {
        runtime::declareKeys(cls_, property_, {std::move(first), std::string(std::move(more))...});
        return *this;
    }

    /// An instance variable without a property.
    template <auto Member>
    ClassBuilder &ivar(const char *name) {
        runtime::declareIvar(cls_, runtime::MemberDeclaration<Member>::declaration({}), name);
        return *this;
    }

    /// The class conforms to the protocol, which is just a name.
    ClassBuilder &protocol(const char *name) {
        runtime::declareProtocol(cls_, name);
        return *this;
    }

    /// Replaces the way `class_createInstance` makes an instance, e.g. for a singleton.
    ClassBuilder &instantiate(objc_class::Instantiate function) {
        runtime::declareInstantiation(cls_, std::move(function), !std::exchange(instantiates_, true));
        return *this;
    }

private:
    template <class Element>
    ClassBuilder &declare(runtime::Declaration declaration, const char *name, std::string_view attributes) {
        if constexpr (!std::is_void_v<Element>)
            declaration.elementClass = &Element::class_;
        runtime::declareProperty(cls_, std::move(declaration), name, attributes);
        property_ = name;
        return *this;
    }

    Class cls_;
    std::string property_;      // the one declared last
    bool instantiates_ = false; // `instantiate` was called
};

#define NS_IMPLEMENTATION(Type)                                                                              \
    [[gnu::init_priority(101)]] const runtime::ClassAnnouncement Type::announcement_(declaredName,           \
                                                                                     &Type::class_);         \
    Class Type::class_() {                                                                                   \
        static const Class theClass =                                                                        \
            objc_class::declareClass(announcement_, super::class_(), [](Class made) {                        \
                ClassBuilder<Type> builder(made);                                                            \
                declare(builder);                                                                            \
            });                                                                                              \
        return theClass;                                                                                     \
    }                                                                                                        \
    void Type::declare([[maybe_unused]] ClassBuilder<Type> &cls)

#pragma GCC visibility pop
