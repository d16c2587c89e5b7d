#include "Platform/Foundation/Collections/NSSet.h"

#include "Platform/Foundation/Collections/CollectionArguments.h"
#include "Platform/Foundation/Collections/CollectionDescription.h"
#include "Platform/Foundation/Collections/CollectionEquality.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/ObjectTable.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/Raise.h"

NS_IMPLEMENTATION(NSSet) {
    cls.instantiate([]() -> id { return set(); })
        .method<&NSSet::count>("count")
        .method<&NSSet::member>("member:")
        .method<&NSSet::objectEnumerator>("objectEnumerator");
}

NS_IMPLEMENTATION(NSMutableSet) {
    cls.instantiate([]() -> id { return set(); })
        .method<&NSMutableSet::addObject>("addObject:")
        .method<&NSMutableSet::removeObject>("removeObject:");
}

namespace {

/// False, and nothing changes, when there is an equal element.
bool checkedAdd(ObjectTable &table, const id &object) {
    runtime::checkObject("NSSet addObject:", object);
    return table.add(object, object);
}

/// The common base of both ordinary sets.
template <class Base>
class PlainSetOf : public Base {
public:
    explicit PlainSetOf(ObjectTable table) : table_(std::move(table)) {}

    NSUInteger count() const override { return table_.count(); }
    id member(const id &object) const override {
        const id *found = table_.find(object);
        return found ? *found : nullptr;
    }
    Ref<NSEnumerator> objectEnumerator() const override {
        return make<NSEnumerator>(
            [keep = this->self(), this, position = NSUInteger{0}]() mutable -> id {
                const ObjectTable::Entry *entry = table_.next(position);
                return entry ? entry->key : nullptr;
            },
            NSMutationWatch(&mutations_));
    }
    NSUInteger countByEnumeratingWithState(NSFastEnumerationState &state, id *objects,
                                           NSUInteger count) const override {
        state.watch(mutations_);
        return table_.keys(state.state, objects, count);
    }

protected:
    ObjectTable table_;
    NSMutationCount mutations_;
};

using PlainSet = PlainSetOf<NSSet>;

class PlainMutableSet final : public PlainSetOf<NSMutableSet> {
public:
    using PlainSetOf::PlainSetOf;

    void addObject(const id &object) override {
        if (checkedAdd(table_, object))
            mutations_.increase();
    }
    void removeObject(const id &object) override {
        if (table_.remove(object))
            mutations_.increase();
    }
    void removeAllObjects() override {
        mutations_.increase();
        const ObjectTable released = std::exchange(table_, ObjectTable());
    }
};

ObjectTable tableOf(const auto &objects) {
    ObjectTable table;
    for (const id &object : objects)
        checkedAdd(table, object);
    return table;
}

} // namespace

Ref<NSSet> NSSet::set() {
    static const auto &empty = *new Ref<NSSet>(make<PlainSet>(ObjectTable()));
    return empty;
}

Ref<NSSet> NSSet::setWithObjects(std::initializer_list<id> objects) {
    return make<PlainSet>(tableOf(objects));
}

Ref<NSSet> NSSet::setWithArray(const Ref<NSArray> &array) {
    return make<PlainSet>(tableOf(collections::objectsOf(array)));
}

Ref<NSSet> NSSet::setWithSet(const Ref<NSSet> &set) {
    return make<PlainSet>(tableOf(set));
}

Ref<NSArray> NSSet::allObjects() const {
    std::vector<id> objects;
    objects.reserve(count());
    for (const id &object : *this)
        objects.push_back(object);
    return NSArray::arrayWithObjects(std::move(objects));
}

void NSSet::enumerateObjectsUsingBlock(const Visitor &visitor) const {
    runtime::checkBlock("NSSet enumerateObjectsUsingBlock:", visitor);
    bool stop = false;
    const auto objects = objectEnumerator();
    for (id object; !stop && (object = objects->nextObject());)
        visitor(object, stop);
}

