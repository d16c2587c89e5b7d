#include "Platform/Foundation/Collections/NSArray.h"

#include "Platform/Foundation/Collections/CollectionArguments.h"
#include "Platform/Foundation/Collections/CollectionDescription.h"
#include "Platform/Foundation/Collections/CollectionEnds.h"
#include "Platform/Foundation/Collections/CollectionEquality.h"
#include "Platform/Foundation/Collections/NSIndexSet.h"
#include "Platform/Foundation/Data/CapacityHint.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/Raise.h"

using namespace collections;

NS_IMPLEMENTATION(NSArray) {
    cls.instantiate([]() -> id { return array(); })
        .method<&NSArray::count>("count")
        .method<&NSArray::objectAtIndex>("objectAtIndex:")
        .method<&NSArray::firstObject>("firstObject")
        .method<&NSArray::lastObject>("lastObject")
        .method<&NSArray::containsObject>("containsObject:")
        .method<&NSArray::objectEnumerator>("objectEnumerator")
        .method<&NSArray::isEqualToArray>("isEqualToArray:");
}

NS_IMPLEMENTATION(NSMutableArray) {
    cls.instantiate([]() -> id { return array(); })
        .method<&NSMutableArray::addObject>("addObject:")
        .method<&NSMutableArray::insertObject>("insertObject:atIndex:")
        .method<&NSMutableArray::removeObjectAtIndex>("removeObjectAtIndex:")
        .method<&NSMutableArray::removeLastObject>("removeLastObject")
        .method<&NSMutableArray::replaceObjectAtIndex>("replaceObjectAtIndex:withObject:")
        .method<&NSMutableArray::removeAllObjects>("removeAllObjects")
        .method<&NSMutableArray::addObjectsFromArray>("addObjectsFromArray:")
        .method<&NSMutableArray::setArray>("setArray:");
}

namespace {

std::vector<id> checked(const char *operation, std::vector<id> objects) {
    for (const id &object : objects)
        runtime::checkObject(operation, object);
    return objects;
}

void keep(std::vector<id> &kept, id &element) {
    kept.push_back(std::move(element));
}

/// The ordinary immutable array.
class PlainArray final : public NSArray {
public:
    explicit PlainArray(std::vector<id> objects) : objects_(std::move(objects)) {}
    ~PlainArray() override { Ends::letGo(objects_, keep); }

    NSUInteger count() const override { return objects_.size(); }
    std::optional<std::span<const id>> elements() const override { return objects_; }
    const NSMutationCount *mutations() const override {
        static const NSMutationCount none;
        return &none;
    }
    id objectAtIndex(NSUInteger index) const override {
        runtime::checkIndex("NSArray objectAtIndex:", index, objects_.size());
        return objects_[index];
    }

private:
    std::vector<id> objects_; ///< changed only by the destructor
};

/// The ordinary mutable array. What leaves it outlives the change: its end may look at the array. A change
/// moves what stands before it or what stands behind it, whichever is less: empty places at the front are
/// made for half as many objects again as there are, and given up once they are half of all.
class PlainMutableArray final : public NSMutableArray {
public:
    explicit PlainMutableArray(std::vector<id> objects) : objects_(std::move(objects)) {}
    ~PlainMutableArray() override { Ends::letGo(objects_, keep); }

