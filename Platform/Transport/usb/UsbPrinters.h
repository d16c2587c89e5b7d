// The printers of a USB bus, and how long a listing of them is used again.
#pragma once

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Locking/Mutex.h"
#include "Platform/Transport/Printer.h"
#include "Platform/Transport/usb/UsbDevice.h"

#include <chrono>
#include <memory>
#include <vector>

namespace transport {

/// Thread-safe.
class UsbPrinters final : public Printers {
public:
    /// How long a listing counts as recent, so that the status call and the exchange after a selection share
    /// one: with twenty devices it takes 0.2 ms, about 170 times as long as all else that an exchange takes
    /// here.
    static constexpr std::chrono::milliseconds recent{1000};

    /// Bus and clock have to outlive it.
    UsbPrinters(UsbBus &bus, dispatch::Clock &clock) : bus_(bus), clock_(clock) {}

    std::vector<std::shared_ptr<Printer>> attached() override;
    std::vector<std::shared_ptr<Printer>> recentlyAttached() override;
    void forget() override;

private:
    std::shared_ptr<Printer> printerFor(const AttachedPrinter &attached) ZK_REQUIRES(mutex_);

    UsbBus &bus_;
    dispatch::Clock &clock_;

    locking::Mutex mutex_; // not held while the bus is looked at
    /// One per plugging-in, so that no device is opened twice.
    std::vector<std::weak_ptr<Printer>> known_ ZK_GUARDED_BY(mutex_);
    std::vector<std::shared_ptr<Printer>> latest_ ZK_GUARDED_BY(mutex_);
    dispatch::Instant latestEnd_ ZK_GUARDED_BY(mutex_); // when it stops being recent
};

} // namespace transport
