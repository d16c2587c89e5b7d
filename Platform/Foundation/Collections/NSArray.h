// Ordered lists of objects.
//
//     auto names = NSMutableArray::array();
//     names->addObject(u"toner"_ns);
//     for (const id &name : names)
//         show(name);
//
// `NSArray` and `NSMutableArray` are class clusters: everything is implemented on top of `count` and
// `objectAtIndex` (of mutable arrays also the five primitives marked below), so a subclass need only override
// these. The factories return ordinary arrays.
//
// Threads: an ordinary immutable array may be read from any thread; a mutable one belongs to one thread at a
// time.
//
// Errors, unless a subclass says otherwise: indexes and ranges past the end raise NSRangeException; none as
// an element and an empty block or comparator raise NSInvalidArgumentException. None as a list or an index
// set counts as empty. An operation that raises for an argument has changed nothing, and neither has a sort
// whose comparison raises.
#pragma once

#include "Platform/Foundation/Collections/NSEnumerator.h"
#include "Platform/Foundation/Collections/NSFastEnumeration.h"
#include "Platform/Foundation/Text/NSComparison.h"
#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <vector>

#pragma GCC visibility push(default)

class NSData;
class NSIndexSet;
class NSMutableArray;
class NSURL;

class NSArray : public NSObject {
    NS_CLASS(NSArray, NSObject)
public:
    /// Set `stop` to end the walk after this element.
    using Visitor = std::function<void(const id &object, NSUInteger index, bool &stop)>;
    using Test = std::function<bool(const id &object, NSUInteger index, bool &stop)>;

    static Ref<NSArray> array();
    static Ref<NSArray> arrayWithObjects(std::initializer_list<id> objects);
    static Ref<NSArray> arrayWithObjects(std::vector<id> objects);
    static Ref<NSArray> arrayWithArray(const Ref<NSArray> &array);
    /// The array in a property-list file; none when the file cannot be read or contains something else.
    static Ref<NSArray> arrayWithContentsOfFile(const Ref<NSString> &path);
    /// The same for the URL of a file.
    static Ref<NSArray> arrayWithContentsOfURL(const Ref<NSURL> &url);

    // Primitives.
    virtual NSUInteger count() const = 0;
    virtual id objectAtIndex(NSUInteger index) const = 0;
    /// A copy of the elements in the range.
    virtual std::vector<id> getObjects(NSRange range) const;

    /// The elements of an ordinary array without a copy; nothing for any other array. Valid until the array
    /// changes, so call no code meanwhile that might change it.
    virtual std::optional<std::span<const id>> elements() const { return std::nullopt; }
    /// Counts the changes of the array, so that a walk notices them. Null when they are not counted; then
    /// walks visit the elements present at their start.
    virtual const NSMutationCount *mutations() const { return nullptr; }
    /// A copy of all elements.
    virtual std::vector<id> allObjects() const { return getObjects({0, count()}); }
    virtual id objectAtIndexedSubscript(NSUInteger index) const { return objectAtIndex(index); }
    virtual Ref<NSArray> objectsAtIndexes(const Ref<NSIndexSet> &indexes) const;
    /// None when empty.
    virtual id firstObject() const { return count() ? objectAtIndex(0) : nullptr; }
    virtual id lastObject() const;

    /// By `isEqual`; NSNotFound when absent.
    virtual NSUInteger indexOfObject(const id &object) const;
    virtual NSUInteger indexOfObject(const id &object, NSRange range) const;
    virtual NSUInteger indexOfObjectIdenticalTo(const id &object) const;
    virtual NSUInteger indexOfObjectIdenticalTo(const id &object, NSRange range) const;
    virtual bool containsObject(const id &object) const { return indexOfObject(object) < count(); }
    /// The first element that the other array contains as well, or none.
    virtual id firstObjectCommonWithArray(const Ref<NSArray> &other) const;

    virtual Ref<NSArray> arrayByAddingObject(const id &object) const;
    virtual Ref<NSArray> arrayByAddingObjectsFromArray(const Ref<NSArray> &other) const;
    virtual Ref<NSArray> subarrayWithRange(NSRange range) const;
    virtual Ref<NSString> componentsJoinedByString(const Ref<NSString> &separator) const;

