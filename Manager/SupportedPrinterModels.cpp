#include "Manager/SupportedPrinterModels.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Platform/Foundation/System/NSBundle.h"

Ref<NSArray> supportedModels() {
    return as<NSArray>(NSPropertyListSerialization::propertyListWithData(
        NSBundle::mainBundle().dataForResource("models", "plist")));
}
