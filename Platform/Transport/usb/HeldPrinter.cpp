#include "Platform/Transport/usb/HeldPrinter.h"

#include <algorithm>
#include <utility>

namespace transport {

using dispatch::Instant;

HeldPrinter::HeldPrinter(AttachedPrinter printer, UsbBus &bus, dispatch::Clock &clock)
    : printer_(std::move(printer)), bus_(bus), clock_(clock) {}

tl_usb_status HeldPrinter::transfer(const Work &work) {
    const std::lock_guard lock(transfer_);
    return use(work, true);
}

tl_usb_status HeldPrinter::request(const Work &work) {
    return use(work, false);
}

tl_usb_status HeldPrinter::use(const Work &work, bool keep) {
    if (const tl_usb_status status = begin(keep); status != TL_USB_OK) {
        return status;
    }
    tl_usb_status status = TL_USB_ERROR_NO_MEMORY;
    struct Ending {
        HeldPrinter &held;
        const tl_usb_status &status;
        ~Ending() { held.end(status); }
    } const ending{*this, status};
    status = work(*device_); // which stays while there are users
    return status;
}

tl_usb_status HeldPrinter::begin(bool keep) {
    const std::lock_guard lock(mutex_);
    if (!device_) {
        keep_ = false;
        // An address is given out again; what is there now must be the printer that was there.
        const std::vector<AttachedPrinter> printers = bus_.printers();
        if (std::ranges::none_of(printers, [this](const auto &p) { return p.isSamePlugging(printer_); })) {
            return TL_USB_ERROR_NO_DEVICE;
        }
        if (const tl_usb_status status = bus_.open(printer_, device_); status != TL_USB_OK) {
            return status;
        }
    }
    keep_ = keep_ || keep;
    ++users_;
    return TL_USB_OK;
}

void HeldPrinter::end(tl_usb_status status) {
    const std::lock_guard lock(mutex_);
    lastUse_ = clock_.now();
    keep_ = keep_ && status != TL_USB_ERROR_NO_DEVICE;
    if (--users_ == 0 && !keep_) {
        device_.reset();
    }
}

void HeldPrinter::giveBack() {
    const std::lock_guard lock(mutex_);
    keep_ = false;
    if (users_ == 0) {
        device_.reset();
    }
}

std::optional<Instant> HeldPrinter::giveBackIfIdle(Instant now) {
    const std::lock_guard lock(mutex_);
    if (users_ == 0 && now >= lastUse_ + idleTime) {
        device_.reset();
    }
    if (!device_) {
        return std::nullopt;
    }
    return users_ == 0 ? lastUse_ + idleTime : now + idleTime;
}

} // namespace transport