    // Walks (NSArray+Enumeration.cpp) raise NSGenericException when the array changes; see
    // NSFastEnumeration.h.
    /// The enumerator keeps the array.
    virtual Ref<NSEnumerator> objectEnumerator() const;
    virtual Ref<NSEnumerator> reverseObjectEnumerator() const;
    virtual void enumerateObjectsUsingBlock(const Visitor &visitor) const;
    virtual void enumerateObjectsWithOptions(NSEnumerationOptions options, const Visitor &visitor) const;
    virtual void enumerateObjectsAtIndexes(const Ref<NSIndexSet> &indexes, NSEnumerationOptions options,
                                           const Visitor &visitor) const;
    /// The index of the first element that passes, in the order of the walk, or NSNotFound.
    virtual NSUInteger indexOfObjectPassingTest(const Test &test) const;
    virtual NSUInteger indexOfObjectWithOptions(NSEnumerationOptions options, const Test &test) const;
    virtual NSUInteger indexOfObjectAtIndexes(const Ref<NSIndexSet> &indexes, NSEnumerationOptions options,
                                              const Test &test) const;
    virtual Ref<NSIndexSet> indexesOfObjectsPassingTest(const Test &test) const;
    virtual Ref<NSIndexSet> indexesOfObjectsWithOptions(NSEnumerationOptions options, const Test &test) const;
    virtual Ref<NSIndexSet> indexesOfObjectsAtIndexes(const Ref<NSIndexSet> &indexes,
                                                      NSEnumerationOptions options, const Test &test) const;
    /// The selector's operation must return nothing.
    virtual void makeObjectsPerformSelector(SEL selector) const;
    virtual void makeObjectsPerformSelector(SEL selector, const id &object) const;
    /// Copies the next elements of a walk to `objects`, which has room for `count`; returns their number, 0
    /// at the end.
    virtual NSUInteger countByEnumeratingWithState(NSFastEnumerationState &state, id *objects,
                                                   NSUInteger count) const;
    NSFastIterator<NSArray> begin() const { return NSFastIterator<NSArray>(as<NSArray>(self())); }
    std::default_sentinel_t end() const { return {}; }

    // Order: NSArray+Sorting.cpp.
    /// Always empty data: the sort needs no hint, and ignores one.
    virtual Ref<NSData> sortedArrayHint() const;
    virtual Ref<NSArray> sortedArrayUsingFunction(NSSortFunction function, void *context) const;
    virtual Ref<NSArray> sortedArrayUsingFunction(NSSortFunction function, void *context,
                                                  const Ref<NSData> &hint) const;
    /// The selector's operation takes the other element and returns NSComparisonResult.
    virtual Ref<NSArray> sortedArrayUsingSelector(SEL selector) const;
    virtual Ref<NSArray> sortedArrayUsingComparator(const NSComparator &comparator) const;
    virtual Ref<NSArray> sortedArrayWithOptions(NSSortOptions options, const NSComparator &comparator) const;
    /// Binary search in a range that is sorted by the comparator. NSNotFound without an equal element, unless
    /// the index to insert at is asked for. Raises NSInvalidArgumentException for none, and for FirstEqual
    /// together with LastEqual.
    virtual NSUInteger indexOfObject(const id &object, NSRange sortedRange, NSBinarySearchingOptions options,
                                     const NSComparator &comparator) const;

    virtual bool isEqualToArray(const Ref<NSArray> &other) const;
    bool isEqual(const id &other) const override;
    /// The count: it takes no time, and equal arrays have equal counts.
    NSUInteger hash() const override { return count(); }
    Ref<NSString> description() const override { return descriptionWithLocale(nullptr, 0); }
    virtual Ref<NSString> descriptionWithLocale(const id &locale) const {
        return descriptionWithLocale(locale, 0);
    }
    /// `indent` counts levels of four blanks, 512 at most. A collection within itself, or within 512 others,
    /// is no more than "<Class: 0x…>". Of what would take more than 8,388,608 characters, shared parts
    /// counted each time and all once more for every 16 levels around them, the rest is "...".
    virtual Ref<NSString> descriptionWithLocale(const id &locale, NSUInteger indent) const;
    id copy() const override { return self(); }
    id mutableCopy() const override;

