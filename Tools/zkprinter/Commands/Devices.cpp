// The list of attached printers.
#include "Tools/zkprinter/Commands/Devices.h"

#include "Manager/ZKUSB.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Tools/zkprinter/Commands/Commands.h"
#include "Tools/zkprinter/Printers/Queue.h"
#include "Tools/zkprinter/Printing/Terminal.h"

namespace {

std::string utf8(const Ref<NSString> &text) {
    return text ? text->utf8() : std::string();
}

} // namespace

void describe(Json &json, ZKUSB &printer) {
    json.field("deviceUri", utf8(printer.URI()))
        .field("manufacturer", utf8(printer.manufacturer()))
        .field("product", utf8(printer.printerType()))
        .field("serialNumber", utf8(printer.serialNumber()))
        .field("usbIdentifier", usbIdentifier(printer));
}

ExitStatus listDevices(Format format) {
    const auto printers = AttachedPrinters().all();
    if (format == Format::json) {
        printJson([&](Json &json) {
            json.array("devices", [&](Json &list) {
                for (const auto &printer : printers)
                    list.element([&](Json &element) { describe(element, *printer); });
            });
        });
    } else if (printers.empty()) {
        printLine("No printer is attached; check its power and its USB cable.");
    } else {
        std::vector<std::vector<std::string>> rows = {{"PRODUCT", "SERIAL NUMBER", "USB", "DEVICE"}};
        for (const auto &printer : printers)
            rows.push_back({utf8(printer->printerType()), utf8(printer->serialNumber()),
                            usbIdentifier(*printer), utf8(printer->URI())});
        printTable(rows);
    }
    return ExitStatus::success;
}
