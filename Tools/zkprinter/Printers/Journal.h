// What the system log is told in any case: failures, and changes of a printer's reminder. Each is one line,
// with control characters escaped.
//
// Threads: any.
#pragma once

#include "Platform/Foundation/System/NSLog.h"

#include <cstdint>
#include <optional>
#include <string>

/// Where the lines go, instead of the system log only. To be set before other threads use it.
void setJournal(NSLogSink sink);

void journalFailure(const std::string &sentence);

/// `old` is none when what the printer held was no reminder.
void journalChange(const std::string &queue, std::optional<std::int32_t> old, std::int32_t threshold);
