#include "Frameworks/QNCategoriesPro/Foundation/CollectionText.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Platform/Foundation/Text/NSString.h"

id qn::collection::propertyList(const Ref<NSData> &data, bool mutableThroughout) {
    return NSPropertyListSerialization::propertyListWithData(
        data, mutableThroughout ? NSPropertyListMutabilityOptions::MutableContainersAndLeaves
                                : NSPropertyListMutabilityOptions::Immutable);
}

id qn::collection::propertyList(const Ref<NSString> &text, bool mutableThroughout) {
    return text ? propertyList(text->dataUsingUTF8(), mutableThroughout) : nullptr;
}

Ref<NSData> qn::collection::plistData(const id &collection) {
    return NSPropertyListSerialization::dataWithPropertyList(collection,
                                                             NSPropertyListFormat::BinaryFormat_v1_0);
}

Ref<NSString> qn::collection::plistString(const id &collection) {
    return UTF8String(
        NSPropertyListSerialization::dataWithPropertyList(collection, NSPropertyListFormat::XMLFormat_v1_0));
}

Ref<NSString> qn::collection::jsonText(const id &collection, NSJSONWritingOptions options) {
    return NSJSONSerialization::isValidJSONObject(collection)
               ? UTF8String(NSJSONSerialization::dataWithJSONObject(collection, options, nullptr))
               : nullptr;
}
