// Property lists (XML and binary) to objects.
//
// Any thread. Dates become NSDate, data NSData, numbers and booleans NSNumber; containers are immutable.
#pragma once

#include "Platform/Runtime/NSObject.h"

class NSData;

class NSPropertyListSerialization {
public:
    /// The property list that the bytes hold; none when they hold none or nest deeper than 512 levels.
    static id propertyListWithData(const Ref<NSData> &data);
};
