// What a transport tells of an attached printer without opening it.
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
    std::optional<PrinterIdentity> deviceId{}; // what else it calls itself
    std::uint16_t vid = 0;
    std::uint16_t pid = 0;
    std::string plugging{}; // no other plugging-in, of this printer or of another, has the same text

    /// Whether the URI names it by one of the two.
    bool isNamed(std::string_view uri) const;
    /// As the C interface lists it: its texts are those of the printer as `recorded`.
    tl_usb_device_info record() const;
};

} // namespace transport
