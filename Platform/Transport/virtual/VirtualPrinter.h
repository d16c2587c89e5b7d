// A simulated printer: bytes in, transfers out.
//
//   VirtualPrinter printer(state, [&](int32_t threshold) { return save(threshold); });
//   printer.open();
//   printer.write(request);                 // a PJL envelope around an ACL frame, split anywhere
//   std::vector<uint8_t> transfer;
//   while (printer.read(transfer) == TL_USB_OK) { ... }
//
// A reply is one header transfer of 8 bytes, all fields big-endian, and, when it announces data, one data
// transfer:
//
//   00 AC | command echoed, 2 | status, 2 (1: done, 2: refused) | length of the data, 2
//
// | command | data of the request                                | reply                       |
// |---------|----------------------------------------------------|-----------------------------|
// | 0xFF21  | <!--#ssi IDr OID_PLATFORM_CONSUMEABLE_HINT -->      | threshold in decimal text   |
// | 0xFF20  | OID_PLATFORM_CONSUMEABLE_HINT=N, N one of 0, 2..10  | no data; N is stored        |
// | other   |                                                    | refused, no data            |
//
// Does no I/O and takes no time: a read without a waiting transfer times out at once. Requests may be
// hostile; at most 64 unread transfers are kept, further ones are dropped. Not thread-safe.
#pragma once

#include "Platform/Transport/virtual/AclInterpreter.h"
#include "Platform/Transport/virtual/VirtualPrinterState.h"
#include "Platform/Transport/zkcomtl.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace transport {

class VirtualPrinter {
public:
    /// Called with each new threshold that differs from the old one; false refuses it. An empty one accepts
    /// all.
    using ThresholdStore = std::function<bool(std::int32_t threshold)>;

    explicit VirtualPrinter(VirtualPrinterState state, ThresholdStore store = {});

    const VirtualPrinterState &state() const { return state_; }
    /// Takes effect with the next call; waiting transfers stay.
    void setState(VirtualPrinterState state) { state_ = std::move(state); }

    /// Drops half-received requests and unread replies, and plugs an unplugged printer in again.
    tl_usb_status open();
    tl_usb_status write(std::span<const std::uint8_t> bytes);
    /// Takes the next transfer; `transfer` is empty when there is none.
    tl_usb_status read(std::vector<std::uint8_t> &transfer);

private:
    struct Transfer {
        std::vector<std::uint8_t> bytes;
        bool unplugs = false; // the printer is gone once this has been read
    };

    void answer(const AclFrame &request);
    bool storeThreshold(std::string_view request);
    void reply(std::uint16_t command, std::uint16_t status, std::string_view data);
    void queue(Transfer transfer);
    void queueText(std::string_view text);

    VirtualPrinterState state_;
    ThresholdStore store_;
    AclInterpreter interpreter_;
    std::deque<Transfer> output_;
    bool unplugged_ = false;
};

} // namespace transport
