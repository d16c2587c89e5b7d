// Chooses the interface of a device, and its alternate setting, through which to talk to a printer.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace transport {

/// An alternate setting of an interface, by its descriptors.
struct AlternateSetting {
    std::uint8_t interface = 0;
    std::uint8_t number = 0;
    std::uint8_t interfaceClass = 0;
    std::uint8_t subclass = 0;
    std::uint8_t protocol =
        0; // of the printer class: 1 one-way, 2 two-way, 3 IEEE 1284.4 packets, 4 IPP over USB
    std::uint8_t bulkIn = 0; // endpoint address; 0 without one
    std::uint8_t bulkOut = 0;
    std::uint16_t packetSize = 0; // of bulkIn, in bytes; 0 without one

    bool operator==(const AlternateSetting &) const = default;
};

/// The first printer-class setting with both bulk endpoints whose protocol is plain bytes, preferably the
/// two-way one; none when there is none.
std::optional<AlternateSetting> printerSetting(const std::vector<AlternateSetting> &settings);

} // namespace transport
