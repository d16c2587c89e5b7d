// Percent-encoding, both ways.
#include "Platform/Foundation/HexDigit.h"
#include "Platform/Foundation/NSCharacterSet.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Foundation/Unicode.h"

namespace {

void appendEscaped(std::u16string &out, std::string_view bytes) {
    static constexpr char16_t digits[] = u"0123456789ABCDEF";
    for (const char byte : bytes) {
        out += u'%';
        out += digits[static_cast<unsigned char>(byte) >> 4];
        out += digits[byte & 15];
    }
}

} // namespace

Ref<NSString>
NSString::stringByAddingPercentEncodingWithAllowedCharacters(const Ref<NSCharacterSet> &allowed) const {
    const auto stays = [&](char16_t unit) { return unit < 0x80 && allowed->characterIsMember(unit); };
    std::u16string encoded;
    encoded.reserve(units_.size() + units_.size() / 2);
    for (std::size_t at = 0; at < units_.size();) {
        if (stays(units_[at])) {
            encoded += units_[at++];
            continue;
        }
        std::size_t end = at + 1;
        while (end < units_.size() && !stays(units_[end]))
            ++end;
        const auto bytes = unicode::utf8FromUTF16(std::u16string_view(units_).substr(at, end - at));
        if (!bytes)
            return nullptr;
        appendEscaped(encoded, *bytes);
        at = end;
    }
    return make<NSString>(std::move(encoded));
}

Ref<NSString> NSString::stringByRemovingPercentEncoding() const {
    const auto encoded = strictUTF8();
    if (!encoded)
        return nullptr;
    std::string bytes;
    bytes.reserve(encoded->size());
    for (std::size_t at = 0; at < encoded->size(); ++at) {
        if ((*encoded)[at] != '%') {
            bytes += (*encoded)[at];
            continue;
        }
        if (encoded->size() - at < 3)
            return nullptr;
        const auto high = hexDigitValue(static_cast<unsigned char>((*encoded)[at + 1]));
        const auto low = hexDigitValue(static_cast<unsigned char>((*encoded)[at + 2]));
        if (!high || !low)
            return nullptr;
        bytes += static_cast<char>(*high * 16 + *low);
        at += 2;
    }
    return stringWithUTF8String(bytes);
}
