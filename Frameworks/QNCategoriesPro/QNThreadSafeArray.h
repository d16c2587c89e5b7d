// A mutable array that any thread may use: one ordinary array behind one lock.
//
//     auto names = QNThreadSafeArray::array();
//     names->addObject(u"copy"_ns);              // has taken effect when it returns
//     const id name = qn::popFirstObject(names); // one step, like every operation of the helper library
//
// Every operation holds the lock while the inner array carries it out. What that raises reaches the caller
// after the lock was released. Each array has a lock of its own.
//
// Threads: any. The lock is not recursive, so a thread that uses the same array again from inside an
// operation waits for ever: from a block, a comparator, a test, a selector's operation, the `isEqual`, the
// `description` or the destruction of an element, or by giving the array to itself as an argument.
//
// These take a second lock while they hold the array's own. Two threads that do so at the same time in
// opposite order may wait for ever:
//
// | operation                                                              | second lock                   |
// |------------------------------------------------------------------------|-------------------------------|
// | `isEqual`, `isEqualToArray` with another guarded array                 | the other's                   |
// | whatever takes a list of objects, when that is a guarded array:        | the list's, once; for         |
// | `addObjectsFromArray`, `setArray`, `removeObjectsInArray`,             | `firstObjectCommonWithArray`  |
// | `replaceObjectsInRange`, `insertObjects`, `replaceObjectsAtIndexes`,   | once per element              |
// | `arrayByAddingObjectsFromArray`, `firstObjectCommonWithArray`, and     |                               |
// | `appendObjects`, `prependObjects`, `insertObjects` of the library      |                               |
// | whatever compares elements or asks for their texts, when these are     | that of an element, and in it |
// | guarded containers: looking for and removing equal objects, the two    | those of its own elements;    |
// | rows above, `description`, `componentsJoinedByString`, and             | comparing with a guarded      |
// | `jsonStringEncoded`, `jsonPrettyStringEncoded` of the library          | object its lock as well       |
//
// Making an array of another one, and comparing an ordinary array with a guarded one, take one lock at a
// time.
//
// An array may hold itself, directly or in what it holds. Its texts, also those in logs and formats, show the
// inner one as "<QNThreadSafeArray: 0x…>"; it equals another one unless a difference is found; it has no
// JSON and no property list; models leave the inner one out, and keyed archives hold it once.
//
// * Enumerators are made under the lock but used without it: they are not safe against writers, and raise
//   NSGenericException when they notice one.
// * A walk with range-for takes the lock for each batch. A writer in between makes its next step raise
//   NSGenericException, as with an ordinary array.
// * Arrays that operations return are snapshots.
// * Equality is asymmetric: a guarded array equals guarded arrays only, an ordinary one may equal it, too.
//   It takes the receiver's lock, then the other's.
#pragma once

#include "Frameworks/QNCategoriesPro/LockedContents.h"
#include "Platform/Foundation/Collections/NSArray.h"

#pragma GCC visibility push(default)

class QNThreadSafeArray : public NSMutableArray {
    NS_CLASS(QNThreadSafeArray, NSMutableArray)
public:
    static Ref<QNThreadSafeArray> array() { return init(); }
    static Ref<QNThreadSafeArray> arrayWithCapacity(NSUInteger capacity) {
        return initWithCapacity(capacity);
    }
    static Ref<QNThreadSafeArray> init();
    /// The capacity is a hint, whatever it is.
    static Ref<QNThreadSafeArray> initWithCapacity(NSUInteger capacity);
    static Ref<QNThreadSafeArray> initWithArray(const Ref<NSArray> &array);
    /// Raises NSInvalidArgumentException for a count that no memory holds.
    static Ref<QNThreadSafeArray> initWithObjects(const id *objects, NSUInteger count);
    /// The array in a property list; none when there is no such file or its root is not an array.
    static Ref<QNThreadSafeArray> initWithContentsOfFile(const Ref<NSString> &path);
    static Ref<QNThreadSafeArray> initWithContentsOfURL(const Ref<NSURL> &url);

    QNThreadSafeArray() : QNThreadSafeArray(NSMutableArray::array()) {}
    /// Takes over an ordinary array, which nobody else may use from then on.
    explicit QNThreadSafeArray(Ref<NSMutableArray> contents) : _arr(std::move(contents)) {}

