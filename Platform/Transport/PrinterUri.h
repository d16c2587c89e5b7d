// Making and reading device URIs, and deciding which printers a URI names.
//
//     printerUri({"Zelkor", "L200 Series", "SN0002"})   // "usb://Zelkor/L200%20Series?serial=SN0002"
//
// Texts may be any bytes; they are UTF-8 unless a device misbehaves. No input is an error. Thread-safe.
#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace transport {

/// How a printer names itself.
struct PrinterIdentity {
    std::string manufacturer{};
    std::string product{};
    std::string serial{};

    bool operator==(const PrinterIdentity &) const = default;
};

/// "usb://MANUFACTURER/PRODUCT?serial=SERIAL". Every byte but ASCII letters, digits and -._~!$&'()*+,;=:@/?
/// is percent-encoded; so "/" and "?" within a text are not escaped.
std::string printerUri(const PrinterIdentity &printer);

/// The inverse of `printerUri`, which makes the same URI from the result again. The manufacturer ends at the
/// first "/", and the serial number begins behind the last "?serial=". Parts that another program's URI lacks
/// are empty. None for a URI that does not begin with "usb://".
std::optional<PrinterIdentity> parsePrinterUri(std::string_view uri);

/// The identity as it stands in a device record: at most 255 bytes per text, cut between characters; bytes
/// that are not valid UTF-8 become U+FFFD.
PrinterIdentity recorded(const PrinterIdentity &printer);

/// Whether the URI names the printer: decoded, it is the printer's URI byte for byte. These spellings count,
/// too: without
/// "?serial=" for a printer without a serial number; with "interface=N" at the end, as CUPS adds it; the
/// product without a manufacturer at its beginning; and the texts as `recorded`.
bool names(std::string_view uri, const PrinterIdentity &printer);

/// The printers that a URI names: none, one, or several of the same name, which it cannot tell apart.
/// `isNamed` decides for one of them.
template <class Printer, class IsNamed>
std::vector<Printer> namedOf(const std::vector<Printer> &printers, IsNamed isNamed) {
    std::vector<Printer> named;
    std::ranges::copy_if(printers, std::back_inserter(named), isNamed);
    return named;
}

} // namespace transport
