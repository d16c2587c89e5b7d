// The root of every object.
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
// The class object is made on first use of `Book::class_()` or of its name, its superclass first, so no order
// of static initialisers matters. `Book::class_()` raises NSInvalidArgumentException when the declaration
// contradicts itself, or when another class of the program has the name.
#pragma once

#include "Platform/Runtime/Object/Ref.h"
#include "Platform/Runtime/Object/SEL.h"

#include <type_traits>

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
    virtual ~NSObject() = default;

    /// The class that declared itself, and its name. A class without `NS_CLASS` has those of its base.
    using Declared = NSObject;
    static constexpr const char *declaredName = "NSObject";

    static Class class_();
    virtual Class isa() const { return class_(); }

    /// Identity, unless a class compares by value. None equals nothing.
    virtual bool isEqual(const id &other) const { return other.get() == this; }
    /// Equal objects have equal hashes.
    virtual NSUInteger hash() const;
    /// A text for people: "<Class: 0x…>" unless a class says more. Never none.
    virtual Ref<NSString> description() const;
    /// An immutable copy. Raises NSInvalidArgumentException for a class that cannot be copied.
    virtual id copy() const;
    /// A mutable copy. Raises NSInvalidArgumentException for a class that cannot be copied.
    virtual id mutableCopy() const;

    // Key-value coding, told in KeyValueCoding/NSKeyValueCoding.h.
    virtual id valueForKey(const Ref<NSString> &key) const;
    virtual void setValue(const id &value, const Ref<NSString> &forKey);

    bool isKindOfClass(Class cls) const;
    bool isMemberOfClass(Class cls) const { return isa() == cls; }
    bool respondsToSelector(SEL selector) const;

    /// The object for whoever is to keep it. Raises NSInvalidArgumentException when nobody owns it: on the
    /// stack, and in its constructors and destructors.
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

/// The object as a `T`, or none when it is none or of another class. `as<objc_class>` finds class objects.
template <class T>
Ref<T> as(const id &object) {
    if constexpr (std::is_same_v<T, NSObject>)
        return object;
    else if constexpr (std::is_same_v<T, typename T::Declared>)
        return object && object->isKindOfClass(T::class_()) ? std::static_pointer_cast<T>(object) : nullptr;
    else // Several C++ classes share a declaration, e.g. the blocks of every signature.
        return std::dynamic_pointer_cast<T>(object);
}

/// The same without a share in the object: for a look at what somebody else keeps meanwhile.
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
