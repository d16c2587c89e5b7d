#include "Tools/zkprinter/Commands/Commands.h"

#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Tools/zkprinter/Printers/Queue.h"
#include "Tools/zkprinter/Printers/Status.h"
#include "Tools/zkprinter/Printing/Json.h"
#include "Tools/zkprinter/Printing/Report.h"
#include "Tools/zkprinter/Printing/Terminal.h"

namespace {

std::string shown(const Queue &queue) {
    return escapedControlCharacters(queue.name);
}

} // namespace

ExitStatus listQueues(Format format) {
    const auto queues = supportedQueues();
    if (format == Format::json) {
        printJson([&](Json &json) {
            json.array("queues", [&](Json &list) {
                for (const Queue &queue : queues)
                    list.element([&](Json &element) {
                        describe(element, queue.subject());
                        queue.description ? element.field("description", *queue.description)
                                          : element.null("description");
                        element.field("usb", queue.printsOverUsb());
                    });
            });
        });
    } else if (queues.empty()) {
        printLine("No queue belongs to a supported model; add one in the printer settings.");
    } else {
        std::vector<std::vector<std::string>> rows = {{"QUEUE", "DESCRIPTION", "USB", "DEVICE"}};
        for (const Queue &queue : queues)
            rows.push_back({queue.name, queue.description.value_or(""), queue.printsOverUsb() ? "yes" : "no",
                            queue.deviceUri.value_or("")});
        printTable(rows);
    }
    return ExitStatus::success;
}

ExitStatus showStatus(const std::string &name, Format format) {
    return withPrinterOf(name, [&](const Queue &queue, const Ref<ZKUSB> &printer) {
        const PrinterStatus status = statusIn(askStatus(printer, queue.name), queue.name);
        if (format == Format::json)
            printJson([&](Json &json) {
                describe(json, queue.subject());
                json.field("normal", status.isNormal()).field("printerStatus", status.value);
            });
        else if (status.isNormal())
            printLine("\"" + shown(queue) + "\" is " + styled("in a normal state", Style::good) + ".");
        else
            printLine("\"" + shown(queue) + "\" is " + styled("not in a normal state", Style::bad) +
                      " (status " + std::to_string(status.value) +
                      "); look at what the printer itself shows.");
        return status.isNormal() ? ExitStatus::success : ExitStatus::notNormal;
    });
}
