#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"

#include "Platform/Ascii/HexDigit.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Serialization/PropertyList/BinaryPropertyListReader.h"
#include "Platform/Foundation/Serialization/PropertyList/BinaryPropertyListWriter.h"
#include "Platform/Foundation/Serialization/PropertyList/OpenStepPropertyListReader.h"
#include "Platform/Foundation/Serialization/PropertyList/XMLPropertyListReader.h"
#include "Platform/Foundation/Serialization/PropertyList/XMLPropertyListWriter.h"
#include "Platform/Foundation/System/CocoaError.h"
#include "Platform/Foundation/System/NSError.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Foundation/Text/Unicode.h"

#include <algorithm>

namespace {

using Reader = id (*)(std::string_view, const PropertyListObjects &, std::string &);

bool isBlank(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

/// Whether the text is OpenStep and not XML: in the first angle brackets it has only hexadecimal digits,
/// which no element's name consists of.
bool isOpenStep(std::string_view text) {
    const auto start = std::find_if_not(text.begin(), text.end(), isBlank);
    if (start == text.end() || *start != '<')
        return true;
    const auto end = std::find_if_not(start + 1, text.end(), [](char byte) {
        return isBlank(byte) || ascii::hexDigitValue(static_cast<unsigned char>(byte));
    });
    return end != text.end() && *end == '>';
}

/// UTF-16, by its mark or by how XML begins in it.
bool isWide(std::string_view bytes) {
    using namespace std::string_view_literals;
    const auto starts = {"\xFF\xFE"sv, "\xFE\xFF"sv, "<\0"sv, "\0<"sv};
    return std::any_of(starts.begin(), starts.end(),
                       [bytes](auto start) { return bytes.starts_with(start); });
}

Reader readerOf(std::string_view bytes) {
    if (bytes.starts_with("bplist"))
        return readBinaryPropertyList;
    return isWide(bytes) || !isOpenStep(bytes) ? readXMLPropertyList : readOpenStepPropertyList;
}

id fail(Ref<NSError> *error, NSInteger code, const Ref<NSString> &description, const std::string &refusal) {
    std::u16string reason; // the refusal may quote text that was cut within a character
    unicode::appendUTF16(reason, refusal);
    if (error)
        *error = cocoaError(code, make<NSString>(std::move(reason)), description);
    return nullptr;
}

} // namespace

id NSPropertyListSerialization::propertyListWithData(const Ref<NSData> &data,
                                                     NSPropertyListMutabilityOptions options,
                                                     Ref<NSError> *error) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    std::string_view bytes;
    if (data)
        bytes = {reinterpret_cast<const char *>(data->bytes()), data->length()};
    std::string refusal = "At the top: expected a property list, not the end.";
    id list;
    if (!bytes.empty()) {
        if (bytes.starts_with(mark))
            bytes.remove_prefix(mark.size());
        refusal.clear();
        list = readerOf(bytes)(bytes, {options}, refusal);
    }
    return list ? list
                : fail(error, NSPropertyListReadCorruptError,
                       u"The data couldn’t be read because it isn’t in the correct format."_ns, refusal);
}

Ref<NSData> NSPropertyListSerialization::dataWithPropertyList(const id &list, NSPropertyListFormat format,
                                                              Ref<NSError> *error) {
    std::string refusal;
    auto data = format == NSPropertyListFormat::XMLFormat_v1_0 ? writeXMLPropertyList(list, refusal)
                                                               : writeBinaryPropertyList(list, refusal);
    if (!data)
        fail(error, NSPropertyListWriteInvalidError, u"The data couldn’t be written."_ns, refusal);
    return data;
}
