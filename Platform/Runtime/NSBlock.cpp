#include "Platform/Runtime/NSBlock.h"

#include "Platform/Runtime/Class.h"

NS_IMPLEMENTATION(NSBlock) {}
