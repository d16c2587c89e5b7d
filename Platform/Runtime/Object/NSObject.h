// The root class of all objects.
//
// A class declares itself once, next to its definition:
//
//     class Book : public NSObject {
//         NS_CLASS(Book, NSObject)
//     public:
//         void open(const id &sender);
//     };
//
//     NS_IMPLEMENTATION(Book) { cls.method<&Book::open>("open:"); }
//
// Properties are declared in the same place; see Property.h.
//
// The class object is made on first use of `Book::class_()` or of its name, its superclass first, so the
// order of static initialisers does not matter. `Book::class_()` raises NSInvalidArgumentException when the
// declaration contradicts itself, or when another class of the program has the name.
#pragma once

#include "Platform/Runtime/Object/AssociatedOwners.h"
#include "Platform/Runtime/Object/Ref.h"
#include "Platform/Runtime/Object/SEL.h"

#include <type_traits>

#pragma GCC visibility push(default)

class NSString;
template <class T>
class ClassBuilder;
namespace runtime {
class ClassAnnouncement;
}

class NSObject : public std::enable_shared_from_this<NSObject> {
public:
    NSObject() = default;
    NSObject(const NSObject &) = delete;
    NSObject &operator=(const NSObject &) = delete;
    virtual ~NSObject() {
        if (runtime::AssociatedOwners::mayInclude(this)) [[unlikely]]
            runtime::endAssociatedValues(this);
    }

    /// The C++ class that `NS_CLASS` stands in, and its name; a class without it inherits those of its base.
    using Declared = NSObject;
    static constexpr const char *declaredName = "NSObject";

    static Class class_();
    virtual Class isa() const { return class_(); }

    /// Identity, unless the class compares by value. False for none.
    virtual bool isEqual(const id &other) const { return other.get() == this; }
    /// Equal objects have equal hashes.
    virtual NSUInteger hash() const;
    /// A text for people: "<Class: 0x…>" unless the class overrides it. Never none.
    virtual Ref<NSString> description() const;
    /// An immutable copy. Raises NSInvalidArgumentException for a class that cannot be copied.
    virtual id copy() const;
    /// A mutable copy. Raises NSInvalidArgumentException for a class that cannot be copied.
    virtual id mutableCopy() const;

    // Key-value coding; see KeyValueCoding/NSKeyValueCoding.h.
    virtual id valueForKey(const Ref<NSString> &key) const;
    virtual void setValue(const id &value, const Ref<NSString> &forKey);

    bool isKindOfClass(Class cls) const;
    bool isMemberOfClass(Class cls) const { return isa() == cls; }
    bool respondsToSelector(SEL selector) const;

    /// A `Ref` to this object. Raises NSInvalidArgumentException when no `Ref` owns it: on the stack, and in
    /// its constructors and destructors.
    id self() const {
        if (auto object = weak_from_this().lock()) [[likely]]
            return std::const_pointer_cast<NSObject>(std::move(object));
        raiseUnowned();
    }

private:
    [[noreturn]] void raiseUnowned() const;

    static const runtime::ClassAnnouncement announcement_;
    static void declare(ClassBuilder<NSObject> &cls);
};

/// The object as a `T`; none when it is none or not a `T`. For class objects: `as<objc_class>`.
template <class T>
Ref<T> as(const id &object) {
    if constexpr (std::is_same_v<T, NSObject>)
        return object;
    else if constexpr (std::is_same_v<T, typename T::Declared>)
        return object && object->isKindOfClass(T::class_()) ? std::static_pointer_cast<T>(object) : nullptr;
    else // several C++ classes share a class object, e.g. the blocks of all signatures
        return std::dynamic_pointer_cast<T>(object);
}

/// The same without sharing ownership, and null instead of none. Valid as long as something else owns the
/// object.
template <class T>
T *peek(const id &object) {
    return object && object->isKindOfClass(T::class_()) ? static_cast<T *>(object.get()) : nullptr;
}

#define NS_CLASS(Type, Super)                                                                                \
public:                                                                                                      \
    using super = Super;                                                                                     \
    using Declared = Type;                                                                                   \
    static constexpr const char *declaredName = #Type;                                                       \
    static Class class_();                                                                                   \
    Class isa() const override {                                                                             \
        return class_();                                                                                     \
    }                                                                                                        \
                                                                                                             \
private:                                                                                                     \
    static const runtime::ClassAnnouncement announcement_;                                                   \
    static void declare(ClassBuilder<Type> &cls);

#pragma GCC visibility pop
