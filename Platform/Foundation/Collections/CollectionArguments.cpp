#include "Platform/Foundation/Collections/CollectionArguments.h"

#include "Platform/Foundation/Collections/NSArray.h"

std::vector<id> collections::objectsOf(const Ref<NSArray> &array) {
    return array ? array->allObjects() : std::vector<id>();
}
