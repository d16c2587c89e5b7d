// What a transport knows of an attached printer without opening it.
#pragma once

#include "Platform/Transport/PrinterUri.h"
#include "Platform/Transport/zkcomtl.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace transport {

struct ListedPrinter {
    PrinterIdentity identity{};
    std::optional<PrinterIdentity> deviceId{}; // by its IEEE 1284 device ID, where that is known
    std::uint16_t vid = 0;
    std::uint16_t pid = 0;
    std::string
        plugging{}; // identifies this plugging-in: no other, of this or another printer, has the same text

    /// Whether the URI names it by its identity or by its device ID. What the device ID lacks is taken from
    /// the identity.
    bool isNamed(std::string_view uri) const;
    /// The record of the C interface, with the texts as `recorded` (PrinterUri.h).
    tl_usb_device_info record() const;
};

} // namespace transport