    NSUInteger count() const override { return objects_.size() - drained_; }
    std::optional<std::span<const id>> elements() const override {
        return std::span(objects_).subspan(drained_);
    }
    const NSMutationCount *mutations() const override { return &mutations_; }
    id objectAtIndex(NSUInteger index) const override {
        runtime::checkIndex("NSArray objectAtIndex:", index, count());
        return objects_[drained_ + index];
    }
    NSUInteger countByEnumeratingWithState(NSFastEnumerationState &state, id *objects,
                                           NSUInteger count) const override {
        state.watch(mutations_);
        return NSMutableArray::countByEnumeratingWithState(state, objects, count);
    }
    void addObject(const id &object) override {
        runtime::checkObject("NSMutableArray addObject:", object);
        objects_.push_back(object);
        mutations_.increase();
    }
    void insertObject(const id &object, NSUInteger index) override {
        runtime::checkObject("NSMutableArray insertObject:atIndex:", object);
        runtime::checkIndex("NSMutableArray insertObject:atIndex:", index, count() + 1);
        id kept = object;
        openUp(index, 1);
        *at(index) = std::move(kept);
        mutations_.increase();
    }
    void removeObjectAtIndex(NSUInteger index) override {
        runtime::checkIndex("NSMutableArray removeObjectAtIndex:", index, count());
        mutations_.increase();
        const id released = std::move(*at(index));
        if (index + 1 == count())
            objects_.pop_back();
        else
            closeUp(index, 1);
    }
    void removeLastObject() override {
        if (count() > 0)
            removeObjectAtIndex(count() - 1);
    }
    void replaceObjectAtIndex(NSUInteger index, const id &object) override {
        runtime::checkObject("NSMutableArray replaceObjectAtIndex:withObject:", object);
        runtime::checkIndex("NSMutableArray replaceObjectAtIndex:withObject:", index, count());
        mutations_.increase();
        const id released = std::exchange(*at(index), object);
    }
    void removeAllObjects() override {
        mutations_.increase();
        const auto released = std::exchange(objects_, {});
        drained_ = 0;
    }
    using NSMutableArray::replaceObjectsInRange;
    void replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects) override {
        runtime::checkRange("NSMutableArray replaceObjectsInRange:withObjectsFromArray:", range, count());
        const auto replacements = objectsOf(objects);
        if (range.length == 0 && replacements.empty())
            return;
        mutations_.increase();
        if (replacements.size() > range.length)
            openUp(range.end(), replacements.size() - range.length);
        const auto released = taken(range);
        std::ranges::copy(replacements, at(range.location));
        if (replacements.size() < range.length)
            closeUp(range.location + replacements.size(), range.length - replacements.size());
    }

protected:
    void insertObjectsAt(std::span<const id> objects, std::span<const NSUInteger> places) override {
        if (places.empty())
            return;
        mutations_.increase();
        if (areNeighbours(places)) {
            openUp(places.front(), places.size());
            std::ranges::copy(objects, at(places.front()));
            return;
        }
        std::vector<id> all;
        all.reserve(count() + objects.size());
        auto next = places.begin();
        for (NSUInteger i = 0, kept = 0; i < count() + objects.size(); ++i)
            if (next != places.end() && *next == i)
                all.push_back(objects[static_cast<NSUInteger>(next++ - places.begin())]);
            else
                all.push_back(std::move(*at(kept++)));
        objects_ = std::move(all);
        drained_ = 0;
    }
    void removeObjectsAt(std::span<const NSUInteger> places) override {
        if (places.empty())
            return;
        mutations_.increase();
        if (areNeighbours(places)) {
            const auto released = taken({places.front(), places.size()});
            closeUp(places.front(), places.size());
            return;
        }
        std::vector<id> left, released;
        left.reserve(count());
        released.reserve(places.size());
        auto next = places.begin();
        for (NSUInteger i = 0; i < count(); ++i) {
            const bool goes = next != places.end() && *next == i;
            (goes ? released : left).push_back(std::move(*at(i)));
            next += goes;
        }
        objects_ = std::move(left);
        drained_ = 0;
    }

private:
    static bool areNeighbours(std::span<const NSUInteger> places) {
        return places.back() - places.front() + 1 == places.size();
    }

    std::vector<id>::iterator at(NSUInteger index) {
        return objects_.begin() + static_cast<std::ptrdiff_t>(drained_ + index);
    }
    std::vector<id> taken(NSRange range) {
        return {std::make_move_iterator(at(range.location)), std::make_move_iterator(at(range.end()))};
    }
    /// Makes empty places at an index.
    void openUp(NSUInteger index, NSUInteger places) {
        if (2 * index >= count()) {
            objects_.insert(at(index), places, nullptr);
            return;
        }
        if (drained_ < places) {
            const NSUInteger more = std::max(places, count() / 2 + 1);
            objects_.insert(objects_.begin(), more, nullptr);
            drained_ += more;
        }
        std::move(at(0), at(index), at(0) - static_cast<std::ptrdiff_t>(places));
        drained_ -= places;
    }
    /// Gives up empty places at an index.
    void closeUp(NSUInteger index, NSUInteger places) {
        if (2 * index + places > count()) {
            objects_.erase(at(index), at(index + places));
            return;
        }
        std::move_backward(at(0), at(index), at(index + places));
        drained_ += places;
        if (2 * drained_ >= objects_.size()) {
            objects_.erase(objects_.begin(), at(0));
            drained_ = 0;
        }
    }

    std::vector<id> objects_; ///< with empty places at the front
    NSUInteger drained_ = 0;  ///< the number of empty places
    NSMutationCount mutations_;
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
    return make<PlainArray>(checked("NSArray initWithObjects:count:", std::move(objects)));
}

Ref<NSArray> NSArray::arrayWithArray(const Ref<NSArray> &array) {
    return make<PlainArray>(objectsOf(array));
}

std::vector<id> NSArray::getObjects(NSRange range) const {
    runtime::checkRange("NSArray getObjects:range:", range, count());
    std::vector<id> objects;
    objects.reserve(range.length);
    for (NSUInteger i = range.location; i < range.end(); ++i)
        objects.push_back(objectAtIndex(i));
    return objects;
}

