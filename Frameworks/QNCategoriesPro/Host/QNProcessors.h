// How busy the processors are between two readings.
//
//     const auto before = device.processors();
//     …
//     const auto load = qn::loadBetween(before, device.processors()).total; // 0.25: a quarter of all cores
//
// Plain values. Any thread.
#pragma once

#include "Platform/Dispatch/Time/Instant.h"

#include <cstdint>
#include <map>
#include <optional>

#pragma GCC visibility push(default)

namespace qn {
class HostFiles;
}

/// Since the system was started, in the kernel's ticks; of all cores together or of one.
struct QNProcessorTimes {
    std::uint64_t busy = 0;
    std::uint64_t total = 0;

    bool operator==(const QNProcessorTimes &) const = default;
};

struct QNProcessorReading {
    dispatch::Instant moment; ///< by the current clock
    std::optional<QNProcessorTimes> all;
    std::map<unsigned, QNProcessorTimes> cores; ///< those that are switched on, by the kernel's number
};

/// From 0 (idle) to 1. Absent where no tick has passed, and for cores that were not on in both readings.
struct QNProcessorLoad {
    double seconds = 0; ///< between the readings
    std::optional<double> total;
    std::map<unsigned, double> cores;
};

namespace qn {

QNProcessorLoad loadBetween(const QNProcessorReading &before, const QNProcessorReading &after);

QNProcessorReading readProcessors(const HostFiles &files);
/// How many are switched on.
std::optional<unsigned> countProcessors(const HostFiles &files);

} // namespace qn

#pragma GCC visibility pop
