#include "Platform/Transport/usb/UsbTransport.h"

#include "Platform/Transport/DeviceRecords.h"
#include "Platform/Transport/usb/BulkTransfer.h"
#include "Platform/Transport/usb/DeviceId.h"
#include "Platform/Transport/usb/StatusText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace transport {

using dispatch::Instant;
using std::chrono::milliseconds;

// Keeps `shutDown` waiting.
class UsbTransport::Call {
public:
    explicit Call(UsbTransport &transport) : transport_(transport) {
        const std::lock_guard lock(transport_.mutex_);
        ++transport_.calls_;
        allowed_ = !transport_.ended_;
    }
    Call(const Call &) = delete;
    Call &operator=(const Call &) = delete;
    ~Call() {
        const std::lock_guard lock(transport_.mutex_);
        if (--transport_.calls_ == 0) {
            transport_.changed_.notify_all();
        }
    }

    bool allowed() const { return allowed_; }

private:
    UsbTransport &transport_;
    bool allowed_;
};

UsbTransport::UsbTransport(UsbBus &bus, dispatch::Clock &clock) : bus_(bus), clock_(clock) {}

tl_usb_status UsbTransport::open(const std::string &uri, void *&handle) {
    handle = nullptr;
    const Call call(*this);
    if (!call.allowed()) {
        return TL_USB_ERROR_CANCELLED;
    }
    const std::vector<AttachedPrinter> attached = bus_.printers();
    for (OpenHandle &left : takeIf([&](const AttachedPrinter &printer) {
             return std::ranges::none_of(attached, [&](const auto &p) { return p.isSamePlugging(printer); });
         })) {
        retire(left);
    }
    const std::vector<AttachedPrinter> named = attachedPrintersNamed(uri, attached);
    if (named.size() != 1) {
        return statusOfNamed(named.size());
    }
    const AttachedPrinter &printer = named.front();
    const std::shared_ptr<HeldPrinter> holding = held(printer);
    for (OpenHandle &earlier : takeIf([&](const AttachedPrinter &p) { return p.isSamePlugging(printer); })) {
        earlier.stop.request_stop();
    }
    const tl_usb_status status = holding->transfer([](UsbDevice &) { return TL_USB_OK; });
    if (status != TL_USB_OK) {
        return status;
    }
    const std::lock_guard lock(mutex_);
    watch();
    for (auto &[earlier, open] : handles_) { // opened meanwhile
        if (open.printer == holding) {
            open.stop.request_stop();
        }
    }
    std::erase_if(handles_, [&](const auto &open) { return open.second.printer == holding; });
    void *const number = std::bit_cast<void *>(nextHandle_++);
    handles_.emplace(number, OpenHandle{.printer = holding, .stop = {}});
    handle = number;
    return TL_USB_OK;
}

tl_usb_status UsbTransport::close(void *handle) {
    std::optional<OpenHandle> open = take(handle);
    if (!open) {
        return TL_USB_ERROR_INVALID;
    }
    retire(*open);
    return TL_USB_OK;
}

tl_usb_status UsbTransport::transfer(void *handle, std::span<const uint8_t> bytes, std::span<uint8_t> buffer,
                                     size_t &count, milliseconds timeout) {
    count = 0;
    const Call call(*this);
    if (!call.allowed()) {
        return TL_USB_ERROR_CANCELLED;
    }
    OpenHandle open;
    {
        const std::lock_guard lock(mutex_);
        const auto found = handles_.find(handle);
        if (found == handles_.end()) {
            return TL_USB_ERROR_INVALID;
        }
        open = found->second;
    }
    const tl_usb_status status = open.printer->transfer([&](UsbDevice &device) {
        const tl_usb_status written = writeAll(device, bytes, timeout, open.stop.get_token());
        if (written != TL_USB_OK || buffer.empty()) {
            return written;
        }
        return readTransfer(device, buffer, count, timeout, open.stop.get_token(), clock_);
    });
    const std::lock_guard lock(mutex_);
    if (status == TL_USB_ERROR_NO_DEVICE) {
        handles_.erase(handle);
    }
    watch();
    return status;
}

