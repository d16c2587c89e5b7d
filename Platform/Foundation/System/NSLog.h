// The diagnostic log: one line per entry, written to the system log and, if that is a terminal, to standard
// error. Entries that recur while nothing happens have the level `debug`, which is dropped by default.
//
//     NSLog("printer %@ has %d queues", name, count);
//
// Texts of printers, queues and files are not trusted: every control character of an entry is escaped ("\n",
// "\u001B"), so that an entry is one line and cannot control a terminal. Line feeds at the end of an entry
// are dropped.
//
// Safe from any thread; entries are written one at a time.
#pragma once

#include "Platform/Foundation/Text/Format.h"

#include <array>
#include <functional>
#include <string_view>

#pragma GCC visibility push(default)

enum class NSLogLevel { info, debug };

/// Receives every entry, of either level, as one line of UTF-8 without line end. Called with the log locked,
/// so it must not log anything itself.
using NSLogSink = std::function<void(NSLogLevel level, std::string_view line)>;

/// Replaces the sink and returns the former one; an empty function stands for the default.
NSLogSink NSLogSetSink(NSLogSink sink);

/// A sink that writes only to the system log, for tools that use the terminal for their output. Drops
/// `debug`.
void NSLogToSystemLogOnly(NSLogLevel level, std::string_view line);

/// A sink that writes entries of both levels to the system log and to standard error.
void NSLogVerbosely(NSLogLevel level, std::string_view line);

void NSLogArguments(NSLogLevel level, std::string_view format, std::span<const FormatArgument> arguments);

/// Writes one entry of the level `info`; for the format see Format.h.
template <class... Arguments>
void NSLog(std::string_view format, const Arguments &...arguments) {
    NSLogArguments(NSLogLevel::info, format,
                   std::array<FormatArgument, sizeof...(arguments)>{FormatArgument(arguments)...});
}

/// The same with the level `debug`.
template <class... Arguments>
void NSLogDebug(std::string_view format, const Arguments &...arguments) {
    NSLogArguments(NSLogLevel::debug, format,
                   std::array<FormatArgument, sizeof...(arguments)>{FormatArgument(arguments)...});
}

#pragma GCC visibility pop
