#include "Tests/Platform/Foundation/PropertyListFuzz.h"

#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/NSPropertyListSerialization.h"
#include "Platform/Foundation/NSString.h"

#include <cstdio>
#include <cstdlib>

namespace {

using Format = NSPropertyListFormat;
using Mutability = NSPropertyListMutabilityOptions;

void require(bool holds, const char *what) {
    if (!holds) {
        std::fprintf(stderr, "property lists: %s\n", what);
        std::abort();
    }
}

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
    require(list ? list->isEqual(changeable) : !changeable, "mutable is another list");
    if (!list)
        return 0;
    for (const Format format : {Format::BinaryFormat_v1_0, Format::XMLFormat_v1_0}) {
        Ref<NSError> error;
        const auto written = NSPropertyListSerialization::dataWithPropertyList(list, format, &error);
        const bool isBinary = format == Format::BinaryFormat_v1_0;
        require(written || !isBinary || hasLoneSurrogate(error), "what was read cannot be written");
        if (!written)
            continue;
        const id again = read(written);
        require(again && (!isBinary || again->isEqual(list)), "what was written reads otherwise");
        require(written->isEqual(NSPropertyListSerialization::dataWithPropertyList(again, format)),
                "what was written is not written again");
    }
    return 0;
}
