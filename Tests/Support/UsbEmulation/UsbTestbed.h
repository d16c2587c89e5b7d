// Emulated USB ports: what is plugged in here is what this process, and every child that has the preload
// library of umockdev, finds in /sys and /dev.
//
//   auto &ports = UsbTestbed::shared();
//   const auto printer = ports.plug({.manufacturer = "Zelkor", .product = "L200 Series", .serial =
//   "SN0002"});
//   ...
//   ports.unplug(printer);
//
// Must be asked for before libusb is first used. Plugging and unplugging take effect before they return.
// Not thread-safe.
#pragma once

#include "Tests/Support/UsbEmulation/EmulatedUsbPrinter.h"

#include <filesystem>

class UsbTestbed : NoCopies {
public:
    /// The one of this process: libusb looks once where its devices are.
    static UsbTestbed &shared();

    /// It may tell other descriptors of itself than a printer of that state would.
    std::shared_ptr<EmulatedUsbPrinter> plug(const transport::VirtualPrinterState &state,
                                             const std::optional<Bytes> &descriptors = {});
    /// Nobody may be about to open the printer; who has it open may keep it so.
    void unplug(const std::shared_ptr<EmulatedUsbPrinter> &printer);

    /// The folder that stands for "/".
    const std::filesystem::path &root() const { return root_; }

private:
    struct Unreference {
        void operator()(void *object) const { g_object_unref(object); }
    };
    struct Plugged {
        std::shared_ptr<EmulatedUsbPrinter> printer;
        std::unique_ptr<UMockdevIoctlBase, Unreference> calls;
    };

    UsbTestbed();

    void forgetUnplugged();

    std::filesystem::path root_;
    UsbAddress last_ = {1, 0};
    std::vector<Plugged> plugged_;
    std::unique_ptr<UMockdevTestbed, Unreference> testbed_;
};
