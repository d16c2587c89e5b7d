// The files of the system's time-zone database, which hold a zone each: the changes of its clocks so far, and
// in a last line (PosixTimeZone) the rules from then on. Numbers are big-endian.
//
//     "TZif", version, 15 unused bytes, and the counts of six tables, 4 bytes each
//     the tables, with times of 4 bytes
//     from version 2 on: the same again, with times of 8 bytes, and the last line
//
// Those that count leap seconds are not read: the time of this system has none.
#pragma once

#include "Platform/Foundation/Dates/TimeZoneRules.h"

#include <optional>
#include <string_view>

/// Nothing for bytes that are no such file, which may be any.
std::optional<TimeZoneRules> timeZoneRulesFromFile(std::string_view bytes);
