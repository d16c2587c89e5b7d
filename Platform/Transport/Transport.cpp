#include "Platform/Transport/Transport.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace transport {

using std::chrono::milliseconds;

// A call in progress, for which `shutDown` waits.
class Transport::Call {
public:
    explicit Call(Transport &transport) : transport_(transport) {
        const locking::MutexLock lock(transport_.mutex_);
        ++transport_.calls_;
        allowed_ = !transport_.end_.stop_requested();
    }
    Call(const Call &) = delete;
    Call &operator=(const Call &) = delete;
    ~Call() {
        const locking::MutexLock lock(transport_.mutex_);
        if (--transport_.calls_ == 0)
            transport_.lastCallEnded_.notifyAll();
    }

    bool allowed() const { return allowed_; }

private:
    Transport &transport_;
    bool allowed_;
};

Transport::Transport(Printers &printers, dispatch::Clock &clock) : printers_(printers), clock_(clock) {}

std::vector<tl_usb_device_info> Transport::list(std::int32_t vid) {
    std::vector<tl_usb_device_info> records;
    const Call call(*this);
    if (!call.allowed())
        return records;
    for (const auto &printer : attached())
        if (const ListedPrinter &listed = printer->listed(); listed.vid == vid)
            records.push_back(listed.record());
    return records;
}

tl_usb_status Transport::status(const std::string &uri, milliseconds timeout, std::string &text) {
    const Call call(*this);
    return !call.allowed() ? TL_USB_ERROR_CANCELLED : withPrinter(uri, [&](const auto &printer) {
        return printer->status(text, timeout, end_.get_token());
    });
}

tl_usb_status Transport::open(const std::string &uri, void *&handle) {
    handle = nullptr;
    const Call call(*this);
    return !call.allowed() ? TL_USB_ERROR_CANCELLED
                           : withPrinter(uri, [&](const auto &printer) { return open(printer, handle); });
}

tl_usb_status Transport::open(const std::shared_ptr<Printer> &printer, void *&handle) {
    const std::string &plugging = printer->listed().plugging;
    const auto isSame = [&](const ListedPrinter &other) { return other.plugging == plugging; };
    stop(takeIf(isSame)); // so that opening does not wait for a call on the earlier handle
    const tl_usb_status status = printer->open(end_.get_token());
    if (status != TL_USB_OK) {
        printer->giveBack(); // an earlier handle may have left it open
        return status;
    }
    stop(takeIf(isSame)); // handles opened meanwhile
    const auto opened = std::make_shared<Handle>();
    opened->printer = printer;
    const locking::MutexLock lock(mutex_);
    void *const number = std::bit_cast<void *>(nextHandle_++);
    handles_.emplace(number, opened);
    handle = number;
    return TL_USB_OK;
}

tl_usb_status Transport::close(void *handle) {
    Handles closed;
    {
        const locking::MutexLock lock(mutex_);
        if (auto node = handles_.extract(handle))
            closed.push_back(std::move(node.mapped()));
    }
    retire(closed);
    return closed.empty() ? TL_USB_ERROR_INVALID : TL_USB_OK;
}

tl_usb_status Transport::transfer(void *handle, std::span<const std::uint8_t> bytes,
                                  std::span<std::uint8_t> buffer, std::size_t &count, milliseconds timeout) {
    count = 0;
    const Call call(*this);
    if (!call.allowed())
        return TL_USB_ERROR_CANCELLED;
    std::shared_ptr<Handle> open;
    {
        const locking::MutexLock lock(mutex_);
        const auto found = handles_.find(handle);
        if (found == handles_.end())
            return TL_USB_ERROR_INVALID;
        open = found->second;
    }
    tl_usb_status status = TL_USB_OK;
    {
        const locking::MutexLock turn(open->turn);
        if (!bytes.empty()) {
            status = open->printer->write(bytes, timeout, open->stop.get_token());
            open->reads.written();
        }
        if (status == TL_USB_OK && !buffer.empty())
            status = read(*open, buffer, count, timeout);
    }
    if (status == TL_USB_ERROR_NO_DEVICE) {
        const locking::MutexLock lock(mutex_);
        handles_.erase(handle);
    }
    return status;
}

tl_usb_status Transport::read(Handle &handle, std::span<std::uint8_t> buffer, std::size_t &count,
                              milliseconds timeout) {
    const auto allowed = handle.reads.begin(clock_.now(), timeout);
    return !allowed
               ? TL_USB_ERROR_ENDLESS
               : handle.reads.end(handle.printer->read(buffer, count, *allowed, handle.stop.get_token()));
}

void Transport::shutDown() {
    std::call_once(shutDown_, [this] {
        end_.request_stop();
        retire(takeIf([](const ListedPrinter &) { return true; }));
        {
            const locking::MutexLock lock(mutex_);
            while (calls_ > 0)
                lastCallEnded_.wait(mutex_);
        }
        retire(takeIf([](const ListedPrinter &) { return true; })); // opened while the calls were waited for
        printers_.forget();
    });
}

// Drops handles to printers that have gone. A call in progress fails by itself.
std::vector<std::shared_ptr<Printer>> Transport::attached() {
    std::vector<std::shared_ptr<Printer>> printers = printers_.attached();
    const auto hasGone = [&](const ListedPrinter &left) {
        return std::ranges::none_of(
            printers, [&](const auto &printer) { return printer->listed().plugging == left.plugging; });
    };
    for (const auto &left : takeIf(hasGone))
        left->printer->giveBack();
    return printers;
}

tl_usb_status
Transport::withPrinter(const std::string &uri,
                       const std::function<tl_usb_status(const std::shared_ptr<Printer> &)> &use) {
    const auto isNamed = [&](const auto &printer) { return printer->listed().isNamed(uri); };
    if (const auto named = namedOf(printers_.recentlyAttached(), isNamed); named.size() == 1) {
        if (const tl_usb_status status = use(named.front()); status != TL_USB_ERROR_NO_DEVICE)
            return status;
    }
    const auto named = namedOf(attached(), isNamed);
    return named.size() == 1 ? use(named.front())
           : named.empty()   ? TL_USB_ERROR_NO_DEVICE
                             : TL_USB_ERROR_AMBIGUOUS;
}

Transport::Handles Transport::takeIf(const std::function<bool(const ListedPrinter &)> &matches) {
    const locking::MutexLock lock(mutex_);
    Handles taken;
    std::erase_if(handles_, [&](const auto &entry) {
        const bool match = matches(entry.second->printer->listed());
        if (match)
            taken.push_back(entry.second);
        return match;
    });
    return taken;
}

void Transport::stop(const Handles &handles) {
    for (const auto &handle : handles)
        handle->stop.request_stop();
}

void Transport::retire(const Handles &handles) {
    stop(handles);
    for (const auto &handle : handles)
        handle->printer->giveBack();
}

} // namespace transport
