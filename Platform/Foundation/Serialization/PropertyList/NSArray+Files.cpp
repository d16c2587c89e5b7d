// Reading arrays from property-list files.
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

Ref<NSMutableArray> mutableOrNone(const Ref<NSArray> &array) {
    return array ? NSMutableArray::arrayWithArray(array) : nullptr;
}

} // namespace

Ref<NSArray> NSArray::arrayWithContentsOfFile(const Ref<NSString> &path) {
    const auto data = path ? NSData::dataWithContentsOfFile(path->utf8()) : nullptr;
    return as<NSArray>(NSPropertyListSerialization::propertyListWithData(data));
}

Ref<NSArray> NSArray::arrayWithContentsOfURL(const Ref<NSURL> &url) {
    return url && url->isFileURL() ? arrayWithContentsOfFile(url->path()) : nullptr;
}

Ref<NSMutableArray> NSMutableArray::arrayWithContentsOfFile(const Ref<NSString> &path) {
    return mutableOrNone(NSArray::arrayWithContentsOfFile(path));
}

Ref<NSMutableArray> NSMutableArray::arrayWithContentsOfURL(const Ref<NSURL> &url) {
    return mutableOrNone(NSArray::arrayWithContentsOfURL(url));
}
