#include "Platform/Foundation/NSArray.h"

#include "Platform/Foundation/CollectionDescription.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Runtime/Class.h"
#include "Platform/Runtime/NSException.h"

#include <algorithm>

NS_IMPLEMENTATION(NSArray) {
    cls.instantiate([]() -> id { return array(); })
        .method<&NSArray::count>("count")
        .method<&NSArray::objectAtIndex>("objectAtIndex:");
}

NS_IMPLEMENTATION(NSMutableArray) {
    cls.instantiate([]() -> id { return array(); }).method<&NSMutableArray::addObject>("addObject:");
}

namespace {

void checkIndex(const char *operation, NSUInteger index, NSUInteger bound) {
    if (index >= bound)
        throw NSException(NSRangeException, std::string("-[NSArray ") + operation + "]: index " +
                                                std::to_string(index) + " beyond bounds; count " +
                                                std::to_string(bound));
}

void checkRange(const char *operation, NSRange range, NSUInteger count) {
    if (!range.fits(count))
        throw NSException(NSRangeException, std::string("-[NSArray ") + operation + "]: range {" +
                                                std::to_string(range.location) + ", " +
                                                std::to_string(range.length) + "} extends beyond count " +
                                                std::to_string(count));
}

void checkObject(const char *operation, const id &object) {
    if (!object)
        throw NSException(NSInvalidArgumentException,
                          std::string("-[NSArray ") + operation + "]: object cannot be nil");
}

std::vector<id> checked(const char *operation, std::vector<id> objects) {
    for (const id &object : objects)
        checkObject(operation, object);
    return objects;
}

/// The ordinary immutable array.
class PlainArray final : public NSArray {
public:
    explicit PlainArray(std::vector<id> objects) : objects_(std::move(objects)) {}

    NSUInteger count() const override { return objects_.size(); }
    id objectAtIndex(NSUInteger index) const override {
        checkIndex("objectAtIndex:", index, objects_.size());
        return objects_[index];
    }

private:
    const std::vector<id> objects_;
};

/// The ordinary mutable array.
class PlainMutableArray final : public NSMutableArray {
public:
    explicit PlainMutableArray(std::vector<id> objects) : objects_(std::move(objects)) {}

    NSUInteger count() const override { return objects_.size(); }
    id objectAtIndex(NSUInteger index) const override {
        checkIndex("objectAtIndex:", index, objects_.size());
        return objects_[index];
    }
    void addObject(const id &object) override {
        checkObject("addObject:", object);
        objects_.push_back(object);
    }
    void insertObject(const id &object, NSUInteger index) override {
        checkObject("insertObject:atIndex:", object);
        checkIndex("insertObject:atIndex:", index, objects_.size() + 1);
        objects_.insert(at(index), object);
    }
    void removeObjectAtIndex(NSUInteger index) override {
        checkIndex("removeObjectAtIndex:", index, objects_.size());
        const id released = std::move(objects_[index]); // outlives the removal: its end may look at the array
        objects_.erase(at(index));
    }
    void removeLastObject() override {
        if (!objects_.empty())
            removeObjectAtIndex(objects_.size() - 1);
    }
    void replaceObjectAtIndex(NSUInteger index, const id &object) override {
        checkObject("replaceObjectAtIndex:withObject:", object);
        checkIndex("replaceObjectAtIndex:withObject:", index, objects_.size());
        const id released = std::exchange(objects_[index], object);
    }
    void removeAllObjects() override { const auto released = std::exchange(objects_, {}); }

private:
    std::vector<id>::iterator at(NSUInteger index) {
        return objects_.begin() + static_cast<std::ptrdiff_t>(index);
    }

    std::vector<id> objects_;
};

} // namespace

Ref<NSArray> NSArray::array() {
    static const auto &empty = *new Ref<NSArray>(make<PlainArray>(std::vector<id>()));
    return empty;
}

Ref<NSArray> NSArray::arrayWithObjects(std::initializer_list<id> objects) {
    return arrayWithObjects(std::vector<id>(objects));
}

Ref<NSArray> NSArray::arrayWithObjects(std::vector<id> objects) {
    return make<PlainArray>(checked("initWithObjects:count:", std::move(objects)));
}

Ref<NSArray> NSArray::arrayWithArray(const Ref<NSArray> &array) {
    return array ? make<PlainArray>(array->allObjects()) : NSArray::array();
}

std::vector<id> NSArray::getObjects(NSRange range) const {
    checkRange("getObjects:range:", range, count());
    std::vector<id> objects;
    objects.reserve(range.length);
    for (NSUInteger i = range.location; i < range.end(); ++i)
        objects.push_back(objectAtIndex(i));
    return objects;
}

id NSArray::lastObject() const {
    const NSUInteger size = count();
    return size ? objectAtIndex(size - 1) : nullptr;
}

