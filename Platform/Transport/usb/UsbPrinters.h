// The printers of a USB bus.
#pragma once

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Transport/Printer.h"
#include "Platform/Transport/usb/UsbDevice.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <vector>

namespace transport {

/// Thread-safe.
class UsbPrinters final : public Printers {
public:
    /// How long a listing is a recent one: the status call and the exchange that a selection makes share it.
    static constexpr std::chrono::milliseconds recent{1000};

    /// Bus and clock outlive it.
    UsbPrinters(UsbBus &bus, dispatch::Clock &clock) : bus_(bus), clock_(clock) {}

    std::vector<std::shared_ptr<Printer>> attached() override;
    std::vector<std::shared_ptr<Printer>> recentlyAttached() override;
    void forget() override;

private:
    std::shared_ptr<Printer> printerFor(const AttachedPrinter &attached);

    UsbBus &bus_;
    dispatch::Clock &clock_;

    std::mutex mutex_;                          // not held while the bus is looked at
    std::vector<std::weak_ptr<Printer>> known_; // one a plugging-in, so that a device is opened once
    std::vector<std::shared_ptr<Printer>> latest_;
    dispatch::Instant latestEnd_; // of its being recent
};

} // namespace transport
