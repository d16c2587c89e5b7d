#include "Platform/Transport/usb/DeviceId.h"

#include "Platform/Ascii/Trimmed.h"

#include <algorithm>
#include <initializer_list>

namespace transport {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks(" \t\r\n\v\f\0", 7);
    return ascii::trimmed(text, blanks);
}

std::string firstOf(const DeviceId &id, std::initializer_list<const char *> keys) {
    for (const char *const key : keys)
        if (const auto found = id.find(key); found != id.end())
            return found->second;
    return {};
}

} // namespace

std::string_view deviceIdText(std::span<const std::uint8_t> reply) {
    constexpr std::size_t lengthField = 2;
    if (reply.size() <= lengthField)
        return {};
    const auto fits = [&](std::size_t length) { return length > lengthField && length <= reply.size(); };
    const auto bigEndian = static_cast<std::size_t>(reply[0] << 8 | reply[1]);
    const auto littleEndian = static_cast<std::size_t>(reply[1] << 8 | reply[0]);
    const std::size_t length = fits(bigEndian) ? bigEndian : fits(littleEndian) ? littleEndian : reply.size();
    return {reinterpret_cast<const char *>(reply.data()) + lengthField, length - lengthField};
}

DeviceId parseDeviceId(std::string_view text) {
    DeviceId id;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string_view item = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t colon = item.find(':');
        if (colon == std::string_view::npos)
            continue;
        if (const std::string_view key = trimmed(item.substr(0, colon)); !key.empty())
            id.emplace(key, trimmed(item.substr(colon + 1)));
    }
    return id;
}

PrinterIdentity identityOf(const DeviceId &id) {
    return {.manufacturer = firstOf(id, {"MFG", "MANUFACTURER"}),
            .product = firstOf(id, {"MDL", "MODEL"}),
            .serial = firstOf(id, {"SERIALNUMBER", "SERN", "SN"})};
}

} // namespace transport
