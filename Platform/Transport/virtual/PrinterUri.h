// Which printer a device URI names.
#pragma once

#include "Platform/Transport/virtual/VirtualPrinterState.h"

#include <optional>
#include <string>
#include <string_view>

namespace transport {

/// usb://MANUFACTURER/PRODUCT?serial=SERIAL, percent-decoded. Other query items are ignored.
struct PrinterUri {
    std::string product;
    std::string serial; // empty: the URI names none

    /// None for a URI that is not of USB.
    static std::optional<PrinterUri> parse(std::string_view uri);

    /// How well the URI fits: 0 not at all, 2 best. A serial number must be equal, so that a twin of an
    /// unplugged printer is not taken for it; the product tells printers of one serial number apart, and
    /// decides alone when the URI has no serial number.
    int likeness(const VirtualPrinterState &printer) const;
};

} // namespace transport
