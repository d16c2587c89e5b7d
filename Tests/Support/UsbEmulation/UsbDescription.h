// What an emulated USB printer tells of itself: descriptors and the files of its folder under /sys.
//
// A printer has two interfaces, as many do: number 0 is the vendor's own, without endpoints, and number 1 is
// of the printer class, bidirectional.
#pragma once

#include "Platform/Transport/virtual/VirtualPrinterState.h"
#include "Tests/Support/Bytes.h"

#include <compare>

struct UsbAddress {
    int bus = 0;
    int device = 0;

    auto operator<=>(const UsbAddress &) const = default;
};

constexpr unsigned usbPrinterInterface = 1;
constexpr std::uint8_t usbBulkOut = 0x01;
constexpr std::uint8_t usbBulkIn = 0x82;

/// As in /dev/bus/usb/BBB/DDD.
std::string usbNodePath(UsbAddress address);
/// The folder of the device, and of an interface of it, under /sys.
std::string usbFolder(UsbAddress address);
std::string usbInterfaceFolder(UsbAddress address, unsigned interface);
/// Those of the device, its configuration, the interfaces and their endpoints, one behind another.
Bytes usbDescriptors(const transport::VirtualPrinterState &printer);
/// All that /sys tells, in the language of umockdev.
std::string usbRecord(UsbAddress address, const transport::VirtualPrinterState &printer,
                      const Bytes &descriptors);
