// The attached printers behind the C interface, as interfaces; implemented for a USB bus and for a folder of
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

/// One plugging-in of one printer: when the printer is plugged in again, that is another object. Uses no
/// resources until it is opened.
///
/// Statuses are those of zkcomtl.h; TL_USB_ERROR_NO_DEVICE means that this plugging-in is over. A stop ends a
/// waiting call with TL_USB_ERROR_CANCELLED. Time-outs are above 0. Threads: any; printers do not wait for
/// each other.
class Printer {
public:
    Printer() = default;
    Printer(const Printer &) = delete;
    Printer &operator=(const Printer &) = delete;
    virtual ~Printer() = default;

    virtual const ListedPrinter &listed() const = 0;

    virtual tl_usb_status open(const std::stop_token &stop) = 0;
    /// Writes all bytes, at least one, within the time-out, or fails.
    virtual tl_usb_status write(std::span<const std::uint8_t> bytes, std::chrono::milliseconds timeout,
                                const std::stop_token &stop) = 0;
    /// Reads one transfer; `count` is 0 on failure. The buffer is not empty. A longer transfer fills it and
    /// gives TL_USB_ERROR_OVERFLOW.
    virtual tl_usb_status read(std::span<std::uint8_t> buffer, std::size_t &count,
                               std::chrono::milliseconds timeout, const std::stop_token &stop) = 0;
    /// The status text of zkcomtl.h. The printer may be open or closed.
    virtual tl_usb_status status(std::string &text, std::chrono::milliseconds timeout,
                                 const std::stop_token &stop) = 0;
    /// No handle needs the printer any more. Returns when other programs can use it; while a call is in
    /// progress it returns at once, and the end of that call gives the printer back.
    virtual void giveBack() = 0;
};

class Printers {
public:
    Printers() = default;
    Printers(const Printers &) = delete;
    Printers &operator=(const Printers &) = delete;
    virtual ~Printers() = default;

    /// The printers attached now.
    virtual std::vector<std::shared_ptr<Printer>> attached() = 0;
    /// The printers attached a moment ago, where looking takes time. One that has gone since gives
    /// TL_USB_ERROR_NO_DEVICE when it is opened or asked.
    virtual std::vector<std::shared_ptr<Printer>> recentlyAttached() { return attached(); }
    /// Releases what is remembered, including threads: the library may be about to be unloaded.
    virtual void forget() {}
};

/// The printers of this library; lives as long as the process.
Printers &libraryPrinters();

} // namespace transport
