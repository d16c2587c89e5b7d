// Sets of distinct objects. Elements are compared by `isEqual` and must not change while they are in a set.
//
// Class clusters like the arrays: everything is implemented on top of `count`, `member` and
// `objectEnumerator` (of mutable sets also `addObject` and `removeObject`). Ordinary sets keep the order of
// insertion.
//
// Threads: an ordinary immutable set may be read from any thread; a mutable one belongs to one thread at a
// time.
//
// Errors: adding none, and an empty block, raises NSInvalidArgumentException. Looking for none finds nothing,
// removing it does nothing. None as a set or an array counts as empty.
#pragma once

#include "Platform/Foundation/Collections/NSEnumerator.h"
#include "Platform/Foundation/Collections/NSFastEnumeration.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <functional>
#include <initializer_list>
#include <vector>

#pragma GCC visibility push(default)

class NSArray;

class NSSet : public NSObject {
    NS_CLASS(NSSet, NSObject)
public:
    /// Set `stop` to end the walk after this element.
    using Visitor = std::function<void(const id &object, bool &stop)>;
    using Test = std::function<bool(const id &object, bool &stop)>;

    static Ref<NSSet> set();
    static Ref<NSSet> setWithObjects(std::initializer_list<id> objects);
    static Ref<NSSet> setWithArray(const Ref<NSArray> &array);
    static Ref<NSSet> setWithSet(const Ref<NSSet> &set);

    // Primitives.
    virtual NSUInteger count() const = 0;
    /// The element that equals the object, or none.
    virtual id member(const id &object) const = 0;
    /// The enumerator keeps the set, and raises NSGenericException when it changes; see NSFastEnumeration.h.
    virtual Ref<NSEnumerator> objectEnumerator() const = 0;

    virtual bool containsObject(const id &object) const { return member(object) != nullptr; }
    virtual Ref<NSArray> allObjects() const;
    /// Some element; none when empty.
    virtual id anyObject() const { return objectEnumerator()->nextObject(); }
    virtual void enumerateObjectsUsingBlock(const Visitor &visitor) const;
    virtual Ref<NSSet> objectsPassingTest(const Test &test) const;
    virtual NSUInteger countByEnumeratingWithState(NSFastEnumerationState &state, id *objects,
                                                   NSUInteger count) const;
    NSFastIterator<NSSet> begin() const { return NSFastIterator<NSSet>(as<NSSet>(self())); }
    std::default_sentinel_t end() const { return {}; }

    virtual bool isSubsetOfSet(const Ref<NSSet> &other) const;
    virtual bool intersectsSet(const Ref<NSSet> &other) const;
    virtual Ref<NSSet> setByAddingObject(const id &object) const;

    virtual bool isEqualToSet(const Ref<NSSet> &other) const;
    bool isEqual(const id &other) const override;
    NSUInteger hash() const override { return count(); }
    Ref<NSString> description() const override { return descriptionWithLocale(nullptr, 0); }
    virtual Ref<NSString> descriptionWithLocale(const id &locale) const {
        return descriptionWithLocale(locale, 0);
    }
    /// `indent` counts levels of four blanks, 512 at most. A collection within itself, or within 512 others,
    /// is printed as "<Class: 0x…>".
    virtual Ref<NSString> descriptionWithLocale(const id &locale, NSUInteger indent) const;
    id copy() const override { return self(); }
    id mutableCopy() const override;
};

class NSMutableSet : public NSSet {
    NS_CLASS(NSMutableSet, NSSet)
public:
    static Ref<NSMutableSet> set();
    static Ref<NSMutableSet> setWithArray(const Ref<NSArray> &array);
    static Ref<NSMutableSet> setWithSet(const Ref<NSSet> &set);

    // Primitives.
    /// Does nothing when the set has an equal element.
    virtual void addObject(const id &object) = 0;
    virtual void removeObject(const id &object) = 0;

    virtual void removeAllObjects();
    virtual void addObjectsFromArray(const Ref<NSArray> &array);
    virtual void unionSet(const Ref<NSSet> &other);
    virtual void minusSet(const Ref<NSSet> &other);
    virtual void intersectSet(const Ref<NSSet> &other);
    virtual void setSet(const Ref<NSSet> &other);

    id copy() const override { return NSSet::setWithSet(as<NSSet>(self())); }
};

#pragma GCC visibility pop
