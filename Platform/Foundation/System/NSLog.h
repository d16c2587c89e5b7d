// The diagnostic log: one line an entry, to the system log and, on a terminal, to standard error. What
// recurs while nothing happens is for debugging: it has the level `debug`, which goes nowhere unless it is
// asked for.
//
// Texts of printers, queues and files are data: every control character of an entry is escaped ("\n",
// "\u001B"), so that an entry is one line and cannot drive a terminal. Line feeds that end an entry are
// dropped.
//
// Any thread; entries do not mix.
#pragma once

#include "Platform/Foundation/Text/Format.h"

#include <array>
#include <functional>
#include <string_view>

enum class NSLogLevel { info, debug };

/// Receives every entry, of either level, as one line of UTF-8 without line end.
using NSLogSink = std::function<void(NSLogLevel level, std::string_view line)>;

/// Replaces where entries go and returns what was there; an empty function stands for the default.
NSLogSink NSLogSetSink(NSLogSink sink);

/// A sink of the system log alone, even on a terminal: for tools whose terminal belongs to their output.
void NSLogToSystemLogOnly(NSLogLevel level, std::string_view line);

/// A sink of the system log and standard error that takes entries of both levels.
void NSLogVerbosely(NSLogLevel level, std::string_view line);

/// The text with every control character escaped, for a log or a terminal.
std::string escapedControlCharacters(std::string_view utf8);

void NSLogArguments(NSLogLevel level, std::string_view format, std::span<const FormatArgument> arguments);

/// Writes one entry; formats are those of Format.h.
template <class... Arguments>
void NSLog(std::string_view format, const Arguments &...arguments) {
    NSLogArguments(NSLogLevel::info, format,
                   std::array<FormatArgument, sizeof...(arguments)>{FormatArgument(arguments)...});
}

/// The same of the level `debug`.
template <class... Arguments>
void NSLogDebug(std::string_view format, const Arguments &...arguments) {
    NSLogArguments(NSLogLevel::debug, format,
                   std::array<FormatArgument, sizeof...(arguments)>{FormatArgument(arguments)...});
}
