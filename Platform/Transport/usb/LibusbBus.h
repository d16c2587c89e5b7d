// The USB bus of this machine, by libusb, which only this file and LibusbSettings know.
//
// A libusb context, with the thread and the files that belong to it, exists only while a device is open.
// Thread-safe.
#pragma once

#include "Platform/Locking/Mutex.h"
#include "Platform/Transport/usb/UsbDevice.h"

#include <memory>
#include <vector>

struct libusb_context;

namespace transport {

class LibusbBus final : public UsbBus {
public:
    std::vector<AttachedPrinter> printers() override;
    bool isAttached(const AttachedPrinter &printer) override;
    tl_usb_status open(const AttachedPrinter &printer, std::unique_ptr<UsbDevice> &device) override;

private:
    tl_usb_status context(std::shared_ptr<libusb_context> &shared);

    locking::Mutex mutex_;
    std::weak_ptr<libusb_context> context_ ZK_GUARDED_BY(mutex_); // the open devices own it
};

} // namespace transport
