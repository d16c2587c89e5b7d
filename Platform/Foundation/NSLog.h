// The diagnostic log: one line an entry, to the system log and, on a terminal, to standard error.
//
// Texts of printers, queues and files are data: every control character of an entry is escaped ("\n",
// "\u001B"), so that an entry is one line and cannot drive a terminal. Line feeds that end an entry are
// dropped.
//
// Any thread; entries do not mix.
#pragma once

#include "Platform/Foundation/Format.h"

#include <array>
#include <functional>
#include <string_view>

/// Receives every entry as one line of UTF-8 without line end.
using NSLogSink = std::function<void(std::string_view line)>;

/// Replaces where entries go and returns what was there; an empty function stands for the default.
NSLogSink NSLogSetSink(NSLogSink sink);

/// Entries go to the system log alone, even on a terminal: for tools whose terminal belongs to their output.
void NSLogToSystemLogOnly(std::string_view line);

/// The text with every control character escaped, for a log or a terminal.
std::string escapedControlCharacters(std::string_view utf8);

void NSLogArguments(std::string_view format, std::span<const FormatArgument> arguments);

/// Writes one entry; formats are those of Format.h.
template <class... Arguments>
void NSLog(std::string_view format, const Arguments &...arguments) {
    NSLogArguments(format, std::array<FormatArgument, sizeof...(arguments)>{FormatArgument(arguments)...});
}
