#include "Platform/Foundation/Collections/NSDictionary.h"

#include "Platform/Foundation/Collections/CollectionArguments.h"
#include "Platform/Foundation/Collections/CollectionDescription.h"
#include "Platform/Foundation/Collections/CollectionEquality.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/ObjectTable.h"
#include "Platform/Foundation/Data/CapacityHint.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/Raise.h"

#include <algorithm>

using namespace collections;

NS_IMPLEMENTATION(NSDictionary) {
    cls.instantiate([]() -> id { return dictionary(); })
        .method<&NSDictionary::count>("count")
        .method<&NSDictionary::objectForKey>("objectForKey:")
        .method<&NSDictionary::allKeys>("allKeys")
        .method<&NSDictionary::allValues>("allValues")
        .method<&NSDictionary::keyEnumerator>("keyEnumerator")
        .method<&NSDictionary::objectEnumerator>("objectEnumerator")
        .method<&NSDictionary::isEqualToDictionary>("isEqualToDictionary:");
}

NS_IMPLEMENTATION(NSMutableDictionary) {
    cls.instantiate([]() -> id { return dictionary(); })
        .method<&NSMutableDictionary::setObject>("setObject:forKey:")
        .method<&NSMutableDictionary::removeObjectForKey>("removeObjectForKey:")
        .method<&NSMutableDictionary::removeAllObjects>("removeAllObjects")
        .method<&NSMutableDictionary::addEntriesFromDictionary>("addEntriesFromDictionary:")
        .method<&NSMutableDictionary::setDictionary>("setDictionary:");
}

namespace {

/// False when only the value of an equal key was replaced.
bool checkedSet(ObjectTable &table, const id &key, const id &value) {
    runtime::checkArgument("NSDictionary setObject:forKey:", key != nullptr, "key cannot be nil");
    runtime::checkObject("NSDictionary setObject:forKey:", value);
    return table.set(key->copy(), value);
}

/// The common base of both ordinary dictionaries.
template <class Base>
class PlainDictionaryOf : public Base {
public:
    explicit PlainDictionaryOf(ObjectTable table) : table_(std::move(table)) {}

    NSUInteger count() const override { return table_.count(); }
    const ObjectTable *table() const override { return &table_; }
    const NSMutationCount *mutations() const override { return &mutations_; }
    id objectForKey(const id &key) const override {
        const id *value = table_.find(key);
        return value ? *value : nullptr;
    }
    Ref<NSEnumerator> keyEnumerator() const override {
        return make<NSEnumerator>(
            [keep = this->self(), this, position = NSUInteger{0}]() mutable -> id {
                const ObjectTable::Entry *entry = table_.next(position);
                return entry ? entry->key : nullptr;
            },
            NSMutationWatch(&mutations_));
    }
    void enumerateKeysAndObjectsUsingBlock(const NSDictionary::Visitor &visitor) const override {
        runtime::checkBlock("NSDictionary enumerateKeysAndObjectsUsingBlock:", visitor);
        const id keep = this->self(); // the visitor may release it
        const NSMutationWatch changes(&mutations_);
        NSUInteger position = 0;
        bool stop = false;
        while (const ObjectTable::Entry *entry = table_.next(position)) {
            const id key = entry->key, value = entry->value; // the visitor may change the table
            visitor(key, value, stop);
            if (stop)
                return;
            changes.check();
        }
    }

    NSUInteger countByEnumeratingWithState(NSFastEnumerationState &state, id *keys,
                                           NSUInteger count) const override {
        state.watch(mutations_);
        return table_.keys(state.state, keys, count);
    }

protected:
    ObjectTable table_;
    NSMutationCount mutations_;
};

using PlainDictionary = PlainDictionaryOf<NSDictionary>;

class PlainMutableDictionary final : public PlainDictionaryOf<NSMutableDictionary> {
public:
    using PlainDictionaryOf::PlainDictionaryOf;

