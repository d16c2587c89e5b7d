#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+QNCommon.h"

#include "Frameworks/QNCategoriesPro/Atomically.h"
#include "Frameworks/QNCategoriesPro/RandomIndex.h"

id qn::randomObject(const Ref<NSArray> &array) {
    return atomically(array, [](NSArray &contents) {
        const NSUInteger count = contents.count();
        return count ? contents.objectAtIndex(randomIndex(count)) : nullptr;
    });
}

id qn::objectOrNilAtIndex(const Ref<NSArray> &array, NSUInteger index) {
    return atomically(array, [=](NSArray &contents) {
        return index < contents.count() ? contents.objectAtIndex(index) : nullptr;
    });
}
