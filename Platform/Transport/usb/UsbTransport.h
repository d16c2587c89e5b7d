// The handles of the C interface over the printers of a USB bus. See zkcomtl.h for what each operation
// promises.
//
// A caller may leave a handle open for good: the printer behind it is given back shortly after its last
// transfer, and opened again when the handle is used again. A small thread sees to that; it runs only while a
// device is open.
//
// Thread-safe. Printers do not wait for each other.
#pragma once

#include "Platform/Dispatch/Clock.h"
#include "Platform/Transport/usb/HeldPrinter.h"
#include "Platform/Transport/usb/UsbDevice.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace transport {

class UsbTransport {
public:
    /// Bus and clock outlive it.
    UsbTransport(UsbBus &bus, dispatch::Clock &clock);
    UsbTransport(const UsbTransport &) = delete;
    UsbTransport &operator=(const UsbTransport &) = delete;
    ~UsbTransport() { shutDown(); }

    tl_usb_status open(const std::string &uri, void *&handle);
    /// Ends a call in progress on the handle with TL_USB_ERROR_CANCELLED.
    tl_usb_status close(void *handle);
    /// Writes, then reads unless `buffer` is empty. `count` is 0 on failure.
    tl_usb_status transfer(void *handle, std::span<const uint8_t> bytes, std::span<uint8_t> buffer,
                           size_t &count, std::chrono::milliseconds timeout);
    tl_usb_status status(const std::string &uri, std::chrono::milliseconds timeout, std::string &text);

    /// Gives back every printer that has been idle long enough. When to look again; none when no device is
    /// open.
    std::optional<dispatch::Instant> retireIdle(dispatch::Instant now);

    /// Cancels what runs, waits for it, gives everything back and ends the thread. Later calls are cancelled
    /// at once.
    void shutDown();

private:
    struct OpenHandle {
        std::shared_ptr<HeldPrinter> printer;
        std::stop_source stop;
    };
    class Call;

    std::optional<OpenHandle> take(void *handle);
    std::vector<OpenHandle> takeIf(const std::function<bool(const AttachedPrinter &)> &matches);
    static void retire(OpenHandle &open);
    std::shared_ptr<HeldPrinter> held(const AttachedPrinter &printer);
    void watch();
    void runWatch();

    UsbBus &bus_;
    dispatch::Clock &clock_;

    std::mutex mutex_; // never held while a device is used, opened or closed
    std::map<void *, OpenHandle> handles_;
    std::vector<std::weak_ptr<HeldPrinter>> printers_; // one a plugged-in printer, so that it is opened once
    uintptr_t nextHandle_ = 1; // a number never given out twice: any value may come back from a caller
    int calls_ = 0;
    bool ended_ = false;
    bool watching_ = false;
    bool watchAgain_ = false;
    std::thread watcher_;
    std::condition_variable changed_;
};

} // namespace transport
