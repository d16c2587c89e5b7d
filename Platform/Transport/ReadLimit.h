// Limits how long, and how often, a handle may be read without a pause since it was written to: a printer
// that never stops sending must not keep its reader for ever.
//
//     if (const auto allowed = run.begin(clock.now(), timeout))      // none: over the bound
//         status = run.end(printer.read(buffer, count, *allowed, stop));
//
// A run begins with the first read of the handle, and with the first one after a write or a pause; a read
// that finds nothing within its time-out is a pause. A run over the bound stays so until the next write. Not
// thread-safe.
#pragma once

#include "Platform/Dispatch/Time/Instant.h"
#include "Platform/Transport/zkcomtl.h"

#include <chrono>
#include <optional>

namespace transport {

class ReadLimit {
public:
    /// The bound before the first write, when reads drain what an earlier program left in the printer; or one
    /// time-out, if that is longer.
    static constexpr std::chrono::milliseconds longestDrain{5000};
    /// After a write the bound is two time-outs, which count as this if they are shorter.
    static constexpr std::chrono::milliseconds shortestTimeout{1000};
    /// The bound on the number of reads.
    static constexpr int mostReads = 1000;

    /// The handle was written to: forgets the run.
    void written() { *this = ReadLimit(true); }

    /// The time-out for the next read; none when the run is over the bound.
    std::optional<std::chrono::milliseconds> begin(dispatch::Instant now, std::chrono::milliseconds timeout);
    /// Call with the status of the read that `begin` allowed; returns the status for the caller.
    tl_usb_status end(tl_usb_status status);

    ReadLimit() = default;

private:
    explicit ReadLimit(bool written) : written_(written) {}

    bool written_ = false;
    std::optional<dispatch::Instant> start_;
    int reads_ = 0;
    bool shortened_ = false; // the end of the run cut the latest time-out
    bool over_ = false;
};

} // namespace transport
