#include "Frameworks/QNCategoriesPro/Foundation/NSMutableDictionary/NSMutableDictionary+QNCommon.h"

#include "Frameworks/QNCategoriesPro/Atomically.h"
#include "Platform/Foundation/Collections/CollectionArguments.h"

namespace {

id pop(NSMutableDictionary &contents, const id &key) {
    id object = contents.objectForKey(key);
    if (object)
        contents.removeObjectForKey(key);
    return object;
}

} // namespace

id qn::popObjectForKey(const Ref<NSMutableDictionary> &dictionary, const id &key) {
    return atomically(dictionary, [&](NSMutableDictionary &contents) { return pop(contents, key); });
}

Ref<NSMutableDictionary> qn::popEntriesForKeys(const Ref<NSMutableDictionary> &dictionary,
                                               const Ref<NSArray> &keys) {
    return atomically(dictionary, [&](NSMutableDictionary &contents) {
        auto popped = NSMutableDictionary::dictionary();
        for (const id &key : collections::objectsOf(keys))
            if (const id object = pop(contents, key))
                popped->setObject(object, key);
        return popped;
    });
}
