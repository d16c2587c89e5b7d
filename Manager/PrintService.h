// The host's printing system itself, and the print queues it has.
#pragma once

#include <chrono>
#include <memory>
#include <string>

struct cups_dest_s;

/// What the print service answered.
struct PrintServiceAnswer {
    bool answers = false;
    std::string server{};  ///< who was asked, a host or a socket's path
    std::string version{}; ///< what it calls itself, e.g. "CUPS/2.4 IPP/2.1"; empty when it does not say
    int count = 0;         ///< how many queues there are
    /// That many queues, released with the last reference; null for none.
    std::shared_ptr<const cups_dest_s> queues{};
};

/// The longest that a look at the print service takes.
inline constexpr std::chrono::milliseconds printServicePatience{4000};

/// Asks the print service for a sign of life and, if it gives one, for its queues over the default
/// connection. Blocks for as long as it takes to answer, but no longer than `printServicePatience` of the
/// current clock: then it does not answer. Any thread.
///
/// The asking is done by a thread of its own; where the system has none left, nobody answers. One that is
/// given up ends at once, unless the print service fell silent between the sign of life and the queues: as
/// the default connection is the library's own, its thread then waits on until the other side closes or the
/// process ends.
PrintServiceAnswer askPrintService();
