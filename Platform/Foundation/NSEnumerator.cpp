#include "Platform/Foundation/NSEnumerator.h"

#include "Platform/Runtime/Class.h"

NS_IMPLEMENTATION(NSEnumerator) {}
