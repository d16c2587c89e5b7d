#include "Tests/Support/UsbEmulation/UsbDescription.h"

#include <cstdarg>
#include <cstdio>

namespace {

[[gnu::format(printf, 1, 2)]] std::string format(const char *pattern, ...) {
    std::array<char, 4096> text;
    std::va_list values;
    va_start(values, pattern);
    std::vsnprintf(text.data(), text.size(), pattern, values);
    va_end(values);
    return text.data();
}

// A is one file of the folder, ended by a line end as the kernel does; H is one in hexadecimal.
std::string deviceRecord(UsbAddress address, const transport::VirtualPrinterState &printer,
                         const Bytes &descriptors) {
    std::string record =
        format("P: %s\nE: DEVNAME=%s\nE: DEVTYPE=usb_device\nE: SUBSYSTEM=usb\n"
               "E: BUSNUM=%03d\nE: DEVNUM=%03d\n"
               "A: busnum=%d\\n\nA: devnum=%d\\n\nA: speed=480\\n\nA: bConfigurationValue=1\\n\n"
               "A: idVendor=%04x\\n\nA: idProduct=%04x\\n\nA: manufacturer=%s\\n\nA: product=%s\\n\n",
               usbFolder(address).c_str() + 4, usbNodePath(address).c_str(), address.bus, address.device,
               address.bus, address.device, printer.vid, printer.pid, printer.manufacturer.c_str(),
               printer.product.c_str());
    if (!printer.serial.empty())
        record += format("A: serial=%s\\n\n", printer.serial.c_str());
    const std::string digits = hex(descriptors);
    return record + "H: descriptors=" + digits.substr(1, digits.size() - 2) + "\n\n";
}

std::string interfaceRecord(UsbAddress address, unsigned interface) {
    return format("P: %s\nE: DEVTYPE=usb_interface\nE: SUBSYSTEM=usb\nA: bInterfaceClass=%s\\n\n\n",
                  usbInterfaceFolder(address, interface).c_str() + 4,
                  interface == usbPrinterInterface ? "07" : "ff");
}

} // namespace

Bytes usbDescriptors(const transport::VirtualPrinterState &printer) {
    const auto low = [](unsigned value) { return static_cast<std::uint8_t>(value); };
    const auto high = [](unsigned value) { return static_cast<std::uint8_t>(value >> 8); };
    const auto text = [](const std::string &string, std::uint8_t index) -> std::uint8_t {
        return string.empty() ? 0 : index;
    };
    // clang-format off
    return {
        18, 1, 0x00, 0x02, 0, 0, 0, 64, low(printer.vid), high(printer.vid), low(printer.pid), high(printer.pid),
            0x00, 0x01, text(printer.manufacturer, 1), text(printer.product, 2), text(printer.serial, 3), 1,
        9, 2, 41, 0, 2, 1, 0, 0xC0, 1,
        9, 4, 0, 0, 0, 0xFF, 0, 0, 0,
        9, 4, usbPrinterInterface, 0, 2, 7, 1, 2, 0,
        7, 5, usbBulkOut, 2, 0x00, 0x02, 0,
        7, 5, usbBulkIn, 2, 0x00, 0x02, 0};
    // clang-format on
}

std::string usbNodePath(UsbAddress address) {
    return format("/dev/bus/usb/%03d/%03d", address.bus, address.device);
}

std::string usbFolder(UsbAddress address) {
    return format("/sys/devices/pci0000:00/usb%d/%d-%d", address.bus, address.bus, address.device);
}

std::string usbInterfaceFolder(UsbAddress address, unsigned interface) {
    return usbFolder(address) + format("/%d-%d:1.%u", address.bus, address.device, interface);
}

std::string usbRecord(UsbAddress address, const transport::VirtualPrinterState &printer,
                      const Bytes &descriptors) {
    return deviceRecord(address, printer, descriptors) + interfaceRecord(address, 0) +
           interfaceRecord(address, usbPrinterInterface);
}
