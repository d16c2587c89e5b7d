#include "Platform/Foundation/Serialization/PropertyList/PropertyListUID.h"

#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(PropertyListUID) {}
