#include "Platform/Runtime/Object/NSBlock.h"

#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(NSBlock) {}
