#include "Manager/SupportedModels.h"

#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSPropertyListSerialization.h"

Ref<NSArray> supportedModels() {
    return as<NSArray>(NSPropertyListSerialization::propertyListWithData(
        NSBundle::mainBundle().dataForResource("models", "plist")));
}
