// An open printer and its bus, as interfaces; implemented with libusb and by the fakes of the tests.
#pragma once

#include "Platform/Transport/usb/AttachedPrinter.h"
#include "Platform/Transport/zkcomtl.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>
#include <vector>

namespace transport {

struct Transferred {
    tl_usb_status status = TL_USB_OK;
    std::size_t count = 0; // bytes transferred, also when the rest failed
};

/// An open device file with the printer interface claimed. Destroying it gives the interface back to the
/// kernel and closes the file.
///
/// Threads: one send or receive at a time; requests may run beside it. Time-outs are above 0. A stop ends
/// each call with TL_USB_ERROR_CANCELLED.
class UsbDevice {
public:
    UsbDevice() = default;
    UsbDevice(const UsbDevice &) = delete;
    UsbDevice &operator=(const UsbDevice &) = delete;
    virtual ~UsbDevice() = default;

    /// The size of a full packet from the printer, in bytes.
    virtual std::size_t packetSize() const = 0;

    /// One bulk transfer. A stall is cleared before this returns.
    virtual Transferred send(std::span<const std::uint8_t> bytes, std::chrono::milliseconds timeout,
                             const std::stop_token &stop) = 0;
    /// The size of `buffer` is a multiple of the packet size. Ends with the first packet that is not full.
    virtual Transferred receive(std::span<std::uint8_t> buffer, std::chrono::milliseconds timeout,
                                const std::stop_token &stop) = 0;

    /// Requests of the printer class: one byte of status bits; the device ID with its length field.
    virtual Transferred portStatus(std::uint8_t &bits, std::chrono::milliseconds timeout,
                                   const std::stop_token &stop) = 0;
    virtual Transferred deviceId(std::span<std::uint8_t> buffer, std::chrono::milliseconds timeout,
                                 const std::stop_token &stop) = 0;
};

class UsbBus {
public:
    UsbBus() = default;
    UsbBus(const UsbBus &) = delete;
    UsbBus &operator=(const UsbBus &) = delete;
    virtual ~UsbBus() = default;

    virtual std::vector<AttachedPrinter> printers() = 0;
    /// Whether that plugging-in is still there; cheaper than `printers`.
    virtual bool isAttached(const AttachedPrinter &printer) = 0;
    /// Takes the interface from the kernel's driver, but not from a program. TL_USB_ERROR_NO_DEVICE when that
    /// plugging-in is over, even if another device has its address now. Blocks as long as the kernel does, a
    /// few seconds at most. Throws only std::bad_alloc.
    virtual tl_usb_status open(const AttachedPrinter &printer, std::unique_ptr<UsbDevice> &device) = 0;
};

} // namespace transport
