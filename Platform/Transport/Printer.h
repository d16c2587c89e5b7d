// What lies behind the C interface: the attached printers. Implemented over a USB bus and over a folder of
// files.
#pragma once

#include "Platform/Transport/ListedPrinter.h"
#include "Platform/Transport/zkcomtl.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

namespace transport {

/// One plugging-in of one printer: plugged in anew, it is another. Costs nothing until it is opened.
///
/// Statuses are those of zkcomtl.h; TL_USB_ERROR_NO_DEVICE says that this plugging-in is over. A stop ends a
/// call that waits with TL_USB_ERROR_CANCELLED. Time-outs are above 0. Threads: every member may be called
/// from any thread; printers do not wait for each other.
class Printer {
public:
    Printer() = default;
    Printer(const Printer &) = delete;
    Printer &operator=(const Printer &) = delete;
    virtual ~Printer() = default;

    virtual const ListedPrinter &listed() const = 0;

    virtual tl_usb_status open(const std::stop_token &stop) = 0;
    /// Writes all bytes, of which there are some, within the time-out.
    virtual tl_usb_status write(std::span<const std::uint8_t> bytes, std::chrono::milliseconds timeout,
                                const std::stop_token &stop) = 0;
    /// Reads one transfer; `count` is 0 on failure. A transfer longer than the buffer, which is not empty,
    /// fills it.
    virtual tl_usb_status read(std::span<std::uint8_t> buffer, std::size_t &count,
                               std::chrono::milliseconds timeout, const std::stop_token &stop) = 0;
    /// Works open and closed.
    virtual tl_usb_status status(std::string &text, std::chrono::milliseconds timeout,
                                 const std::stop_token &stop) = 0;
    /// No handle needs it any more; returns when everybody else can use it, or, while a call is in progress,
    /// at once: then the end of that call gives it back.
    virtual void giveBack() = 0;
};

class Printers {
public:
    Printers() = default;
    Printers(const Printers &) = delete;
    Printers &operator=(const Printers &) = delete;
    virtual ~Printers() = default;

    /// Those attached now.
    virtual std::vector<std::shared_ptr<Printer>> attached() = 0;
    /// Those attached a moment ago, where finding out takes time: one that has gone since gives
    /// TL_USB_ERROR_NO_DEVICE when it is opened or asked.
    virtual std::vector<std::shared_ptr<Printer>> recentlyAttached() { return attached(); }
    /// Lets go of what it remembers, threads and all: the library may be about to end.
    virtual void forget() {}
};

/// The printers of this library; lives as long as the process.
Printers &libraryPrinters();

} // namespace transport
