#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"

#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSString.h"

Ref<NSString> qn::UTF8String(const Ref<NSData> &data) {
    if (!data)
        return nullptr;
    const std::string_view bytes(reinterpret_cast<const char *>(data->bytes()), data->length());
    return NSString::stringWithUTF8String(bytes.substr(0, bytes.find('\0')));
}
