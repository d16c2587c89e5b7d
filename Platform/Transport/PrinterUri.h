// Which printer a device URI names.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace transport {

/// What a printer calls itself.
struct PrinterIdentity {
    std::string manufacturer{};
    std::string product{};
    std::string serial{};

    bool operator==(const PrinterIdentity &) const = default;
};

/// usb://MANUFACTURER/PRODUCT?serial=SERIAL, percent-decoded. Other query items are ignored.
struct PrinterUri {
    std::string manufacturer{};
    std::string product{};
    std::string serial{}; // empty: the URI names none

    /// None for a URI that is not of USB.
    static std::optional<PrinterUri> parse(std::string_view uri);

    /// How well the URI fits: 0 not at all, more is better. A serial number must be equal, so that a twin of
    /// an unplugged printer is not taken for it; product, then manufacturer, tell printers of one serial
    /// number apart. Without a serial number the product must fit. Two spellings of a name fit that differ in
    /// the case of ASCII letters, in white space, or in a manufacturer put before the product.
    int likeness(const PrinterIdentity &printer) const;
};

} // namespace transport
