// Tables from keys to objects. Keys are copied when they are added, and compared by `isEqual`.
//
//     auto settings = NSMutableDictionary::dictionary();
//     settings->setObject(u"A4"_ns, u"paper"_ns);
//     const id paper = settings->objectForKey(u"paper"_ns);
//
// Class clusters like the arrays: everything is implemented on top of `count`, `objectForKey` and
// `keyEnumerator` (of mutable dictionaries also `setObject` and `removeObjectForKey`). Ordinary dictionaries
// keep the order of insertion.
//
// Threads: an ordinary immutable dictionary may be read from any thread; a mutable one belongs to one thread
// at a time.
//
// Errors: adding none as a key or value, and an empty block or comparator, raises NSInvalidArgumentException.
// Reading with none as the key returns none, removing it does nothing. None as a list or a dictionary counts
// as empty.
#pragma once

#include "Platform/Foundation/Collections/NSEnumerator.h"
#include "Platform/Foundation/Collections/NSFastEnumeration.h"
#include "Platform/Foundation/Text/NSComparison.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

#pragma GCC visibility push(default)

class NSArray;
class NSSet;
class ObjectTable;

class NSDictionary : public NSObject {
    NS_CLASS(NSDictionary, NSObject)
public:
    /// Set `stop` to end the walk after this entry.
    using Visitor = std::function<void(const id &key, const id &value, bool &stop)>;
    using Test = std::function<bool(const id &key, const id &value, bool &stop)>;
    using Entries = std::initializer_list<std::pair<id, id>>;

    static Ref<NSDictionary> dictionary();
    static Ref<NSDictionary> dictionaryWithEntries(Entries entries);
    static Ref<NSDictionary> dictionaryWithDictionary(const Ref<NSDictionary> &dictionary);
    /// Takes the table over; its keys must be copies already.
    static Ref<NSDictionary> dictionaryWithTable(ObjectTable table);
    /// Raises NSInvalidArgumentException when the numbers of objects and keys differ.
    static Ref<NSDictionary> dictionaryWithObjects(const Ref<NSArray> &objects, const Ref<NSArray> &keys);

    // Primitives.
    virtual NSUInteger count() const = 0;
    virtual id objectForKey(const id &key) const = 0;
    /// The enumerator keeps the dictionary.
    virtual Ref<NSEnumerator> keyEnumerator() const = 0;

    /// The table of an ordinary dictionary, null for any other. Valid until the dictionary changes, so call
    /// no code meanwhile that might change it.
    virtual const ObjectTable *table() const { return nullptr; }
    /// Counts the entries added and removed, so that a walk notices them; null when they are not counted.
    virtual const NSMutationCount *mutations() const { return nullptr; }
    /// A copy of all entries.
    std::vector<std::pair<id, id>> allEntries() const;
    virtual id objectForKeyedSubscript(const id &key) const { return objectForKey(key); }
    /// The object of the key.
    id valueForKey(const Ref<NSString> &key) const override;
    virtual Ref<NSArray> allKeys() const;
    virtual Ref<NSArray> allValues() const;
    /// The keys whose value equals the object.
    virtual Ref<NSArray> allKeysForObject(const id &object) const;
    /// The values of the keys, in their order, with the marker for each missing key. Raises
    /// NSInvalidArgumentException when the marker is none and needed.
    virtual Ref<NSArray> objectsForKeys(const Ref<NSArray> &keys, const id &notFoundMarker) const;
    /// `getObjects:andKeys:count:`: copies the first `count` entries to those of the two buffers that are not
    /// null.
    virtual void getObjects(id *objects, id *keys, NSUInteger count) const;

