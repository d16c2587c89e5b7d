#include "Frameworks/QNCategoriesPro/Foundation/NSMutableArray/NSMutableArray+QNCommon.h"

#include "Frameworks/QNCategoriesPro/Atomically.h"
#include "Frameworks/QNCategoriesPro/RandomIndex.h"

void qn::removeFirstObject(const Ref<NSMutableArray> &array) {
    popFirstObject(array);
}

id qn::popFirstObject(const Ref<NSMutableArray> &array) {
    return atomically(array, [](NSMutableArray &contents) {
        id first = contents.firstObject();
        if (first)
            contents.removeObjectAtIndex(0);
        return first;
    });
}

id qn::popLastObject(const Ref<NSMutableArray> &array) {
    return atomically(array, [](NSMutableArray &contents) {
        id last = contents.lastObject();
        contents.removeLastObject();
        return last;
    });
}

void qn::appendObject(const Ref<NSMutableArray> &array, const id &object) {
    if (array)
        array->addObject(object);
}

void qn::prependObject(const Ref<NSMutableArray> &array, const id &object) {
    if (array)
        array->insertObject(object, 0);
}

void qn::appendObjects(const Ref<NSMutableArray> &array, const Ref<NSArray> &objects) {
    if (array)
        array->addObjectsFromArray(objects);
}

void qn::prependObjects(const Ref<NSMutableArray> &array, const Ref<NSArray> &objects) {
    insertObjects(array, objects, 0);
}

void qn::insertObjects(const Ref<NSMutableArray> &array, const Ref<NSArray> &objects, NSUInteger index) {
    if (array && objects && objects->count())
        array->replaceObjectsInRange({index, 0}, objects);
}

void qn::reverse(const Ref<NSMutableArray> &array) {
    atomically(array, [](NSMutableArray &contents) {
        const NSUInteger count = contents.count();
        for (NSUInteger i = 0; i < count / 2; ++i)
            contents.exchangeObjectAtIndex(i, count - 1 - i);
    });
}

void qn::shuffle(const Ref<NSMutableArray> &array) {
    atomically(array, [](NSMutableArray &contents) {
        for (NSUInteger left = contents.count(); left > 1; --left)
            contents.exchangeObjectAtIndex(left - 1, randomIndex(left));
    });
}
