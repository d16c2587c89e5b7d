// How long, and how often, a handle may be read without pause since it was written to: a printer that never
// stops sending must not hold its reader for ever.
//
//     if (const auto allowed = run.begin(clock.now(), timeout))      // none: over the bound
//         status = run.end(printer.read(buffer, count, *allowed, stop));
//
// A run begins with the first read after a write, after a pause, or of the handle; a read that finds nothing
// within its time-out is a pause. A run that is over the bound stays so until the next write. Not
// thread-safe.
#pragma once

#include "Platform/Dispatch/Time/Instant.h"
#include "Platform/Transport/zkcomtl.h"

#include <chrono>
#include <optional>

namespace transport {

class ReadRun {
public:
    /// Of a handle that was not written to, whose reads drain what an earlier program left in the printer. A
    /// single read may take all of its time-out.
    static constexpr std::chrono::milliseconds longestDrain{5000};
    /// After a write the bound is two time-outs: of less than this they count as this.
    static constexpr std::chrono::milliseconds shortestTimeout{1000};
    static constexpr int mostReads = 1000;

    void written() { *this = ReadRun(true); }

    /// The time-out that the read gets; none when it is not to be tried.
    std::optional<std::chrono::milliseconds> begin(dispatch::Instant now, std::chrono::milliseconds timeout);
    /// What the read that `begin` allowed ended with becomes what its caller is told.
    tl_usb_status end(tl_usb_status status);

    ReadRun() = default;

private:
    explicit ReadRun(bool written) : written_(written) {}

    bool written_ = false;
    std::optional<dispatch::Instant> start_;
    int reads_ = 0;
    bool shortened_ = false; // the latest read, by the end of the run
    bool over_ = false;
};

} // namespace transport