    void setObject(const id &object, const id &key) override {
        if (checkedSet(table_, key, object))
            mutations_.increase();
    }
    void removeObjectForKey(const id &key) override {
        if (table_.remove(key))
            mutations_.increase();
    }
    void removeAllObjects() override {
        mutations_.increase();
        const ObjectTable released = std::exchange(table_, ObjectTable());
    }
};

ObjectTable tableOf(const NSDictionary &dictionary, bool copyItems = false) {
    ObjectTable table(dictionary.count());
    for (const auto &[key, value] : dictionary.allEntries())
        table.set(key, copyItems ? value->copy() : value);
    return table;
}

ObjectTable tableOf(const id *objects, const id *keys, NSUInteger count) {
    runtime::checkCount("NSDictionary initWithObjects:forKeys:count:", count);
    ObjectTable table(count);
    for (NSUInteger i = 0; i < count; ++i)
        checkedSet(table, keys[i], objects[i]);
    return table;
}

ObjectTable tableOf(const Ref<NSArray> &objects, const Ref<NSArray> &keys) {
    const auto values = objectsOf(objects), names = objectsOf(keys);
    runtime::checkArgument("NSDictionary initWithObjects:forKeys:", values.size() == names.size(),
                           "as many objects as keys are needed");
    return tableOf(values.data(), names.data(), names.size());
}

/// Sorted by key when every key is a text.
std::vector<std::pair<id, id>> entriesToDescribe(const NSDictionary &dictionary) {
    auto entries = dictionary.allEntries();
    if (std::all_of(entries.begin(), entries.end(),
                    [](const auto &entry) { return as<NSString>(entry.first); }))
        std::sort(entries.begin(), entries.end(), [](const auto &a, const auto &b) {
            return as<NSString>(a.first)->units() < as<NSString>(b.first)->units();
        });
    return entries;
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

Ref<NSDictionary> NSDictionary::dictionaryWithTable(ObjectTable table) {
    return make<PlainDictionary>(std::move(table));
}

Ref<NSDictionary> NSDictionary::dictionaryWithDictionary(const Ref<NSDictionary> &dictionary) {
    return dictionary ? make<PlainDictionary>(tableOf(*dictionary)) : NSDictionary::dictionary();
}

Ref<NSDictionary> NSDictionary::dictionaryWithObjects(const Ref<NSArray> &objects, const Ref<NSArray> &keys) {
    return make<PlainDictionary>(tableOf(objects, keys));
}

std::vector<std::pair<id, id>> NSDictionary::allEntries() const {
    std::vector<std::pair<id, id>> entries;
    entries.reserve(count());
    enumerateKeysAndObjectsUsingBlock(
        [&](const id &key, const id &value, bool &) { entries.emplace_back(key, value); });
    return entries;
}

Ref<NSArray> NSDictionary::allKeys() const {
    std::vector<id> keys;
    for (const auto &[key, value] : allEntries())
        keys.push_back(key);
    return NSArray::arrayWithObjects(std::move(keys));
}

Ref<NSArray> NSDictionary::allValues() const {
    std::vector<id> values;
    for (const auto &[key, value] : allEntries())
        values.push_back(value);
    return NSArray::arrayWithObjects(std::move(values));
}

Ref<NSArray> NSDictionary::allKeysForObject(const id &object) const {
    std::vector<id> keys;
    for (const auto &[key, value] : allEntries())
        if (equal(value, object))
            keys.push_back(key);
    return NSArray::arrayWithObjects(std::move(keys));
}

Ref<NSArray> NSDictionary::objectsForKeys(const Ref<NSArray> &keys, const id &notFoundMarker) const {
    std::vector<id> objects;
    for (const id &key : objectsOf(keys)) {
        const id object = objectForKey(key);
        objects.push_back(object ? object : notFoundMarker);
    }
    return NSArray::arrayWithObjects(std::move(objects));
}

void NSDictionary::getObjects(id *objects, id *keys, NSUInteger count) const {
    NSUInteger copied = 0;
    enumerateKeysAndObjectsUsingBlock([&](const id &key, const id &value, bool &stop) {
        stop = copied == count;
        if (stop)
            return;
        if (objects)
            objects[copied] = value;
        if (keys)
            keys[copied] = key;
        ++copied;
    });
}

bool NSDictionary::isEqualToDictionary(const Ref<NSDictionary> &other) const {
    return other && areEqual(*this, *other);
}

bool NSDictionary::isEqual(const id &other) const {
    return other.get() == this || isEqualToDictionary(as<NSDictionary>(other));
}

Ref<NSString> NSDictionary::descriptionWithLocale(const id &locale, NSUInteger indent) const {
    return collectionDescription(*this, [&] {
        const std::u16string blanks = indentation(indent);
        std::u16string text = u"{\n";
        for (const auto &[key, value] : entriesToDescribe(*this)) {
            if (DescriptionLength::isUsedUp()) {
                (text += blanks + u"    ") += std::u16string(DescriptionLength::rest) + u"\n";
                break;
            }
            text += blanks + u"    " + collectionElementDescription(key, locale, indent + 1) + u" = " +
                    collectionElementDescription(value, locale, indent + 1) + u";\n";
        }
        text += blanks + u"}";
        return make<NSString>(std::move(text));
    });
}

Ref<NSString> NSDictionary::descriptionInStringsFileFormat() const {
    std::u16string text;
    for (const auto &[key, value] : entriesToDescribe(*this))
        text += quotedDescription(descriptionOf(*key)->units()) + u" = " +
                quotedDescription(descriptionOf(*value)->units()) + u";\n";
    return make<NSString>(std::move(text));
}

void NSDictionary::performAtomically(const std::function<void(NSDictionary &contents)> &operation) {
    runtime::checkBlock("NSDictionary performAtomically:", operation);
    operation(*this);
}

id NSDictionary::mutableCopy() const {
    return make<PlainMutableDictionary>(tableOf(*this));
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithCapacity(NSUInteger capacity) {
    return make<PlainMutableDictionary>(ObjectTable(reservedFor(capacity)));
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithTable(ObjectTable table) {
    return make<PlainMutableDictionary>(std::move(table));
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithDictionary(const Ref<NSDictionary> &dictionary,
                                                                       bool copyItems) {
    return make<PlainMutableDictionary>(dictionary ? tableOf(*dictionary, copyItems) : ObjectTable());
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithObjects(const Ref<NSArray> &objects,
                                                                    const Ref<NSArray> &keys) {
    return make<PlainMutableDictionary>(tableOf(objects, keys));
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithObjects(const id *objects, const id *keys,
                                                                    NSUInteger count) {
    return make<PlainMutableDictionary>(tableOf(objects, keys, count));
}

void NSMutableDictionary::setObjectForKeyedSubscript(const id &object, const id &key) {
    if (object)
        setObject(object, key);
    else
        removeObjectForKey(key);
}

void NSMutableDictionary::removeAllObjects() {
    removeObjectsForKeys(allKeys());
}

void NSMutableDictionary::removeObjectsForKeys(const Ref<NSArray> &keys) {
    for (const id &key : objectsOf(keys))
        removeObjectForKey(key);
}

void NSMutableDictionary::addEntriesFromDictionary(const Ref<NSDictionary> &dictionary) {
    if (dictionary)
        for (const auto &[key, value] : dictionary->allEntries())
            setObject(value, key);
}

void NSMutableDictionary::setDictionary(const Ref<NSDictionary> &dictionary) {
    const auto entries = NSDictionary::dictionaryWithDictionary(dictionary);
    removeAllObjects();
    addEntriesFromDictionary(entries);
}

id NSMutableDictionary::copy() const {
    return make<PlainDictionary>(tableOf(*this));
}

id NSDictionary::valueForKey(const Ref<NSString> &key) const {
    return objectForKey(key);
}

void NSMutableDictionary::setValue(const id &value, const Ref<NSString> &forKey) {
    setObjectForKeyedSubscript(value, forKey);
}
