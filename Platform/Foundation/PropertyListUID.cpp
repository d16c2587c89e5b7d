#include "Platform/Foundation/PropertyListUID.h"

#include "Platform/Runtime/Class.h"

NS_IMPLEMENTATION(PropertyListUID) {}
