// An open printer and the bus it was opened on, as the transport needs them; implemented over libusb and by
// the fakes of the tests.
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
    std::size_t count = 0; // bytes moved, also when the rest failed
};

/// An open device file with the printer interface claimed. Destroying it gives the interface back to the
/// kernel and closes the file.
///
/// Threads: a send or receive may run beside requests, not beside another send or receive. Time-outs are
/// above 0. A stop ends each of them with TL_USB_ERROR_CANCELLED.
class UsbDevice {
public:
    UsbDevice() = default;
    UsbDevice(const UsbDevice &) = delete;
    UsbDevice &operator=(const UsbDevice &) = delete;
    virtual ~UsbDevice() = default;

    /// The most bytes a packet from the printer has.
    virtual std::size_t packetSize() const = 0;

    /// One bulk transfer. After a stall the endpoint is clear again.
    virtual Transferred send(std::span<const std::uint8_t> bytes, std::chrono::milliseconds timeout,
                             const std::stop_token &stop) = 0;
    /// The size of `buffer` is a multiple of the packet size. Ends with the first packet that is not full.
    virtual Transferred receive(std::span<std::uint8_t> buffer, std::chrono::milliseconds timeout,
                                const std::stop_token &stop) = 0;

    /// The requests of the printer class: one byte of status bits; the device ID with its length field.
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
    /// Whether that plugging-in lasts; takes less time than looking for all.
    virtual bool isAttached(const AttachedPrinter &printer) = 0;
    /// Takes the interface from the kernel's driver, but from no program. TL_USB_ERROR_NO_DEVICE when that
    /// plugging-in is over, also when its address is another's now. Blocks as long as the kernel does, which
    /// is seconds at most. Throws nothing but std::bad_alloc.
    virtual tl_usb_status open(const AttachedPrinter &printer, std::unique_ptr<UsbDevice> &device) = 0;
};

} // namespace transport