tl_usb_status UsbTransport::status(const std::string &uri, milliseconds timeout, std::string &text) {
    const Call call(*this);
    if (!call.allowed()) {
        return TL_USB_ERROR_CANCELLED;
    }
    const std::vector<AttachedPrinter> named = attachedPrintersNamed(uri, bus_.printers());
    if (named.size() != 1) {
        return statusOfNamed(named.size());
    }
    const Instant deadline = clock_.now() + timeout;
    const auto remaining = [&] {
        return std::max(std::chrono::ceil<milliseconds>(deadline - clock_.now()), milliseconds(1));
    };
    return held(named.front())->request([&](UsbDevice &device) {
        uint8_t bits = 0;
        const auto [status, length] = device.portStatus(bits, remaining());
        if (status != TL_USB_OK || length == 0) {
            return status == TL_USB_OK ? TL_USB_ERROR_IO : status;
        }
        std::array<uint8_t, 4096> reply;
        const Transferred id = device.deviceId(reply, remaining()); // an extra: the status stands without it
        text = statusText(bits, parseDeviceId(deviceIdText({reply.data(), id.count})));
        return TL_USB_OK;
    });
}

std::optional<Instant> UsbTransport::retireIdle(Instant now) {
    std::vector<std::shared_ptr<HeldPrinter>> holdings;
    {
        const std::lock_guard lock(mutex_);
        for (const auto &weak : printers_) {
            if (auto holding = weak.lock()) {
                holdings.push_back(std::move(holding));
            }
        }
    }
    std::optional<Instant> next;
    for (const auto &holding : holdings) {
        if (const std::optional<Instant> due = holding->giveBackIfIdle(now)) {
            next = std::min(next.value_or(*due), *due);
        }
    }
    return next;
}

void UsbTransport::shutDown() {
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
        changed_.notify_all();
    }
    for (OpenHandle &open : takeIf([](const AttachedPrinter &) { return true; })) {
        retire(open);
    }
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return calls_ == 0; });
    std::thread watcher = std::move(watcher_);
    lock.unlock();
    if (watcher.joinable()) {
        watcher.join();
    }
    for (OpenHandle &late : takeIf([](const AttachedPrinter &) { return true; })) {
        retire(late); // opened while the calls were waited for
    }
}

std::optional<UsbTransport::OpenHandle> UsbTransport::take(void *handle) {
    const std::lock_guard lock(mutex_);
    auto node = handles_.extract(handle);
    return node ? std::optional(std::move(node.mapped())) : std::nullopt;
}

std::vector<UsbTransport::OpenHandle>
UsbTransport::takeIf(const std::function<bool(const AttachedPrinter &)> &matches) {
    const std::lock_guard lock(mutex_);
    std::vector<OpenHandle> taken;
    std::erase_if(handles_, [&](auto &entry) {
        const bool match = matches(entry.second.printer->printer());
        if (match) {
            taken.push_back(std::move(entry.second));
        }
        return match;
    });
    return taken;
}

void UsbTransport::retire(OpenHandle &open) {
    open.stop.request_stop();
    open.printer->giveBack();
}

std::shared_ptr<HeldPrinter> UsbTransport::held(const AttachedPrinter &printer) {
    const std::lock_guard lock(mutex_);
    std::erase_if(printers_, [](const auto &weak) { return weak.expired(); });
    for (const auto &weak : printers_) {
        if (auto holding = weak.lock(); holding && holding->printer().isSamePlugging(printer)) {
            return holding;
        }
    }
    auto holding = std::make_shared<HeldPrinter>(printer, bus_, clock_);
    printers_.push_back(holding);
    return holding;
}

// With mutex_ held.
void UsbTransport::watch() {
    watchAgain_ = true;
    if (watching_ || ended_) {
        return;
    }
    if (watcher_.joinable()) {
        watcher_.join(); // it has let go of the mutex for the last time
    }
    watcher_ = std::thread([this] { runWatch(); });
    watching_ = true; // not before: there may be no thread to be had
}

void UsbTransport::runWatch() {
    std::unique_lock lock(mutex_);
    while (!ended_) {
        watchAgain_ = false;
        lock.unlock();
        const std::optional<Instant> next = retireIdle(clock_.now());
        lock.lock();
        if (!next && !watchAgain_) {
            break;
        }
        if (next && !ended_) {
            clock_.waitUntil(lock, changed_, *next);
        }
    }
    watching_ = false;
}

} // namespace transport