    NSUInteger count() const override { return locked()->count(); }
    id objectAtIndex(NSUInteger index) const override { return locked()->objectAtIndex(index); }
    std::vector<id> getObjects(NSRange range) const override { return locked()->getObjects(range); }
    std::vector<id> allObjects() const override { return locked()->allObjects(); }
    id objectAtIndexedSubscript(NSUInteger index) const override {
        return locked()->objectAtIndexedSubscript(index);
    }
    Ref<NSArray> objectsAtIndexes(const Ref<NSIndexSet> &indexes) const override {
        return locked()->objectsAtIndexes(indexes);
    }
    id firstObject() const override { return locked()->firstObject(); }
    id lastObject() const override { return locked()->lastObject(); }
    NSUInteger indexOfObject(const id &object) const override { return locked()->indexOfObject(object); }
    NSUInteger indexOfObject(const id &object, NSRange range) const override {
        return locked()->indexOfObject(object, range);
    }
    NSUInteger indexOfObjectIdenticalTo(const id &object) const override {
        return locked()->indexOfObjectIdenticalTo(object);
    }
    NSUInteger indexOfObjectIdenticalTo(const id &object, NSRange range) const override {
        return locked()->indexOfObjectIdenticalTo(object, range);
    }
    bool containsObject(const id &object) const override { return locked()->containsObject(object); }
    id firstObjectCommonWithArray(const Ref<NSArray> &other) const override {
        return locked()->firstObjectCommonWithArray(other);
    }
    Ref<NSArray> arrayByAddingObject(const id &object) const override {
        return locked()->arrayByAddingObject(object);
    }
    Ref<NSArray> arrayByAddingObjectsFromArray(const Ref<NSArray> &other) const override {
        return locked()->arrayByAddingObjectsFromArray(other);
    }
    Ref<NSArray> subarrayWithRange(NSRange range) const override {
        return locked()->subarrayWithRange(range);
    }
    Ref<NSString> componentsJoinedByString(const Ref<NSString> &separator) const override;
    Ref<NSEnumerator> objectEnumerator() const override { return locked()->objectEnumerator(); }
    Ref<NSEnumerator> reverseObjectEnumerator() const override { return locked()->reverseObjectEnumerator(); }
    void enumerateObjectsUsingBlock(const Visitor &visitor) const override {
        locked()->enumerateObjectsUsingBlock(visitor);
    }
    void enumerateObjectsWithOptions(NSEnumerationOptions options, const Visitor &visitor) const override {
        locked()->enumerateObjectsWithOptions(options, visitor);
    }
    void enumerateObjectsAtIndexes(const Ref<NSIndexSet> &indexes, NSEnumerationOptions options,
                                   const Visitor &visitor) const override {
        locked()->enumerateObjectsAtIndexes(indexes, options, visitor);
    }
    NSUInteger indexOfObjectPassingTest(const Test &test) const override {
        return locked()->indexOfObjectPassingTest(test);
    }
    NSUInteger indexOfObjectWithOptions(NSEnumerationOptions options, const Test &test) const override {
        return locked()->indexOfObjectWithOptions(options, test);
    }
    NSUInteger indexOfObjectAtIndexes(const Ref<NSIndexSet> &indexes, NSEnumerationOptions options,
                                      const Test &test) const override {
        return locked()->indexOfObjectAtIndexes(indexes, options, test);
    }
    Ref<NSIndexSet> indexesOfObjectsPassingTest(const Test &test) const override {
        return locked()->indexesOfObjectsPassingTest(test);
    }
    Ref<NSIndexSet> indexesOfObjectsWithOptions(NSEnumerationOptions options,
                                                const Test &test) const override {
        return locked()->indexesOfObjectsWithOptions(options, test);
    }
    Ref<NSIndexSet> indexesOfObjectsAtIndexes(const Ref<NSIndexSet> &indexes, NSEnumerationOptions options,
                                              const Test &test) const override {
        return locked()->indexesOfObjectsAtIndexes(indexes, options, test);
    }
    void makeObjectsPerformSelector(SEL selector) const override {
        locked()->makeObjectsPerformSelector(selector);
    }
    void makeObjectsPerformSelector(SEL selector, const id &object) const override {
        locked()->makeObjectsPerformSelector(selector, object);
    }
    NSUInteger countByEnumeratingWithState(NSFastEnumerationState &state, id *objects,
                                           NSUInteger count) const override {
        return locked()->countByEnumeratingWithState(state, objects, count);
    }
    Ref<NSData> sortedArrayHint() const override { return locked()->sortedArrayHint(); }
    Ref<NSArray> sortedArrayUsingFunction(NSSortFunction function, void *context) const override {
        return locked()->sortedArrayUsingFunction(function, context);
    }
    Ref<NSArray> sortedArrayUsingFunction(NSSortFunction function, void *context,
                                          const Ref<NSData> &hint) const override {
        return locked()->sortedArrayUsingFunction(function, context, hint);
    }
    Ref<NSArray> sortedArrayUsingSelector(SEL selector) const override {
        return locked()->sortedArrayUsingSelector(selector);
    }
    Ref<NSArray> sortedArrayUsingComparator(const NSComparator &comparator) const override {
        return locked()->sortedArrayUsingComparator(comparator);
    }
    Ref<NSArray> sortedArrayWithOptions(NSSortOptions options,
                                        const NSComparator &comparator) const override {
        return locked()->sortedArrayWithOptions(options, comparator);
    }
    NSUInteger indexOfObject(const id &object, NSRange sortedRange, NSBinarySearchingOptions options,
                             const NSComparator &comparator) const override {
        return locked()->indexOfObject(object, sortedRange, options, comparator);
    }
    Ref<NSString> descriptionWithLocale(const id &locale) const override;
    Ref<NSString> descriptionWithLocale(const id &locale, NSUInteger indent) const override;
    NSUInteger hash() const override { return locked()->hash(); }
    Ref<NSString> description() const override;

