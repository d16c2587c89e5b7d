#include "Platform/Transport/usb/IdleClosingPrinter.h"

#include "Platform/Transport/usb/BulkTransfer.h"
#include "Platform/Transport/usb/DeviceId.h"
#include "Platform/Transport/usb/StatusText.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

namespace transport {

using dispatch::Instant;
using std::chrono::milliseconds;

IdleClosingPrinter::IdleClosingPrinter(const AttachedPrinter &printer, UsbBus &bus, dispatch::Clock &clock)
    : printer_(printer), listed_(printer.listed()), bus_(bus), clock_(clock) {}

IdleClosingPrinter::~IdleClosingPrinter() {
    giveBack();
    if (watcher_.joinable())
        watcher_.join();
}

tl_usb_status IdleClosingPrinter::open(const std::stop_token &stop) {
    // The device may still be open from before, although the printer has gone.
    return transfer(
        stop, [&](UsbDevice &) { return bus_.isAttached(printer_) ? TL_USB_OK : TL_USB_ERROR_NO_DEVICE; });
}

tl_usb_status IdleClosingPrinter::write(std::span<const std::uint8_t> bytes, milliseconds timeout,
                                        const std::stop_token &stop) {
    return transfer(stop, [&](UsbDevice &device) { return writeAll(device, bytes, timeout, stop, clock_); });
}

tl_usb_status IdleClosingPrinter::read(std::span<std::uint8_t> buffer, std::size_t &count,
                                       milliseconds timeout, const std::stop_token &stop) {
    count = 0;
    return transfer(
        stop, [&](UsbDevice &device) { return readTransfer(device, buffer, count, timeout, stop, clock_); });
}

tl_usb_status IdleClosingPrinter::status(std::string &text, milliseconds timeout,
                                         const std::stop_token &stop) {
    const Instant deadline = clock_.now() + timeout;
    const auto remaining = [&] {
        return std::max(std::chrono::ceil<milliseconds>(deadline - clock_.now()), milliseconds(1));
    };
    return use(false, stop, [&](UsbDevice &device) {
        std::uint8_t bits = 0;
        const auto [status, length] = device.portStatus(bits, remaining(), stop);
        if (status != TL_USB_OK || length == 0) {
            return status == TL_USB_OK ? TL_USB_ERROR_IO : status;
        }
        std::array<std::uint8_t, 4096> reply;
        // Optional: without it the status is complete, too.
        const Transferred id = device.deviceId(reply, remaining(), stop);
        text = statusText(bits, parseDeviceId(deviceIdText({reply.data(), id.count})));
        return TL_USB_OK;
    });
}

void IdleClosingPrinter::giveBack() {
    const locking::MutexLock lock(mutex_);
    keep_ = false;
    if (state_ == State::open && users_ == 0)
        closeDevice();
    while (state_ == State::closing)
        changed_.wait(mutex_);
}

tl_usb_status IdleClosingPrinter::transfer(const std::stop_token &stop, const Work &work) {
    const locking::MutexLock lock(transfer_);
    return use(true, stop, work);
}

tl_usb_status IdleClosingPrinter::use(bool keep, const std::stop_token &stop, const Work &work) {
    UsbDevice *device = nullptr;
    if (const tl_usb_status status = begin(keep, stop, device); status != TL_USB_OK)
        return status;
    tl_usb_status status = TL_USB_ERROR_NO_MEMORY;
    struct Ending {
        IdleClosingPrinter &held;
        const tl_usb_status &status;
        ~Ending() { held.end(status); }
    } const ending{*this, status};
    status = work(*device); // not closed while there are users
    return status;
}

tl_usb_status IdleClosingPrinter::begin(bool keep, const std::stop_token &stop, UsbDevice *&device) {
    const locking::MutexLock lock(mutex_);
    while (state_ != State::closed && state_ != State::open)
        changed_.wait(mutex_);
    if (stop.stop_requested())
        return TL_USB_ERROR_CANCELLED;
    if (state_ == State::closed) {
        keep_ = false;
        if (const tl_usb_status status = openDevice(); status != TL_USB_OK)
            return status;
    }
    ++users_;
    device = device_.get();
    keep_ = keep_ || (keep && !stop.stop_requested()); // whoever stopped it has given the printer back
    return TL_USB_OK;
}

void IdleClosingPrinter::end(tl_usb_status status) {
    const locking::MutexLock lock(mutex_);
    lastUse_ = clock_.now();
    keep_ = keep_ && status != TL_USB_ERROR_NO_DEVICE;
    const bool last = --users_ == 0;
    if (last && !(keep_ && watch()))
        closeDevice();
}

tl_usb_status IdleClosingPrinter::openDevice() {
    become(State::opening);
    std::unique_ptr<UsbDevice> device;
    tl_usb_status status = TL_USB_ERROR_NO_MEMORY;
    try {
        const locking::MutexUnlock released(mutex_);
        status = bus_.open(printer_, device);
    } catch (const std::bad_alloc
                 &) { // nothing else is thrown; threads that wait for the opening must learn of its end
    }
    device_ = std::move(device);
    become(status == TL_USB_OK ? State::open : State::closed);
    return status;
}

void IdleClosingPrinter::closeDevice() {
    become(State::closing);
    std::unique_ptr<UsbDevice> device = std::move(device_);
    {
        const locking::MutexUnlock released(mutex_);
        device.reset();
    }
    become(State::closed);
}

void IdleClosingPrinter::become(State state) {
    state_ = state;
    changed_.notifyAll();
}

// False when the system has no thread left.
bool IdleClosingPrinter::watch() {
    if (watching_)
        return true;
    if (watcher_.joinable())
        watcher_.join(); // it has released the mutex for the last time, so this does not wait for it
    try {
        watcher_ = std::thread([this] { runWatch(); });
    } catch (const std::system_error &) {
        return false;
    }
    watching_ = true;
    return true;
}

void IdleClosingPrinter::runWatch() {
    const locking::MutexLock lock(mutex_);
    while (state_ == State::open) {
        const Instant now = clock_.now();
        const Instant due = (users_ == 0 ? lastUse_ : now) + idleTime;
        if (now >= due)
            closeDevice();
        else
            clock_.waitUntil(mutex_, changed_, due);
    }
    watching_ = false;
}

} // namespace transport
