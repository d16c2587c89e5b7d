// The device URI of a printer, both ways, and which printers a URI names.
//
//     printerUri({"Zelkor", "L200 Series", "SN0002"})   // "usb://Zelkor/L200%20Series?serial=SN0002"
//
// Texts are bytes, in UTF-8 unless a device says otherwise; nothing here fails on any. Thread-safe.
#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace transport {

/// What a printer calls itself.
struct PrinterIdentity {
    std::string manufacturer{};
    std::string product{};
    std::string serial{};

    bool operator==(const PrinterIdentity &) const = default;
};

/// "usb://MANUFACTURER/PRODUCT?serial=SERIAL". Every byte but ASCII letters, digits and -._~!$&'()*+,;=:@/?
/// is percent-encoded, so separators within a text stay as they are.
std::string printerUri(const PrinterIdentity &printer);

/// The inverse: of every URI that `printerUri` made, its result makes it again. Of several ways to part the
/// text it takes the manufacturer up to the first "/", and the serial number from the last "?serial=". What
/// another program's URI lacks is empty. None for a URI that is not of USB.
std::optional<PrinterIdentity> parsePrinterUri(std::string_view uri);

/// The printer as a device record tells it, and so everybody who lists: at most 255 bytes a text, cut between
/// characters; what is no UTF-8 is shown as U+FFFD.
PrinterIdentity recorded(const PrinterIdentity &printer);

/// Whether the URI names the printer: all of its text, decoded, is the printer's, byte for byte. These are
/// spellings of the same: without "?serial=" for a printer without a serial number; with the number of an
/// interface behind it; the product without the manufacturer it begins with; and the printer as `recorded`.
bool names(std::string_view uri, const PrinterIdentity &printer);

/// Those that the URI names: none, one, or several that are called the same and cannot be told apart by it.
/// `isNamed` tells it of one.
template <class Printer, class IsNamed>
std::vector<Printer> namedOf(const std::vector<Printer> &printers, IsNamed isNamed) {
    std::vector<Printer> named;
    std::ranges::copy_if(printers, std::back_inserter(named), isNamed);
    return named;
}

} // namespace transport
