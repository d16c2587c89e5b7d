#include "Manager/QueueConnection.h"

#include "Manager/ZKUSB.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>

namespace {

std::string utf8(const Ref<NSString> &text) {
    return text ? text->utf8() : std::string();
}

} // namespace

bool isUsb(const Ref<NSString> &deviceUri) {
    return deviceUri && deviceUri->hasPrefix(u"usb://"_ns);
}

transport::PrinterIdentity identityOf(const ZKUSB &printer) {
    return {utf8(printer.manufacturer()), utf8(printer.printerType()), utf8(printer.serialNumber())};
}

bool namesPrinter(const Ref<NSString> &deviceUri, const transport::PrinterIdentity &printer) {
    return deviceUri && transport::names(deviceUri->utf8(), printer);
}

QueueConnection connectionOf(const Ref<NSString> &deviceUri, const ZKSafeMutableArray &attached) {
    if (!isUsb(deviceUri))
        return QueueConnection::network;
    const bool found = std::ranges::any_of(attached.allObjects(), [&](const id &object) {
        const auto printer = as<ZKUSB>(object);
        return printer && namesPrinter(deviceUri, identityOf(*printer));
    });
    return found ? QueueConnection::usbAttached : QueueConnection::usbNotAttached;
}
