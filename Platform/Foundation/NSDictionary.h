// Tables from keys to objects. Keys are copied on the way in and compared by `isEqual`.
//
// Class clusters like the arrays: `count`, `objectForKey`, `keyEnumerator` (and, mutable, `setObject` and
// `removeObjectForKey`) are the primitives, everything else is written once on top of them. Ordinary
// dictionaries keep the order of insertion.
//
// Threads: an ordinary immutable dictionary may be read from any thread; a mutable one belongs to one thread
// at a time. None as a key or value raises NSInvalidArgumentException; reading with a key of none gives none.
#pragma once

#include "Platform/Foundation/NSEnumerator.h"
#include "Platform/Runtime/NSObject.h"

#include <functional>
#include <initializer_list>
#include <utility>

class NSArray;

class NSDictionary : public NSObject {
    NS_CLASS(NSDictionary, NSObject)
public:
    /// Set `stop` to end the walk after this entry.
    using Visitor = std::function<void(const id &key, const id &value, bool &stop)>;
    using Entries = std::initializer_list<std::pair<id, id>>;

    static Ref<NSDictionary> dictionary();
    static Ref<NSDictionary> dictionaryWithEntries(Entries entries);
    static Ref<NSDictionary> dictionaryWithDictionary(const Ref<NSDictionary> &dictionary);

    // Primitives.
    virtual NSUInteger count() const = 0;
    virtual id objectForKey(const id &key) const = 0;
    /// The enumerator keeps the dictionary, which must not change meanwhile.
    virtual Ref<NSEnumerator> keyEnumerator() const = 0;

    virtual Ref<NSArray> allKeys() const;
    virtual Ref<NSArray> allValues() const;
    virtual void enumerateKeysAndObjectsUsingBlock(const Visitor &visitor) const;

    virtual bool isEqualToDictionary(const Ref<NSDictionary> &other) const;
    bool isEqual(const id &other) const override;
    NSUInteger hash() const override { return count(); }
    Ref<NSString> description() const override { return descriptionWithIndent(0); }
    /// Entries sorted by key when every key is a text.
    virtual Ref<NSString> descriptionWithIndent(NSUInteger indent) const;
    id copy() const override { return self(); }
    id mutableCopy() const override;
};

class NSMutableDictionary : public NSDictionary {
    NS_CLASS(NSMutableDictionary, NSDictionary)
public:
    static Ref<NSMutableDictionary> dictionary() { return dictionaryWithCapacity(0); }
    static Ref<NSMutableDictionary> dictionaryWithCapacity(NSUInteger capacity);
    static Ref<NSMutableDictionary> dictionaryWithDictionary(const Ref<NSDictionary> &dictionary);

    // Primitives.
    virtual void setObject(const id &object, const id &key) = 0;
    virtual void removeObjectForKey(const id &key) = 0;

    virtual void removeAllObjects();
    virtual void addEntriesFromDictionary(const Ref<NSDictionary> &dictionary);
    virtual void setDictionary(const Ref<NSDictionary> &dictionary);

    id copy() const override;
};
