// Device URIs of print queues, and printers called anything.
#include "Platform/Transport/PrinterUri.h"
#include "Tests/Fuzz/FuzzTarget.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const auto parsed = transport::parsePrinterUri(text);
    alwaysHolds(parsed.has_value() == text.starts_with("usb://"));
    if (parsed) {
        alwaysHolds(parsed->manufacturer.size() + parsed->product.size() + parsed->serial.size() <= size);
        const std::string uri = transport::printerUri(*parsed);
        alwaysHolds(transport::names(uri, *parsed));
        const auto again = transport::parsePrinterUri(uri);
        alwaysHolds(again && transport::printerUri(*again) == uri);
    }
    // The bytes as what a printer calls itself.
    const transport::PrinterIdentity printer{std::string(text.substr(0, size / 3)),
                                             std::string(text.substr(size / 3, size / 3)),
                                             std::string(text.substr(2 * (size / 3)))};
    alwaysHolds(transport::names(transport::printerUri(printer), printer));
    const transport::PrinterIdentity listed = transport::recorded(printer);
    alwaysHolds(listed.serial.size() <= 255 && transport::recorded(listed) == listed &&
                transport::names(transport::printerUri(listed), printer));
    return 0;
}
