// Ordered lists of objects.
//
// `NSArray` and `NSMutableArray` are class clusters: `count` and `objectAtIndex` (and, mutable, the five
// primitives marked below) are virtual, everything else is written once on top of them, so that a subclass
// that overrides the primitives is whole. Ordinary arrays come from the factories.
//
// Threads: an ordinary immutable array may be read from any thread; a mutable one belongs to one thread at a
// time. Indexes past the end raise NSRangeException, none as an element raises NSInvalidArgumentException,
// unless a subclass says otherwise.
#pragma once

#include "Platform/Foundation/NSEnumerator.h"
#include "Platform/Foundation/NSRange.h"
#include "Platform/Runtime/NSObject.h"

#include <functional>
#include <initializer_list>
#include <vector>

class NSMutableArray;

class NSArray : public NSObject {
    NS_CLASS(NSArray, NSObject)
public:
    /// Set `stop` to end the walk after this element.
    using Visitor = std::function<void(const id &object, NSUInteger index, bool &stop)>;

    static Ref<NSArray> array();
    static Ref<NSArray> arrayWithObjects(std::initializer_list<id> objects);
    static Ref<NSArray> arrayWithObjects(std::vector<id> objects);
    static Ref<NSArray> arrayWithArray(const Ref<NSArray> &array);

    // Primitives.
    virtual NSUInteger count() const = 0;
    virtual id objectAtIndex(NSUInteger index) const = 0;
    /// A copy of the elements in a range that fits.
    virtual std::vector<id> getObjects(NSRange range) const;

    std::vector<id> allObjects() const { return getObjects({0, count()}); }
    /// None when empty.
    virtual id firstObject() const { return count() ? objectAtIndex(0) : nullptr; }
    virtual id lastObject() const;
    /// By `isEqual`; NSNotFound when absent.
    virtual NSUInteger indexOfObject(const id &object) const;
    virtual NSUInteger indexOfObjectIdenticalTo(const id &object) const;
    virtual bool containsObject(const id &object) const { return indexOfObject(object) < count(); }

    virtual Ref<NSArray> arrayByAddingObject(const id &object) const;
    virtual Ref<NSArray> subarrayWithRange(NSRange range) const;
    virtual Ref<NSString> componentsJoinedByString(const Ref<NSString> &separator) const;
    /// The enumerator keeps the array.
    virtual Ref<NSEnumerator> objectEnumerator() const;
    virtual Ref<NSEnumerator> reverseObjectEnumerator() const;
    virtual void enumerateObjectsUsingBlock(const Visitor &visitor) const;

    virtual bool isEqualToArray(const Ref<NSArray> &other) const;
    bool isEqual(const id &other) const override;
    /// The count: cheap, and equal arrays agree.
    NSUInteger hash() const override { return count(); }
    Ref<NSString> description() const override { return descriptionWithIndent(0); }
    virtual Ref<NSString> descriptionWithIndent(NSUInteger indent) const;
    id copy() const override { return self(); }
    id mutableCopy() const override;

    /// Walks as range-for does; the elements must not change meanwhile.
    class Iterator {
    public:
        Iterator(const NSArray &array, NSUInteger index) : array_(&array), index_(index) {}
        id operator*() const { return array_->objectAtIndex(index_); }
        Iterator &operator++() {
            ++index_;
            return *this;
        }
        bool operator==(const Iterator &other) const { return index_ == other.index_; }

    private:
        const NSArray *array_;
        NSUInteger index_;
    };
    Iterator begin() const { return {*this, 0}; }
    Iterator end() const { return {*this, count()}; }
};

class NSMutableArray : public NSArray {
    NS_CLASS(NSMutableArray, NSArray)
public:
    static Ref<NSMutableArray> array() { return arrayWithCapacity(0); }
    static Ref<NSMutableArray> arrayWithCapacity(NSUInteger capacity);
    static Ref<NSMutableArray> arrayWithObjects(std::initializer_list<id> objects);
    static Ref<NSMutableArray> arrayWithArray(const Ref<NSArray> &array);

    // Primitives.
    virtual void addObject(const id &object) = 0;
    /// The index may equal the count.
    virtual void insertObject(const id &object, NSUInteger index) = 0;
    virtual void removeObjectAtIndex(NSUInteger index) = 0;
    /// Does nothing on an empty array.
    virtual void removeLastObject() = 0;
    virtual void replaceObjectAtIndex(NSUInteger index, const id &object) = 0;

    virtual void removeAllObjects();
    virtual void addObjectsFromArray(const Ref<NSArray> &array);
    /// Removes every element equal to the object.
    virtual void removeObject(const id &object);
    virtual void exchangeObjectAtIndex(NSUInteger first, NSUInteger second);
    virtual void setArray(const Ref<NSArray> &array);

    id copy() const override { return NSArray::arrayWithObjects(allObjects()); }
};
