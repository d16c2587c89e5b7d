#include "Platform/Transport/usb/BulkTransfer.h"

#include "Platform/Locking/Condition.h"

#include <algorithm>
#include <vector>

namespace transport {

namespace {

using dispatch::Clock;
using dispatch::Instant;
using std::chrono::milliseconds;

constexpr std::size_t chunkSize = 16384; // whole packets of every speed
constexpr milliseconds continuation{20};
constexpr milliseconds longestPause{16};

milliseconds remaining(Clock &clock, Instant deadline) {
    return std::max(std::chrono::ceil<milliseconds>(deadline - clock.now()), milliseconds(1));
}

void waitUntil(Clock &clock, Instant instant) {
    locking::Mutex mutex;
    locking::Condition never;
    const locking::MutexLock lock(mutex);
    while (clock.waitUntil(mutex, never, instant)) {
    }
}

// Drops what follows a transfer that filled the buffer; true when there was more.
bool dropsRest(UsbDevice &device, std::span<std::uint8_t> scratch, Instant deadline,
               const std::stop_token &stop, Clock &clock) {
    bool dropped = false;
    for (std::size_t count = scratch.size(); count == scratch.size() && clock.now() < deadline;) {
        count = device.receive(scratch, std::min(continuation, remaining(clock, deadline)), stop).count;
        dropped = dropped || count > 0;
    }
    return dropped;
}

} // namespace

tl_usb_status writeAll(UsbDevice &device, std::span<const std::uint8_t> bytes, milliseconds timeout,
                       const std::stop_token &stop, Clock &clock) {
    const Instant deadline = clock.now() + timeout;
    while (!bytes.empty()) {
        const auto [status, count] =
            device.send(bytes.first(std::min(bytes.size(), chunkSize)), remaining(clock, deadline), stop);
        const bool progress = count > 0 && (status == TL_USB_OK || status == TL_USB_ERROR_TIMEOUT);
        if (!progress)
            return status == TL_USB_OK ? TL_USB_ERROR_IO : status;
        bytes = bytes.subspan(count);
        if (!bytes.empty() && clock.now() >= deadline)
            return TL_USB_ERROR_TIMEOUT;
    }
    return TL_USB_OK;
}

tl_usb_status readTransfer(UsbDevice &device, std::span<std::uint8_t> buffer, std::size_t &count,
                           milliseconds timeout, const std::stop_token &stop, Clock &clock) {
    count = 0;
    const std::size_t packet = device.packetSize();
    std::vector<std::uint8_t> packets((buffer.size() + packet - 1) / packet * packet);
    const Instant deadline = clock.now() + timeout;
    for (milliseconds pause{0};; pause = std::min(pause * 2 + milliseconds(1), longestPause)) {
        const Transferred received = device.receive(packets, remaining(clock, deadline), stop);
        const bool arrived = received.status == TL_USB_OK || received.status == TL_USB_ERROR_TIMEOUT;
        if (arrived && received.count > 0) {
            const std::size_t kept = std::min(received.count, buffer.size());
            std::copy_n(packets.begin(), kept, buffer.begin());
            const bool goesOn =
                received.count == packets.size() && dropsRest(device, packets, deadline, stop, clock);
            if (received.count > kept || goesOn)
                return TL_USB_ERROR_OVERFLOW;
            count = kept;
            return TL_USB_OK;
        }
        if (received.status != TL_USB_OK)
            return received.status;
        if (clock.now() >= deadline)
            return TL_USB_ERROR_TIMEOUT;
        waitUntil(clock, std::min(clock.now() + pause, deadline));
    }
}

} // namespace transport