Ref<NSArray> NSArray::objectsAtIndexes(const Ref<NSIndexSet> &indexes) const {
    std::vector<id> objects;
    enumerateObjectsAtIndexes(indexes, 0,
                              [&](const id &object, NSUInteger, bool &) { objects.push_back(object); });
    return make<PlainArray>(std::move(objects));
}

id NSArray::lastObject() const {
    const NSUInteger size = count();
    return size ? objectAtIndex(size - 1) : nullptr;
}

NSUInteger NSArray::indexOfObject(const id &object) const {
    for (NSUInteger i = 0; object && i < count(); ++i)
        if (equal(objectAtIndex(i), object))
            return i;
    return NSNotFound;
}

NSUInteger NSArray::indexOfObject(const id &object, NSRange range) const {
    runtime::checkRange("NSArray indexOfObject:inRange:", range, count());
    for (NSUInteger i = range.location; object && i < range.end(); ++i)
        if (equal(objectAtIndex(i), object))
            return i;
    return NSNotFound;
}

NSUInteger NSArray::indexOfObjectIdenticalTo(const id &object) const {
    for (NSUInteger i = 0; object && i < count(); ++i)
        if (objectAtIndex(i) == object)
            return i;
    return NSNotFound;
}

NSUInteger NSArray::indexOfObjectIdenticalTo(const id &object, NSRange range) const {
    runtime::checkRange("NSArray indexOfObjectIdenticalTo:inRange:", range, count());
    for (NSUInteger i = range.location; object && i < range.end(); ++i)
        if (objectAtIndex(i) == object)
            return i;
    return NSNotFound;
}

id NSArray::firstObjectCommonWithArray(const Ref<NSArray> &other) const {
    for (const id &object : *this)
        if (other && other->containsObject(object))
            return object;
    return nullptr;
}

Ref<NSArray> NSArray::arrayByAddingObject(const id &object) const {
    auto objects = allObjects();
    objects.push_back(object);
    return make<PlainArray>(checked("NSArray arrayByAddingObject:", std::move(objects)));
}

Ref<NSArray> NSArray::arrayByAddingObjectsFromArray(const Ref<NSArray> &other) const {
    auto objects = allObjects();
    const auto more = objectsOf(other);
    objects.insert(objects.end(), more.begin(), more.end());
    return make<PlainArray>(std::move(objects));
}

Ref<NSArray> NSArray::subarrayWithRange(NSRange range) const {
    return make<PlainArray>(getObjects(range));
}

Ref<NSString> NSArray::componentsJoinedByString(const Ref<NSString> &separator) const {
    std::u16string joined;
    enumerateObjectsUsingBlock([&](const id &object, NSUInteger index, bool &) {
        if (index && separator)
            joined += separator->units();
        joined += descriptionOf(*object)->units();
    });
    return make<NSString>(std::move(joined));
}

bool NSArray::isEqualToArray(const Ref<NSArray> &other) const {
    return other && areEqual(*this, *other);
}

bool NSArray::isEqual(const id &other) const {
    return other.get() == this || isEqualToArray(as<NSArray>(other));
}

Ref<NSString> NSArray::descriptionWithLocale(const id &locale, NSUInteger indent) const {
    return collectionDescription(*this, [&] {
        const std::u16string blanks = indentation(indent);
        std::u16string text = u"(";
        enumerateObjectsUsingBlock([&](const id &object, NSUInteger index, bool &stop) {
            text += (index ? u",\n" : u"\n") + blanks + u"    ";
            stop = DescriptionLength::isUsedUp();
            text += stop ? DescriptionLength::rest : collectionElementDescription(object, locale, indent + 1);
        });
        text += u"\n" + blanks + u")";
        return make<NSString>(std::move(text));
    });
}

void NSArray::performAtomically(const std::function<void(NSArray &contents)> &operation) {
    runtime::checkBlock("NSArray performAtomically:", operation);
    operation(*this);
}

id NSArray::mutableCopy() const {
    return make<PlainMutableArray>(allObjects());
}

Ref<NSMutableArray> NSMutableArray::arrayWithCapacity(NSUInteger capacity) {
    std::vector<id> objects;
    objects.reserve(reservedFor(capacity));
    return make<PlainMutableArray>(std::move(objects));
}

Ref<NSMutableArray> NSMutableArray::arrayWithObjects(std::initializer_list<id> objects) {
    return arrayWithObjects(std::vector<id>(objects));
}

Ref<NSMutableArray> NSMutableArray::arrayWithObjects(std::vector<id> objects) {
    return make<PlainMutableArray>(checked("NSMutableArray initWithObjects:count:", std::move(objects)));
}

Ref<NSMutableArray> NSMutableArray::arrayWithArray(const Ref<NSArray> &array) {
    return make<PlainMutableArray>(objectsOf(array));
}
