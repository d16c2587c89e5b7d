// Base64.
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"

#include "Platform/Foundation/Data/Base64.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>

/// In lines of 64 columns, each with a line feed behind it.
namespace {

std::vector<std::uint8_t> encoded(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t lineLength = 64, bytesPerLine = lineLength / 4 * 3;
    const std::size_t characters = base64Length(bytes.size());
    std::vector<std::uint8_t> text(characters + (characters + lineLength - 1) / lineLength);
    std::uint8_t *out = text.data();
    while (!bytes.empty()) {
        const auto line = bytes.first(std::min(bytes.size(), bytesPerLine));
        bytes = bytes.subspan(line.size());
        out = writeBase64(out, line);
        *out++ = '\n';
    }
    return text;
}

} // namespace

Ref<NSData> qn::base64EncodedData(const Ref<NSData> &data) {
    return data ? make<NSData>(encoded(data->span())) : nullptr;
}

Ref<NSString> qn::base64EncodedString(const Ref<NSData> &data) {
    if (!data)
        return nullptr;
    const auto text = encoded(data->span());
    return make<NSString>(std::u16string(text.begin(), text.end()));
}

Ref<NSData> qn::base64DecodedData(const Ref<NSData> &data) {
    auto bytes = data ? base64BytesWithin(data->span()) : std::nullopt;
    return bytes ? make<NSData>(std::move(*bytes)) : nullptr;
}

Ref<NSString> qn::base64DecodedString(const Ref<NSData> &data) {
    return UTF8String(base64DecodedData(data));
}
