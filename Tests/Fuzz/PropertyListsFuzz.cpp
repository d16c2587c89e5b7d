// Property lists in their three formats: what is read, immutable and mutable, comes back from every format
// that can hold it.
#include "Platform/Foundation/Collections/NSDictionary.h" // IWYU pragma: keep: it is the complete type
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Platform/Foundation/System/NSError.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Tests/Fuzz/FuzzTarget.h"

namespace {

using Format = NSPropertyListFormat;
using Mutability = NSPropertyListMutabilityOptions;

id read(const Ref<NSData> &data, Mutability options = Mutability::Immutable) {
    return NSPropertyListSerialization::propertyListWithData(data, options);
}

/// Escapes of OpenStep text can make one.
bool hasLoneSurrogate(const Ref<NSError> &error) {
    return as<NSString>(error->userInfo()->objectForKey(NSDebugDescriptionErrorKey()))
        ->hasSuffix(u": expected a text in which no surrogate stands alone."_ns);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    const auto data = NSData::dataWithBytes(bytes, size);
    const id list = read(data), changeable = read(data, Mutability::MutableContainersAndLeaves);
    alwaysHolds(list ? list->isEqual(changeable) : !changeable);
    if (!list)
        return 0;
    for (const Format format : {Format::BinaryFormat_v1_0, Format::XMLFormat_v1_0}) {
        Ref<NSError> error;
        const auto written = NSPropertyListSerialization::dataWithPropertyList(list, format, &error);
        const bool isBinary = format == Format::BinaryFormat_v1_0;
        alwaysHolds(written || !isBinary || hasLoneSurrogate(error));
        if (!written)
            continue;
        const id again = read(written);
        alwaysHolds(again && (!isBinary || again->isEqual(list)));
        alwaysHolds(written->isEqual(NSPropertyListSerialization::dataWithPropertyList(again, format)));
    }
    return 0;
}