    void addObject(const id &object) override { locked()->addObject(object); }
    void insertObject(const id &object, NSUInteger index) override { locked()->insertObject(object, index); }
    void removeObjectAtIndex(NSUInteger index) override { locked()->removeObjectAtIndex(index); }
    void removeLastObject() override { locked()->removeLastObject(); }
    void replaceObjectAtIndex(NSUInteger index, const id &object) override {
        locked()->replaceObjectAtIndex(index, object);
    }
    void setObject(const id &object, NSUInteger index) override { locked()->setObject(object, index); }
    void addObjectsFromArray(const Ref<NSArray> &array) override { locked()->addObjectsFromArray(array); }
    void setArray(const Ref<NSArray> &array) override { locked()->setArray(array); }
    void exchangeObjectAtIndex(NSUInteger first, NSUInteger second) override {
        locked()->exchangeObjectAtIndex(first, second);
    }
    void removeAllObjects() override { locked()->removeAllObjects(); }
    void removeObject(const id &object) override { locked()->removeObject(object); }
    void removeObject(const id &object, NSRange range) override { locked()->removeObject(object, range); }
    void removeObjectIdenticalTo(const id &object) override { locked()->removeObjectIdenticalTo(object); }
    void removeObjectIdenticalTo(const id &object, NSRange range) override {
        locked()->removeObjectIdenticalTo(object, range);
    }
    void removeObjectsInArray(const Ref<NSArray> &array) override { locked()->removeObjectsInArray(array); }
    void removeObjectsInRange(NSRange range) override { locked()->removeObjectsInRange(range); }
    void replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects) override {
        locked()->replaceObjectsInRange(range, objects);
    }
    void replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects, NSRange objectsRange) override {
        locked()->replaceObjectsInRange(range, objects, objectsRange);
    }
    void insertObjects(const Ref<NSArray> &objects, const Ref<NSIndexSet> &indexes) override {
        locked()->insertObjects(objects, indexes);
    }
    void replaceObjectsAtIndexes(const Ref<NSIndexSet> &indexes, const Ref<NSArray> &objects) override {
        locked()->replaceObjectsAtIndexes(indexes, objects);
    }
    void removeObjectsAtIndexes(const Ref<NSIndexSet> &indexes) override {
        locked()->removeObjectsAtIndexes(indexes);
    }
    void sortUsingFunction(NSSortFunction function, void *context) override {
        locked()->sortUsingFunction(function, context);
    }
    void sortUsingSelector(SEL selector) override { locked()->sortUsingSelector(selector); }
    void sortUsingComparator(const NSComparator &comparator) override {
        locked()->sortUsingComparator(comparator);
    }
    void sortWithOptions(NSSortOptions options, const NSComparator &comparator) override {
        locked()->sortWithOptions(options, comparator);
    }

    bool isEqualToArray(const Ref<NSArray> &other) const override;
    bool isEqual(const id &other) const override;
    /// As `mutableCopy`: even this copy is mutable and guarded.
    id copy() const override { return mutableCopy(); }
    /// A guarded array of the receiver's own class, made as that class makes its instances, with the same
    /// elements and a lock of its own.
    id mutableCopy() const override;

    /// The operation runs under the lock.
    void performAtomically(const std::function<void(NSArray &contents)> &operation) override {
        locked()->performAtomically(operation);
    }

private:
    /// Holds the lock until the end of the statement, or as long as it is kept.
    LockedContents<NSMutableArray> locked() const { return {_lock, *_arr}; }

    Ref<NSMutableArray> _arr; // changes in a copy under construction only
    mutable dispatch::Semaphore _lock{1};
};

#pragma GCC visibility pop
