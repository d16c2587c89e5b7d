#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"

#include "Platform/Ascii/HexDigit.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/System/NSBundle.h"
#include "Platform/Foundation/System/NSError.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Foundation/Text/TextWriter.h"

#include <algorithm>
#include <array>

Ref<NSString> qn::UTF8String(const Ref<NSData> &data) {
    if (!data)
        return nullptr;
    const std::string_view bytes(reinterpret_cast<const char *>(data->bytes()), data->length());
    return NSString::stringWithUTF8String(bytes.substr(0, bytes.find('\0')));
}

Ref<NSString> qn::hexString(const Ref<NSData> &data) {
    // With pairs a megabyte takes 0.5 times as long as digit by digit.
    static constexpr auto digitPairs = [] {
        std::array<std::array<char16_t, 2>, 256> pairs{};
        for (std::size_t byte = 0; byte < pairs.size(); ++byte)
            pairs[byte] = {ascii::upperHexDigit<char16_t>(byte >> 4), ascii::upperHexDigit<char16_t>(byte)};
        return pairs;
    }();
    if (!data)
        return nullptr;
    TextWriter text(data->length() * 2);
    for (const std::uint8_t byte : data->span())
        text.wrote(std::copy_n(digitPairs[byte].begin(), 2, text.room(2)));
    return make<NSString>(text.take());
}

Ref<NSString> qn::APNSToken(const Ref<NSData> &data) {
    if (!data)
        return nullptr;
    std::u16string text = data->description()->units();
    std::erase_if(text, [](char16_t unit) { return unit == '<' || unit == '>' || unit == ' '; });
    return make<NSString>(std::move(text));
}

namespace {

/// What C's `strtol` makes of two characters: white space or a sign may stand before a digit.
unsigned leadingHexNumber(char16_t first, char16_t second) {
    const auto digit = ascii::hexDigitValue(first), next = ascii::hexDigitValue(second);
    if (digit)
        return next ? *digit * 16 + *next : *digit;
    if (first == '-')
        return -next.value_or(0);
    return std::u16string_view(u"+\t\n\v\f\r").find(first) == std::u16string_view::npos ? 0
                                                                                        : next.value_or(0);
}

} // namespace

Ref<NSData> qn::dataWithHexString(const Ref<NSString> &text) {
    if (!text)
        return nullptr;
    const auto digits = text->stringByReplacingOccurrencesOfString(u" "_ns, u""_ns)->lowercaseString();
    if (digits->length() == 0)
        return nullptr;
    std::vector<std::uint8_t> bytes(digits->length() / 2);
    for (std::size_t k = 0; k < bytes.size(); ++k) {
        const char16_t first = digits->units()[2 * k] & 0xFF, second = digits->units()[2 * k + 1] & 0xFF;
        bytes[k] = static_cast<std::uint8_t>(leadingHexNumber(first, second));
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
