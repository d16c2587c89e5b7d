// One plugged-in printer while handles to it exist: opens the device when it is used, and gives it back when
// it rests.
//
//     HeldPrinter held(printer, bus, clock);
//     held.transfer([&](UsbDevice &device) { return writeAll(device, bytes, timeout, stop); });
//     held.giveBackIfIdle(clock.now());    // now and then
//
// | device is | on                                     | device is                                        |
// |-----------|----------------------------------------|--------------------------------------------------|
// | closed    | transfer, request                      | open; a failure leaves it closed                 |
// | open      | end of a request that opened it        | closed                                           |
// |           | end of a transfer                      | open, until it has been idle for `idleTime`      |
// |           | giveBack, a printer found unplugged    | closed, once nobody uses it any more             |
//
// Thread-safe. Transfers run one after another; requests run beside them. There is one device file at most.
#pragma once

#include "Platform/Dispatch/Clock.h"
#include "Platform/Transport/usb/UsbDevice.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace transport {

class HeldPrinter {
public:
    using Work = std::function<tl_usb_status(UsbDevice &)>;

    /// Less than the second that CUPS and the kernel driver are to wait at most.
    static constexpr std::chrono::milliseconds idleTime{800};

    /// Bus and clock outlive it.
    HeldPrinter(AttachedPrinter printer, UsbBus &bus, dispatch::Clock &clock);

    const AttachedPrinter &printer() const { return printer_; }

    /// What `work` gives, or why the device could not be opened.
    tl_usb_status transfer(const Work &work);
    tl_usb_status request(const Work &work);

    void giveBack();
    /// When to look again; none when the device is closed.
    std::optional<dispatch::Instant> giveBackIfIdle(dispatch::Instant now);

private:
    tl_usb_status use(const Work &work, bool keep);
    tl_usb_status begin(bool keep);
    void end(tl_usb_status status);

    const AttachedPrinter printer_;
    UsbBus &bus_;
    dispatch::Clock &clock_;

    std::mutex transfer_; // held during transfers, taken before mutex_
    std::mutex mutex_;
    std::unique_ptr<UsbDevice> device_;
    int users_ = 0;
    bool keep_ = false; // the open device when the last user is done
    dispatch::Instant lastUse_;
};

} // namespace transport
