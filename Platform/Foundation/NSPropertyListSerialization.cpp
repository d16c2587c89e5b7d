#include "Platform/Foundation/NSPropertyListSerialization.h"

#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/OpenStepPropertyList.h"
#include "Platform/Foundation/PropertyListBytes.h"

#include <algorithm>
#include <cctype>

namespace {

bool isBlank(char byte) {
    return std::isspace(static_cast<unsigned char>(byte));
}

/// Told from XML by what stands in the first angle brackets: no element has a name of hexadecimal digits.
bool isOpenStep(std::string_view text) {
    const auto start = std::find_if_not(text.begin(), text.end(), isBlank);
    if (start == text.end() || *start != '<')
        return true;
    const auto end = std::find_if_not(start + 1, text.end(), [](char byte) {
        return isBlank(byte) || std::isxdigit(static_cast<unsigned char>(byte));
    });
    return end != text.end() && *end == '>';
}

} // namespace

id NSPropertyListSerialization::propertyListWithData(const Ref<NSData> &data,
                                                     NSPropertyListMutabilityOptions options) {
    if (!data || data->length() == 0 || data->length() > UINT32_MAX)
        return nullptr;
    const PropertyListObjects objects{options};
    std::string_view bytes(reinterpret_cast<const char *>(data->bytes()), data->length());
    if (bytes.starts_with("bplist"))
        return binaryPropertyList(bytes, objects);
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    return isOpenStep(bytes) ? openStepPropertyList(bytes, objects) : xmlPropertyList(bytes, objects);
}

Ref<NSData> NSPropertyListSerialization::dataWithPropertyList(const id &list, NSPropertyListFormat format) {
    return propertyListBytes(list, format);
}