NSUInteger NSArray::indexOfObject(const id &object) const {
    for (NSUInteger i = 0; object && i < count(); ++i)
        if (const id element = objectAtIndex(i); element && (element == object || element->isEqual(object)))
            return i;
    return NSNotFound;
}

NSUInteger NSArray::indexOfObjectIdenticalTo(const id &object) const {
    for (NSUInteger i = 0; object && i < count(); ++i)
        if (objectAtIndex(i) == object)
            return i;
    return NSNotFound;
}

Ref<NSArray> NSArray::arrayByAddingObject(const id &object) const {
    auto objects = allObjects();
    objects.push_back(object);
    return make<PlainArray>(checked("arrayByAddingObject:", std::move(objects)));
}

Ref<NSArray> NSArray::subarrayWithRange(NSRange range) const {
    return make<PlainArray>(getObjects(range));
}

Ref<NSString> NSArray::componentsJoinedByString(const Ref<NSString> &separator) const {
    std::u16string joined;
    enumerateObjectsUsingBlock([&](const id &object, NSUInteger index, bool &) {
        if (index && separator)
            joined += separator->units();
        joined += object->description()->units();
    });
    return make<NSString>(std::move(joined));
}

Ref<NSEnumerator> NSArray::objectEnumerator() const {
    return make<NSEnumerator>([array = as<NSArray>(self()), index = NSUInteger{0}]() mutable -> id {
        return index < array->count() ? array->objectAtIndex(index++) : nullptr;
    });
}

Ref<NSEnumerator> NSArray::reverseObjectEnumerator() const {
    return make<NSEnumerator>([array = as<NSArray>(self()), index = count()]() mutable -> id {
        return index ? array->objectAtIndex(--index) : nullptr;
    });
}

void NSArray::enumerateObjectsUsingBlock(const Visitor &visitor) const {
    bool stop = false;
    for (NSUInteger i = 0; !stop && i < count(); ++i)
        if (const id object = objectAtIndex(i)) // a guarded array may have shrunk meanwhile
            visitor(object, i, stop);
}

bool NSArray::isEqualToArray(const Ref<NSArray> &other) const {
    const NSUInteger size = count();
    if (!other || other->count() != size)
        return false;
    for (NSUInteger i = 0; i < size; ++i)
        if (const id mine = objectAtIndex(i), theirs = other->objectAtIndex(i);
            !mine || (mine != theirs && !mine->isEqual(theirs)))
            return false;
    return true;
}

bool NSArray::isEqual(const id &other) const {
    return other.get() == this || isEqualToArray(as<NSArray>(other));
}

Ref<NSString> NSArray::descriptionWithIndent(NSUInteger indent) const {
    const std::u16string blanks(4 * indent, u' ');
    std::u16string text = u"(";
    enumerateObjectsUsingBlock([&](const id &object, NSUInteger index, bool &) {
        text +=
            (index ? u",\n" : u"\n") + blanks + u"    " + collectionElementDescription(object, indent + 1);
    });
    return make<NSString>(text + u"\n" + blanks + u")");
}

id NSArray::mutableCopy() const {
    return make<PlainMutableArray>(allObjects());
}

Ref<NSMutableArray> NSMutableArray::arrayWithCapacity(NSUInteger capacity) {
    std::vector<id> objects;
    objects.reserve(capacity);
    return make<PlainMutableArray>(std::move(objects));
}

Ref<NSMutableArray> NSMutableArray::arrayWithObjects(std::initializer_list<id> objects) {
    return make<PlainMutableArray>(checked("initWithObjects:count:", objects));
}

Ref<NSMutableArray> NSMutableArray::arrayWithArray(const Ref<NSArray> &array) {
    return array ? as<NSMutableArray>(array->mutableCopy()) : NSMutableArray::array();
}

void NSMutableArray::removeAllObjects() {
    for (NSUInteger left = count(); left; --left)
        removeLastObject();
}

void NSMutableArray::addObjectsFromArray(const Ref<NSArray> &array) {
    for (const id &object : array ? array->allObjects() : std::vector<id>())
        addObject(object);
}

void NSMutableArray::removeObject(const id &object) {
    for (NSUInteger i = count(); object && i-- > 0;)
        if (const id element = objectAtIndex(i); element && element->isEqual(object))
            removeObjectAtIndex(i);
}

void NSMutableArray::exchangeObjectAtIndex(NSUInteger first, NSUInteger second) {
    const id object = objectAtIndex(first);
    replaceObjectAtIndex(first, objectAtIndex(second));
    replaceObjectAtIndex(second, object);
}

void NSMutableArray::setArray(const Ref<NSArray> &array) {
    const auto objects = array ? array->allObjects() : std::vector<id>();
    removeAllObjects();
    for (const id &object : objects)
        addObject(object);
}