    /// Runs `operation` on the array that holds the elements. If a lock guards the array, the lock is held
    /// meanwhile, so several calls form one step. The operation must use `contents`, never the receiver. The
    /// contents of a mutable array are mutable.
    virtual void performAtomically(const std::function<void(NSArray &contents)> &operation);
};

class NSMutableArray : public NSArray {
    NS_CLASS(NSMutableArray, NSArray)
public:
    static Ref<NSMutableArray> array() { return arrayWithCapacity(0); }
    /// The capacity is only a hint; any value is fine.
    static Ref<NSMutableArray> arrayWithCapacity(NSUInteger capacity);
    static Ref<NSMutableArray> arrayWithObjects(std::initializer_list<id> objects);
    static Ref<NSMutableArray> arrayWithObjects(std::vector<id> objects);
    static Ref<NSMutableArray> arrayWithArray(const Ref<NSArray> &array);
    static Ref<NSMutableArray> arrayWithContentsOfFile(const Ref<NSString> &path);
    static Ref<NSMutableArray> arrayWithContentsOfURL(const Ref<NSURL> &url);

    // Primitives.
    virtual void addObject(const id &object) = 0;
    /// The index may equal the count.
    virtual void insertObject(const id &object, NSUInteger index) = 0;
    virtual void removeObjectAtIndex(NSUInteger index) = 0;
    /// Does nothing on an empty array.
    virtual void removeLastObject() = 0;
    virtual void replaceObjectAtIndex(NSUInteger index, const id &object) = 0;

    /// `setObject:atIndexedSubscript:`: replaces, or adds when the index equals the count.
    virtual void setObject(const id &object, NSUInteger index);
    virtual void addObjectsFromArray(const Ref<NSArray> &array);
    virtual void setArray(const Ref<NSArray> &array);
    virtual void exchangeObjectAtIndex(NSUInteger first, NSUInteger second);

    virtual void removeAllObjects();
    /// These remove every element that equals (is identical to) the object.
    virtual void removeObject(const id &object);
    virtual void removeObject(const id &object, NSRange range);
    virtual void removeObjectIdenticalTo(const id &object);
    virtual void removeObjectIdenticalTo(const id &object, NSRange range);
    virtual void removeObjectsInArray(const Ref<NSArray> &array);
    virtual void removeObjectsInRange(NSRange range);

    /// Replaces the elements in the range by any number of objects.
    virtual void replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects);
    virtual void replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects, NSRange objectsRange);

    /// These raise NSInvalidArgumentException when the numbers of indexes and objects differ. `insertObjects`
    /// is given the indexes that the objects have afterwards.
    virtual void insertObjects(const Ref<NSArray> &objects, const Ref<NSIndexSet> &indexes);
    virtual void replaceObjectsAtIndexes(const Ref<NSIndexSet> &indexes, const Ref<NSArray> &objects);
    virtual void removeObjectsAtIndexes(const Ref<NSIndexSet> &indexes);

    virtual void sortUsingFunction(NSSortFunction function, void *context);
    virtual void sortUsingSelector(SEL selector);
    virtual void sortUsingComparator(const NSComparator &comparator);
    virtual void sortWithOptions(NSSortOptions options, const NSComparator &comparator);

    id copy() const override { return NSArray::arrayWithObjects(allObjects()); }

protected:
    /// Inserts an object at each of the places, which are ascending and those that the objects have in the
    /// end.
    virtual void insertObjectsAt(std::span<const id> objects, std::span<const NSUInteger> places);
    /// Removes the elements at the places, which are ascending and below the count.
    virtual void removeObjectsAt(std::span<const NSUInteger> places);
};

#pragma GCC visibility pop
