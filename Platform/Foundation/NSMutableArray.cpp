// The writes of arrays, on top of the primitives.
#include "Platform/Foundation/CollectionArguments.h"
#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSIndexSet.h"

using namespace collections;

namespace {

/// Ascending.
std::vector<NSUInteger> indexesOf(const Ref<NSIndexSet> &indexes) {
    std::vector<NSUInteger> list;
    if (indexes)
        indexes->enumerateIndexesUsingBlock([&](NSUInteger index, bool &) { list.push_back(index); });
    return list;
}

/// Removes the elements of the range that `matches`, the last one first.
template <class Matches>
void removeWhere(NSMutableArray &array, NSRange range, const Matches &matches) {
    for (NSUInteger i = range.end(); i-- > range.location;)
        if (matches(array.objectAtIndex(i)))
            array.removeObjectAtIndex(i);
}

} // namespace

void NSMutableArray::setObject(const id &object, NSUInteger index) {
    if (index == count())
        addObject(object);
    else
        replaceObjectAtIndex(index, object);
}

void NSMutableArray::addObjectsFromArray(const Ref<NSArray> &array) {
    for (const id &object : objectsOf(array))
        addObject(object);
}

void NSMutableArray::setArray(const Ref<NSArray> &array) {
    const auto objects = objectsOf(array);
    removeAllObjects();
    for (const id &object : objects)
        addObject(object);
}

void NSMutableArray::exchangeObjectAtIndex(NSUInteger first, NSUInteger second) {
    const id object = objectAtIndex(first);
    replaceObjectAtIndex(first, objectAtIndex(second));
    replaceObjectAtIndex(second, object);
}

void NSMutableArray::removeAllObjects() {
    for (NSUInteger left = count(); left; --left)
        removeLastObject();
}

void NSMutableArray::removeObject(const id &object) {
    removeWhere(*this, {0, count()}, [&](const id &element) { return equal(element, object); });
}

void NSMutableArray::removeObject(const id &object, NSRange range) {
    checkRange("NSMutableArray removeObject:inRange:", range, count());
    removeWhere(*this, range, [&](const id &element) { return equal(element, object); });
}

void NSMutableArray::removeObjectIdenticalTo(const id &object) {
    removeWhere(*this, {0, count()}, [&](const id &element) { return element && element == object; });
}

void NSMutableArray::removeObjectIdenticalTo(const id &object, NSRange range) {
    checkRange("NSMutableArray removeObjectIdenticalTo:inRange:", range, count());
    removeWhere(*this, range, [&](const id &element) { return element && element == object; });
}

void NSMutableArray::removeObjectsInArray(const Ref<NSArray> &array) {
    for (const id &object : objectsOf(array))
        removeObject(object);
}

void NSMutableArray::removeObjectsInRange(NSRange range) {
    checkRange("NSMutableArray removeObjectsInRange:", range, count());
    removeWhere(*this, range, [](const id &) { return true; });
}

void NSMutableArray::replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects) {
    checkRange("NSMutableArray replaceObjectsInRange:withObjectsFromArray:", range, count());
    const auto replacements = objectsOf(objects);
    const NSUInteger common = std::min<NSUInteger>(range.length, replacements.size());
    for (NSUInteger i = 0; i < common; ++i)
        replaceObjectAtIndex(range.location + i, replacements[i]);
    for (NSUInteger i = common; i < replacements.size(); ++i)
        insertObject(replacements[i], range.location + i);
    removeWhere(*this, {range.location + common, range.length - common}, [](const id &) { return true; });
}

void NSMutableArray::replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects, NSRange objectsRange) {
    replaceObjectsInRange(range, (objects ? objects : NSArray::array())->subarrayWithRange(objectsRange));
}

void NSMutableArray::insertObjects(const Ref<NSArray> &objects, const Ref<NSIndexSet> &indexes) {
    const auto list = objectsOf(objects);
    const auto places = indexesOf(indexes);
    checkArgument("NSMutableArray insertObjects:atIndexes:", list.size() == places.size(),
                  "as many indexes as objects are needed");
    if (!places.empty())
        checkIndex("NSMutableArray insertObjects:atIndexes:", places.back(), count() + places.size());
    for (std::size_t i = 0; i < places.size(); ++i)
        insertObject(list[i], places[i]);
}

void NSMutableArray::replaceObjectsAtIndexes(const Ref<NSIndexSet> &indexes, const Ref<NSArray> &objects) {
    const auto list = objectsOf(objects);
    const auto places = indexesOf(indexes);
    checkArgument("NSMutableArray replaceObjectsAtIndexes:withObjects:", list.size() == places.size(),
                  "as many indexes as objects are needed");
    if (!places.empty())
        checkIndex("NSMutableArray replaceObjectsAtIndexes:withObjects:", places.back(), count());
    for (std::size_t i = 0; i < places.size(); ++i)
        replaceObjectAtIndex(places[i], list[i]);
}

void NSMutableArray::removeObjectsAtIndexes(const Ref<NSIndexSet> &indexes) {
    const auto places = indexesOf(indexes);
    if (!places.empty())
        checkIndex("NSMutableArray removeObjectsAtIndexes:", places.back(), count());
    for (auto place = places.rbegin(); place != places.rend(); ++place)
        removeObjectAtIndex(*place);
}
