// Whole writes and whole transfers over the bulk endpoints of a printer.
#pragma once

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Transport/usb/UsbDevice.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stop_token>

namespace transport {

/// Writes all bytes within the time-out, or fails.
tl_usb_status writeAll(UsbDevice &device, std::span<const std::uint8_t> bytes,
                       std::chrono::milliseconds timeout, const std::stop_token &stop,
                       dispatch::Clock &clock);

/// Reads one transfer; `count` is 0 on failure. Skips empty packets, with growing pauses, as some printers
/// answer every request for data with one. A transfer longer than the buffer fills it and gives
/// TL_USB_ERROR_OVERFLOW, and its rest is read and dropped. When a transfer of whole packets just fills the
/// buffer, it counts as longer if more follows within 20 ms.
tl_usb_status readTransfer(UsbDevice &device, std::span<std::uint8_t> buffer, std::size_t &count,
                           std::chrono::milliseconds timeout, const std::stop_token &stop,
                           dispatch::Clock &clock);

} // namespace transport
