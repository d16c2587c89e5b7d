// Checksums: in a file of their own, so that only programs that use them are linked to zlib.
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"

#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Text/NSString.h"

#include <zlib.h>

std::uint32_t qn::crc32(const Ref<NSData> &data) {
    return data ? static_cast<std::uint32_t>(crc32_z(0, data->bytes(), data->length())) : 0;
}

Ref<NSString> qn::crc32String(const Ref<NSData> &data) {
    return data ? NSString::stringWithFormat("%08x", crc32(data)) : nullptr;
}
