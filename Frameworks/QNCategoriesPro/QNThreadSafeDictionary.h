// A mutable dictionary that any thread may use: one ordinary dictionary behind one lock.
//
// It promises what QNThreadSafeArray promises: each operation holds the dictionary's own lock, which is not
// recursive and is released when the operation raises; walks lock for each batch of keys; enumerators are
// not protected; what operations return is a snapshot; equality is asymmetric.
//
// These take a second lock while they hold the dictionary's own. Two threads that do so at the same time
// in opposite order may wait for ever:
//
// | operation                                                               | second lock                  |
// |-------------------------------------------------------------------------|------------------------------|
// | `isEqual`, `isEqualToDictionary` with another guarded dictionary        | the other's                  |
// | `addEntriesFromDictionary`, `setDictionary` with a guarded dictionary;  | the argument's, once         |
// | `objectsForKeys`, `removeObjectsForKeys`, and `entriesForKeys`,         |                              |
// | `popEntriesForKeys` of the library with a guarded array                 |                              |
// | whatever compares or copies keys, compares values or asks for their     | that of a key or a value, as |
// | texts, when these are guarded containers: everything with a key,        | with the elements of a       |
// | `allKeysForObject`, equality, `description`,                            | guarded array                |
// | `descriptionInStringsFileFormat`, and the JSON texts of the library     |                              |
//
// A dictionary may hold itself, directly or in what it holds; see QNThreadSafeArray for what follows from
// that.
#pragma once

#include "Frameworks/QNCategoriesPro/LockedContents.h"
#include "Platform/Foundation/Collections/NSDictionary.h"

#pragma GCC visibility push(default)

class QNThreadSafeDictionary : public NSMutableDictionary {
    NS_CLASS(QNThreadSafeDictionary, NSMutableDictionary)
public:
    /// These two have the names of the guarded array's, but make dictionaries.
    static Ref<QNThreadSafeDictionary> array() { return init(); }
    static Ref<QNThreadSafeDictionary> arrayWithCapacity(NSUInteger capacity) {
        return initWithCapacity(capacity);
    }
    static Ref<QNThreadSafeDictionary> init();
    /// The capacity is a hint, whatever it is.
    static Ref<QNThreadSafeDictionary> initWithCapacity(NSUInteger capacity);
    /// Raises NSInvalidArgumentException when there are not as many objects as keys.
    static Ref<QNThreadSafeDictionary> initWithObjects(const Ref<NSArray> &objects, const Ref<NSArray> &keys);
    static Ref<QNThreadSafeDictionary> initWithObjects(const id *objects, const id *keys, NSUInteger count);
    /// With `copyItems`, the values are copied.
    static Ref<QNThreadSafeDictionary> initWithDictionary(const Ref<NSDictionary> &dictionary,
                                                          bool copyItems = false);

    QNThreadSafeDictionary() : QNThreadSafeDictionary(NSMutableDictionary::dictionary()) {}
    /// Takes over an ordinary dictionary, which nobody else may use from then on.
    explicit QNThreadSafeDictionary(Ref<NSMutableDictionary> contents) : _dic(std::move(contents)) {}

    NSUInteger count() const override { return locked()->count(); }
    id objectForKey(const id &key) const override { return locked()->objectForKey(key); }
    Ref<NSEnumerator> keyEnumerator() const override { return locked()->keyEnumerator(); }
    id objectForKeyedSubscript(const id &key) const override {
        return locked()->objectForKeyedSubscript(key);
    }
    Ref<NSArray> allKeys() const override { return locked()->allKeys(); }
    Ref<NSArray> allValues() const override { return locked()->allValues(); }
    Ref<NSArray> allKeysForObject(const id &object) const override {
        return locked()->allKeysForObject(object);
    }
    Ref<NSArray> objectsForKeys(const Ref<NSArray> &keys, const id &notFoundMarker) const override {
        return locked()->objectsForKeys(keys, notFoundMarker);
    }
    void getObjects(id *objects, id *keys, NSUInteger count) const override {
        locked()->getObjects(objects, keys, count);
    }
    Ref<NSEnumerator> objectEnumerator() const override { return locked()->objectEnumerator(); }
    void enumerateKeysAndObjectsUsingBlock(const Visitor &visitor) const override {
        locked()->enumerateKeysAndObjectsUsingBlock(visitor);
    }
    void enumerateKeysAndObjectsWithOptions(NSEnumerationOptions options,
                                            const Visitor &visitor) const override {
        locked()->enumerateKeysAndObjectsWithOptions(options, visitor);
    }
    Ref<NSSet> keysOfEntriesPassingTest(const Test &test) const override {
        return locked()->keysOfEntriesPassingTest(test);
    }
    Ref<NSSet> keysOfEntriesWithOptions(NSEnumerationOptions options, const Test &test) const override {
        return locked()->keysOfEntriesWithOptions(options, test);
    }
    Ref<NSArray> keysSortedByValueUsingSelector(SEL selector) const override {
        return locked()->keysSortedByValueUsingSelector(selector);
    }
    Ref<NSArray> keysSortedByValueUsingComparator(const NSComparator &comparator) const override {
        return locked()->keysSortedByValueUsingComparator(comparator);
    }
    Ref<NSArray> keysSortedByValueWithOptions(NSSortOptions options,
                                              const NSComparator &comparator) const override {
        return locked()->keysSortedByValueWithOptions(options, comparator);
    }
    NSUInteger countByEnumeratingWithState(NSFastEnumerationState &state, id *keys,
                                           NSUInteger count) const override {
        return locked()->countByEnumeratingWithState(state, keys, count);
    }
    Ref<NSString> descriptionWithLocale(const id &locale) const override;
    Ref<NSString> descriptionWithLocale(const id &locale, NSUInteger indent) const override;
    Ref<NSString> descriptionInStringsFileFormat() const override;
    NSUInteger hash() const override { return locked()->hash(); }
    Ref<NSString> description() const override;

    void setObject(const id &object, const id &key) override { locked()->setObject(object, key); }
    void removeObjectForKey(const id &key) override { locked()->removeObjectForKey(key); }
    void setObjectForKeyedSubscript(const id &object, const id &key) override {
        locked()->setObjectForKeyedSubscript(object, key);
    }
    void removeAllObjects() override { locked()->removeAllObjects(); }
    void removeObjectsForKeys(const Ref<NSArray> &keys) override { locked()->removeObjectsForKeys(keys); }
    void addEntriesFromDictionary(const Ref<NSDictionary> &dictionary) override {
        locked()->addEntriesFromDictionary(dictionary);
    }
    void setDictionary(const Ref<NSDictionary> &dictionary) override { locked()->setDictionary(dictionary); }

    bool isEqualToDictionary(const Ref<NSDictionary> &other) const override;
    bool isEqual(const id &other) const override;
    /// As `mutableCopy`: even this copy is mutable and guarded.
    id copy() const override { return mutableCopy(); }
    /// A guarded dictionary of the receiver's own class, made as that class makes its instances, with the
    /// same values and a lock of its own.
    id mutableCopy() const override;

    /// The operation runs under the lock.
    void performAtomically(const std::function<void(NSDictionary &contents)> &operation) override {
        locked()->performAtomically(operation);
    }

private:
    /// Holds the lock until the end of the statement, or as long as it is kept.
    LockedContents<NSMutableDictionary> locked() const { return {_lock, *_dic}; }

    Ref<NSMutableDictionary> _dic; // changes in a copy under construction only
    mutable dispatch::Semaphore _lock{1};
};

#pragma GCC visibility pop
