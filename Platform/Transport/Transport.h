// Implements the operations of the C interface, whose header says what they promise, for the printers of a
// library.
//
// Thread-safe. Printers do not wait for each other.
#pragma once

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Locking/Condition.h"
#include "Platform/Transport/Printer.h"
#include "Platform/Transport/ReadLimit.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

namespace transport {

class Transport {
public:
    /// Printers and clock have to outlive it.
    Transport(Printers &printers, dispatch::Clock &clock);
    Transport(const Transport &) = delete;
    Transport &operator=(const Transport &) = delete;
    ~Transport() { shutDown(); }

    std::vector<tl_usb_device_info> list(std::int32_t vid);
    tl_usb_status status(const std::string &uri, std::chrono::milliseconds timeout, std::string &text);
    tl_usb_status open(const std::string &uri, void *&handle);
    /// Ends a call in progress on the handle with TL_USB_ERROR_CANCELLED.
    tl_usb_status close(void *handle);
    /// Writes, then reads, each unless its span is empty. `count` is 0 on failure.
    tl_usb_status transfer(void *handle, std::span<const std::uint8_t> bytes, std::span<std::uint8_t> buffer,
                           std::size_t &count, std::chrono::milliseconds timeout);

    /// Cancels the calls in progress, waits for them and gives every printer back. Later calls are cancelled
    /// at once. The first call does this; concurrent ones wait for it.
    void shutDown();

private:
    struct Handle {
        std::shared_ptr<Printer> printer{};
        std::stop_source stop{};
        locking::Mutex turn{}; // held during a transfer
        ReadLimit reads ZK_GUARDED_BY(turn){};
    };
    using Handles = std::vector<std::shared_ptr<Handle>>;
    class Call;

    std::vector<std::shared_ptr<Printer>> attached();
    tl_usb_status withPrinter(const std::string &uri,
                              const std::function<tl_usb_status(const std::shared_ptr<Printer> &)> &use);
    tl_usb_status open(const std::shared_ptr<Printer> &printer, void *&handle);
    tl_usb_status read(Handle &handle, std::span<std::uint8_t> buffer, std::size_t &count,
                       std::chrono::milliseconds timeout) ZK_REQUIRES(handle.turn);
    Handles takeIf(const std::function<bool(const ListedPrinter &)> &matches) ZK_EXCLUDES(mutex_);
    static void stop(const Handles &handles);
    static void retire(const Handles &handles);

    Printers &printers_;
    dispatch::Clock &clock_;
    std::stop_source end_; // stops the calls that have no handle
    std::once_flag shutDown_;

    locking::Mutex mutex_; // never held while a printer is used
    std::map<void *, std::shared_ptr<Handle>> handles_ ZK_GUARDED_BY(mutex_);
    /// A number that is never used twice, as callers may pass any value.
    std::uintptr_t nextHandle_ ZK_GUARDED_BY(mutex_) = 1;
    int calls_ ZK_GUARDED_BY(mutex_) = 0;
    locking::Condition lastCallEnded_;
};

} // namespace transport
