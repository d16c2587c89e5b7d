// Which of a device's interfaces, in which alternate setting, one talks to a printer through.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace transport {

/// An alternate setting as its descriptors describe it.
struct AlternateSetting {
    std::uint8_t interface = 0;
    std::uint8_t number = 0;
    std::uint8_t interfaceClass = 0;
    std::uint8_t subclass = 0;
    std::uint8_t protocol =
        0; // of the printer class: 1 one-way, 2 two-way, 3 IEEE 1284.4 packets, 4 IPP over USB
    std::uint8_t bulkIn = 0; // endpoint address; 0: it has none
    std::uint8_t bulkOut = 0;
    std::uint16_t packetSize = 0; // of bulkIn, in bytes, above 0 where that exists

    bool operator==(const AlternateSetting &) const = default;
};

/// A printer-class one with both bulk endpoints that passes bytes on as they are: a two-way one before one
/// that calls itself one-way, then the first. None when there is no such.
std::optional<AlternateSetting> printerSetting(const std::vector<AlternateSetting> &settings);

} // namespace transport