    // Walks and order: NSDictionary+Enumeration.cpp. The values of existing keys may be set during a walk;
    // other changes raise NSGenericException, see NSFastEnumeration.h.
    /// Enumerates the values, in the order of the keys.
    virtual Ref<NSEnumerator> objectEnumerator() const;
    virtual void enumerateKeysAndObjectsUsingBlock(const Visitor &visitor) const;
    virtual void enumerateKeysAndObjectsWithOptions(NSEnumerationOptions options,
                                                    const Visitor &visitor) const;
    virtual Ref<NSSet> keysOfEntriesPassingTest(const Test &test) const;
    virtual Ref<NSSet> keysOfEntriesWithOptions(NSEnumerationOptions options, const Test &test) const;
    /// The selector's operation takes another value and returns NSComparisonResult.
    virtual Ref<NSArray> keysSortedByValueUsingSelector(SEL selector) const;
    virtual Ref<NSArray> keysSortedByValueUsingComparator(const NSComparator &comparator) const;
    virtual Ref<NSArray> keysSortedByValueWithOptions(NSSortOptions options,
                                                      const NSComparator &comparator) const;
    /// Copies the next keys to `keys`, which has room for `count`; returns their number, 0 at the end.
    virtual NSUInteger countByEnumeratingWithState(NSFastEnumerationState &state, id *keys,
                                                   NSUInteger count) const;
    /// Range-for walks the keys.
    NSFastIterator<NSDictionary> begin() const {
        return NSFastIterator<NSDictionary>(as<NSDictionary>(self()));
    }
    std::default_sentinel_t end() const { return {}; }

    virtual bool isEqualToDictionary(const Ref<NSDictionary> &other) const;
    bool isEqual(const id &other) const override;
    NSUInteger hash() const override { return count(); }
    /// Entries sorted by key when every key is a text.
    Ref<NSString> description() const override { return descriptionWithLocale(nullptr, 0); }
    virtual Ref<NSString> descriptionWithLocale(const id &locale) const {
        return descriptionWithLocale(locale, 0);
    }
    /// `indent` counts levels of four blanks, 512 at most. A collection within itself, or within 512 others,
    /// is printed as "<Class: 0x…>".
    virtual Ref<NSString> descriptionWithLocale(const id &locale, NSUInteger indent) const;
    /// One line `"key" = "value";` per entry, in the same order.
    virtual Ref<NSString> descriptionInStringsFileFormat() const;
    id copy() const override { return self(); }
    id mutableCopy() const override;

    /// Runs `operation` on the dictionary that holds the entries. If a lock guards the dictionary, the lock
    /// is held meanwhile, so several calls form one step. The operation must use `contents`, never the
    /// receiver. The contents of a mutable dictionary are mutable.
    virtual void performAtomically(const std::function<void(NSDictionary &contents)> &operation);
};

class NSMutableDictionary : public NSDictionary {
    NS_CLASS(NSMutableDictionary, NSDictionary)
public:
    static Ref<NSMutableDictionary> dictionary() { return dictionaryWithCapacity(0); }
    /// The capacity is only a hint; any value is fine.
    static Ref<NSMutableDictionary> dictionaryWithCapacity(NSUInteger capacity);
    static Ref<NSMutableDictionary> dictionaryWithTable(ObjectTable table);
    /// With `copyItems`, the values are copied.
    static Ref<NSMutableDictionary> dictionaryWithDictionary(const Ref<NSDictionary> &dictionary,
                                                             bool copyItems = false);
    static Ref<NSMutableDictionary> dictionaryWithObjects(const Ref<NSArray> &objects,
                                                          const Ref<NSArray> &keys);
    static Ref<NSMutableDictionary> dictionaryWithObjects(const id *objects, const id *keys,
                                                          NSUInteger count);

    // Primitives.
    virtual void setObject(const id &object, const id &key) = 0;
    virtual void removeObjectForKey(const id &key) = 0;

    /// `setObject:forKeyedSubscript:`, under another name since it has the arguments of `setObject`: sets the
    /// entry, or removes it when the object is none.
    virtual void setObjectForKeyedSubscript(const id &object, const id &key);
    /// Sets the entry, or removes it when the value is none.
    void setValue(const id &value, const Ref<NSString> &forKey) override;
    virtual void removeAllObjects();
    virtual void removeObjectsForKeys(const Ref<NSArray> &keys);
    virtual void addEntriesFromDictionary(const Ref<NSDictionary> &dictionary);
    virtual void setDictionary(const Ref<NSDictionary> &dictionary);

    id copy() const override;
};

#pragma GCC visibility pop
