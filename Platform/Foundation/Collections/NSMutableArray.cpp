// The changing operations of arrays, on top of the primitives.
#include "Platform/Foundation/Collections/CollectionArguments.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSIndexSet.h"
#include "Platform/Foundation/Collections/ObjectTable.h"
#include "Platform/Runtime/Object/Raise.h"

using namespace collections;

namespace {

/// Ascending.
std::vector<NSUInteger> indexesOf(const Ref<NSIndexSet> &indexes) {
    std::vector<NSUInteger> list;
    if (indexes)
        indexes->enumerateIndexesUsingBlock([&](NSUInteger index, bool &) { list.push_back(index); });
    return list;
}

/// NSRangeException unless every index is below `bound`.
void checkIndexes(const char *operation, const Ref<NSIndexSet> &indexes, NSUInteger bound) {
    if (indexes && indexes->count())
        runtime::checkIndex(operation, indexes->lastIndex(), bound);
}

void checkCount(const char *operation, const Ref<NSIndexSet> &indexes, NSUInteger count) {
    runtime::checkArgument(operation, count == (indexes ? indexes->count() : 0),
                           "as many indexes as objects are needed");
}

/// The indexes of the elements of the range that match, ascending.
template <class Matches>
std::vector<NSUInteger> placesWhere(const NSMutableArray &array, NSRange range, const Matches &matches) {
    std::vector<NSUInteger> places;
    for (NSUInteger i = range.location; i < range.end(); ++i)
        if (matches(array.objectAtIndex(i)))
            places.push_back(i);
    return places;
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

void NSMutableArray::insertObjectsAt(std::span<const id> objects, std::span<const NSUInteger> places) {
    for (std::size_t i = 0; i < places.size(); ++i)
        insertObject(objects[i], places[i]);
}

void NSMutableArray::removeObjectsAt(std::span<const NSUInteger> places) {
    for (auto place = places.rbegin(); place != places.rend(); ++place)
        removeObjectAtIndex(*place);
}

void NSMutableArray::removeObject(const id &object) {
    removeObjectsAt(
        placesWhere(*this, {0, count()}, [&](const id &element) { return equal(element, object); }));
}

void NSMutableArray::removeObject(const id &object, NSRange range) {
    runtime::checkRange("NSMutableArray removeObject:inRange:", range, count());
    removeObjectsAt(placesWhere(*this, range, [&](const id &element) { return equal(element, object); }));
}

void NSMutableArray::removeObjectIdenticalTo(const id &object) {
    removeObjectsAt(
        placesWhere(*this, {0, count()}, [&](const id &element) { return element && element == object; }));
}

void NSMutableArray::removeObjectIdenticalTo(const id &object, NSRange range) {
    runtime::checkRange("NSMutableArray removeObjectIdenticalTo:inRange:", range, count());
    removeObjectsAt(
        placesWhere(*this, range, [&](const id &element) { return element && element == object; }));
}

void NSMutableArray::removeObjectsInArray(const Ref<NSArray> &array) {
    ObjectTable unwanted;
    for (const id &object : objectsOf(array))
        unwanted.add(object, nullptr);
    removeObjectsAt(
        placesWhere(*this, {0, count()}, [&](const id &element) { return unwanted.find(element); }));
}

void NSMutableArray::removeObjectsInRange(NSRange range) {
    runtime::checkRange("NSMutableArray removeObjectsInRange:", range, count());
    replaceObjectsInRange(range, nullptr);
}

void NSMutableArray::replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects) {
    runtime::checkRange("NSMutableArray replaceObjectsInRange:withObjectsFromArray:", range, count());
    const auto replacements = objectsOf(objects);
    const NSUInteger common = std::min<NSUInteger>(range.length, replacements.size());
    for (NSUInteger i = 0; i < common; ++i)
        replaceObjectAtIndex(range.location + i, replacements[i]);
    for (NSUInteger i = common; i < replacements.size(); ++i)
        insertObject(replacements[i], range.location + i);
    for (NSUInteger i = range.length; i > common; --i)
        removeObjectAtIndex(range.location + i - 1);
}

void NSMutableArray::replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects, NSRange objectsRange) {
    replaceObjectsInRange(range, (objects ? objects : NSArray::array())->subarrayWithRange(objectsRange));
}

void NSMutableArray::insertObjects(const Ref<NSArray> &objects, const Ref<NSIndexSet> &indexes) {
    constexpr auto operation = "NSMutableArray insertObjects:atIndexes:";
    const auto list = objectsOf(objects);
    checkCount(operation, indexes, list.size());
    checkIndexes(operation, indexes, count() + list.size());
    insertObjectsAt(list, indexesOf(indexes));
}

void NSMutableArray::replaceObjectsAtIndexes(const Ref<NSIndexSet> &indexes, const Ref<NSArray> &objects) {
    constexpr auto operation = "NSMutableArray replaceObjectsAtIndexes:withObjects:";
    const auto list = objectsOf(objects);
    checkCount(operation, indexes, list.size());
    checkIndexes(operation, indexes, count());
    const auto places = indexesOf(indexes);
    for (std::size_t i = 0; i < places.size(); ++i)
        replaceObjectAtIndex(places[i], list[i]);
}

void NSMutableArray::removeObjectsAtIndexes(const Ref<NSIndexSet> &indexes) {
    checkIndexes("NSMutableArray removeObjectsAtIndexes:", indexes, count());
    removeObjectsAt(indexesOf(indexes));
}