Ref<NSSet> NSSet::objectsPassingTest(const Test &test) const {
    runtime::checkBlock("NSSet objectsPassingTest:", test);
    ObjectTable passed;
    enumerateObjectsUsingBlock([&](const id &object, bool &stop) {
        if (test(object, stop))
            passed.add(object, object);
    });
    return make<PlainSet>(std::move(passed));
}

NSUInteger NSSet::countByEnumeratingWithState(NSFastEnumerationState &state, id *objects,
                                              NSUInteger count) const {
    if (!state.extra)
        state.extra = objectEnumerator();
    return as<NSEnumerator>(state.extra)->countByEnumeratingWithState(state, objects, count);
}

bool NSSet::isSubsetOfSet(const Ref<NSSet> &other) const {
    bool subset = true;
    enumerateObjectsUsingBlock([&](const id &object, bool &stop) {
        subset = other && other->containsObject(object);
        stop = !subset;
    });
    return subset;
}

bool NSSet::intersectsSet(const Ref<NSSet> &other) const {
    bool met = false;
    enumerateObjectsUsingBlock([&](const id &object, bool &stop) {
        met = other && other->containsObject(object);
        stop = met;
    });
    return met;
}

Ref<NSSet> NSSet::setByAddingObject(const id &object) const {
    auto table = tableOf(*this);
    checkedAdd(table, object);
    return make<PlainSet>(std::move(table));
}

bool NSSet::isEqualToSet(const Ref<NSSet> &other) const {
    return other && other->count() == count() &&
           collections::areEqual(*this, *other, [&] { return isSubsetOfSet(other); });
}

bool NSSet::isEqual(const id &other) const {
    return other.get() == this || isEqualToSet(as<NSSet>(other));
}

Ref<NSString> NSSet::descriptionWithLocale(const id &locale, NSUInteger indent) const {
    return collectionDescription(*this, [&] {
        const std::u16string blanks = indentation(indent);
        std::u16string text = u"{(";
        for (const id &object : *this) {
            text += (text.size() > 2 ? u",\n" : u"\n") + blanks + u"    ";
            if (DescriptionLength::isUsedUp()) {
                text += DescriptionLength::rest;
                break;
            }
            text += collectionElementDescription(object, locale, indent + 1);
        }
        text += u"\n" + blanks + u")}";
        return make<NSString>(std::move(text));
    });
}

id NSSet::mutableCopy() const {
    return make<PlainMutableSet>(tableOf(*this));
}

Ref<NSMutableSet> NSMutableSet::set() {
    return make<PlainMutableSet>(ObjectTable());
}

Ref<NSMutableSet> NSMutableSet::setWithArray(const Ref<NSArray> &array) {
    return make<PlainMutableSet>(tableOf(collections::objectsOf(array)));
}

Ref<NSMutableSet> NSMutableSet::setWithSet(const Ref<NSSet> &set) {
    return make<PlainMutableSet>(tableOf(set));
}

void NSMutableSet::removeAllObjects() {
    for (const id &object : allObjects())
        removeObject(object);
}

void NSMutableSet::addObjectsFromArray(const Ref<NSArray> &array) {
    for (const id &object : collections::objectsOf(array))
        addObject(object);
}

void NSMutableSet::unionSet(const Ref<NSSet> &other) {
    addObjectsFromArray(other ? other->allObjects() : nullptr);
}

void NSMutableSet::minusSet(const Ref<NSSet> &other) {
    for (const id &object : other ? other->allObjects() : nullptr)
        removeObject(object);
}

void NSMutableSet::intersectSet(const Ref<NSSet> &other) {
    for (const id &object : allObjects())
        if (!other || !other->containsObject(object))
            removeObject(object);
}

void NSMutableSet::setSet(const Ref<NSSet> &other) {
    const auto objects = other ? other->allObjects() : nullptr; // a copy: the other may be this set
    removeAllObjects();
    addObjectsFromArray(objects);
}
