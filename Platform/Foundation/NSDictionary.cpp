#include "Platform/Foundation/NSDictionary.h"

#include "Platform/Foundation/CollectionDescription.h"
#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Foundation/ObjectTable.h"
#include "Platform/Runtime/Class.h"
#include "Platform/Runtime/NSException.h"

#include <algorithm>

NS_IMPLEMENTATION(NSDictionary) {
    cls.instantiate([]() -> id { return dictionary(); })
        .method<&NSDictionary::count>("count")
        .method<&NSDictionary::objectForKey>("objectForKey:");
}

NS_IMPLEMENTATION(NSMutableDictionary) {
    cls.instantiate([]() -> id { return dictionary(); })
        .method<&NSMutableDictionary::setObject>("setObject:forKey:");
}

namespace {

void checkedSet(ObjectTable &table, const id &key, const id &value) {
    if (!key || !value)
        throw NSException(NSInvalidArgumentException, std::string("-[NSDictionary setObject:forKey:]: ") +
                                                          (key ? "object" : "key") + " cannot be nil");
    table.set(key->copy(), value);
}

/// What both ordinary dictionaries share.
template <class Base>
class PlainDictionaryOf : public Base {
public:
    explicit PlainDictionaryOf(ObjectTable table) : table_(std::move(table)) {}

    NSUInteger count() const override { return table_.count(); }
    id objectForKey(const id &key) const override {
        const id *value = table_.find(key);
        return value ? *value : nullptr;
    }
    Ref<NSEnumerator> keyEnumerator() const override {
        return make<NSEnumerator>([keep = this->self(), this, position = NSUInteger{0}]() mutable -> id {
            const ObjectTable::Entry *entry = table_.next(position);
            return entry ? entry->key : nullptr;
        });
    }
    void enumerateKeysAndObjectsUsingBlock(const NSDictionary::Visitor &visitor) const override {
        bool stop = false;
        table_.forEach([&](const id &key, const id &value) {
            visitor(key, value, stop);
            return !stop;
        });
    }

protected:
    ObjectTable table_;
};

using PlainDictionary = PlainDictionaryOf<NSDictionary>;

class PlainMutableDictionary final : public PlainDictionaryOf<NSMutableDictionary> {
public:
    using PlainDictionaryOf::PlainDictionaryOf;

    void setObject(const id &object, const id &key) override { checkedSet(table_, key, object); }
    void removeObjectForKey(const id &key) override { table_.remove(key); }
    void removeAllObjects() override { const ObjectTable released = std::exchange(table_, ObjectTable()); }
};

ObjectTable tableOf(const NSDictionary &dictionary) {
    ObjectTable table(dictionary.count());
    dictionary.enumerateKeysAndObjectsUsingBlock(
        [&](const id &key, const id &value, bool &) { table.set(key, value); });
    return table;
}

} // namespace

Ref<NSDictionary> NSDictionary::dictionary() {
    static const auto &empty = *new Ref<NSDictionary>(make<PlainDictionary>(ObjectTable()));
    return empty;
}

Ref<NSDictionary> NSDictionary::dictionaryWithEntries(Entries entries) {
    ObjectTable table(entries.size());
    for (const auto &[key, value] : entries)
        checkedSet(table, key, value);
    return make<PlainDictionary>(std::move(table));
}

Ref<NSDictionary> NSDictionary::dictionaryWithDictionary(const Ref<NSDictionary> &dictionary) {
    return dictionary ? make<PlainDictionary>(tableOf(*dictionary)) : NSDictionary::dictionary();
}

Ref<NSArray> NSDictionary::allKeys() const {
    std::vector<id> keys;
    enumerateKeysAndObjectsUsingBlock([&](const id &key, const id &, bool &) { keys.push_back(key); });
    return NSArray::arrayWithObjects(std::move(keys));
}

Ref<NSArray> NSDictionary::allValues() const {
    std::vector<id> values;
    enumerateKeysAndObjectsUsingBlock([&](const id &, const id &value, bool &) { values.push_back(value); });
    return NSArray::arrayWithObjects(std::move(values));
}

void NSDictionary::enumerateKeysAndObjectsUsingBlock(const Visitor &visitor) const {
    const auto keys = keyEnumerator();
    bool stop = false;
    for (id key; !stop && (key = keys->nextObject());)
        visitor(key, objectForKey(key), stop);
}

bool NSDictionary::isEqualToDictionary(const Ref<NSDictionary> &other) const {
    if (!other || other->count() != count())
        return false;
    bool equal = true;
    enumerateKeysAndObjectsUsingBlock([&](const id &key, const id &value, bool &stop) {
        const id theirs = other->objectForKey(key);
        equal = theirs && (theirs == value || value->isEqual(theirs));
        stop = !equal;
    });
    return equal;
}

bool NSDictionary::isEqual(const id &other) const {
    return other.get() == this || isEqualToDictionary(as<NSDictionary>(other));
}

Ref<NSString> NSDictionary::descriptionWithIndent(NSUInteger indent) const {
    std::vector<std::pair<id, id>> entries;
    bool allText = true;
    enumerateKeysAndObjectsUsingBlock([&](const id &key, const id &value, bool &) {
        entries.emplace_back(key, value);
        allText = allText && as<NSString>(key);
    });
    if (allText)
        std::sort(entries.begin(), entries.end(), [](const auto &a, const auto &b) {
            return as<NSString>(a.first)->units() < as<NSString>(b.first)->units();
        });
    const std::u16string blanks(4 * indent, u' ');
    std::u16string text = u"{\n";
    for (const auto &[key, value] : entries)
        text += blanks + u"    " + collectionElementDescription(key, indent + 1) + u" = " +
                collectionElementDescription(value, indent + 1) + u";\n";
    return make<NSString>(text + blanks + u"}");
}

id NSDictionary::mutableCopy() const {
    return make<PlainMutableDictionary>(tableOf(*this));
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithCapacity(NSUInteger capacity) {
    return make<PlainMutableDictionary>(ObjectTable(capacity));
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithDictionary(const Ref<NSDictionary> &dictionary) {
    return dictionary ? as<NSMutableDictionary>(dictionary->mutableCopy())
                      : NSMutableDictionary::dictionary();
}

void NSMutableDictionary::removeAllObjects() {
    for (const id &key : *allKeys())
        removeObjectForKey(key);
}

void NSMutableDictionary::addEntriesFromDictionary(const Ref<NSDictionary> &dictionary) {
    if (dictionary)
        dictionary->enumerateKeysAndObjectsUsingBlock(
            [&](const id &key, const id &value, bool &) { setObject(value, key); });
}

void NSMutableDictionary::setDictionary(const Ref<NSDictionary> &dictionary) {
    const auto entries = NSDictionary::dictionaryWithDictionary(dictionary);
    removeAllObjects();
    addEntriesFromDictionary(entries);
}

id NSMutableDictionary::copy() const {
    return make<PlainDictionary>(tableOf(*this));
}
