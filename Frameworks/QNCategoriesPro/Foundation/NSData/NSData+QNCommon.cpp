#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"

#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/NSJSONSerialization.h"
#include "Platform/Foundation/NSLog.h"
#include "Platform/Foundation/NSString.h"

#include <cstdlib>
#include <zlib.h>

Ref<NSString> qn::UTF8String(const Ref<NSData> &data) {
    if (!data)
        return nullptr;
    const std::string_view bytes(reinterpret_cast<const char *>(data->bytes()), data->length());
    return NSString::stringWithUTF8String(bytes.substr(0, bytes.find('\0')));
}

Ref<NSString> qn::hexString(const Ref<NSData> &data) {
    static constexpr char16_t digits[] = u"0123456789ABCDEF";
    if (!data)
        return nullptr;
    std::u16string text;
    text.reserve(data->length() * 2);
    for (const std::uint8_t byte : data->span()) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return make<NSString>(std::move(text));
}

Ref<NSString> qn::APNSToken(const Ref<NSData> &data) {
    if (!data)
        return nullptr;
    std::u16string text = data->description()->units();
    std::erase_if(text, [](char16_t unit) { return unit == '<' || unit == '>' || unit == ' '; });
    return make<NSString>(std::move(text));
}

Ref<NSData> qn::dataWithHexString(const Ref<NSString> &text) {
    if (!text)
        return nullptr;
    const auto digits = text->stringByReplacingOccurrencesOfString(u" "_ns, u""_ns)->lowercaseString();
    if (digits->length() == 0)
        return nullptr;
    std::vector<std::uint8_t> bytes(digits->length() / 2);
    for (std::size_t k = 0; k < bytes.size(); ++k) {
        const char pair[] = {static_cast<char>(digits->units()[2 * k]),
                             static_cast<char>(digits->units()[2 * k + 1]), '\0'};
        bytes[k] = static_cast<std::uint8_t>(std::strtol(pair, nullptr, 16));
    }
    return make<NSData>(std::move(bytes));
}

id qn::jsonValueDecoded(const Ref<NSData> &data) {
    if (!data)
        return nullptr;
    Ref<NSError> error;
    id value = NSJSONSerialization::JSONObjectWithData(data, NSJSONReadingOptions::None, &error);
    if (!value)
        NSLog("jsonValueDecoded error:%@", error);
    return value;
}

Ref<NSData> qn::dataNamed(const Ref<NSString> &name) {
    return name ? NSBundle::mainBundle().dataForResource(name->utf8(), "") : nullptr;
}

std::uint32_t qn::crc32(const Ref<NSData> &data) {
    return data ? static_cast<std::uint32_t>(crc32_z(0, data->bytes(), data->length())) : 0;
}

Ref<NSString> qn::crc32String(const Ref<NSData> &data) {
    return data ? NSString::stringWithFormat("%08x", crc32(data)) : nullptr;
}
