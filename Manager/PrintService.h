// The print service of the host, CUPS, and its print queues.
#pragma once

#include <chrono>
#include <memory>
#include <string>

struct cups_dest_s;

/// What the print service answered.
struct PrintServiceAnswer {
    bool answers = false;
    std::string server{};  ///< which was asked: a host (with an unusual port), or a socket's path
    std::string version{}; ///< how it names itself, e.g. "CUPS/2.4 IPP/2.1"; empty when it does not say
    int count = 0;         ///< how many queues there are
    /// An array of `count` queues, released with the last reference; null without queues.
    std::shared_ptr<const cups_dest_s> queues{};
};

/// The longest time that a query of the print service takes.
inline constexpr std::chrono::milliseconds printServicePatience{4000};

/// Asks the print service for a sign of life and, if it gives one, for its queues over the default
/// connection. Blocks until the answer is there, but no longer than `printServicePatience` by the current
/// clock; then, and when the system has no thread left, `answers` is false. Any thread.
///
/// A thread of its own does the asking. When it is given up it ends at once, unless the print service fell
/// silent between the sign of life and the queues: the default connection belongs to libcups, so the thread
/// then stays until the other side closes it or the process ends.
PrintServiceAnswer askPrintService();
