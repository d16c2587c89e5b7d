// Reads the files of the system's time-zone database (RFC 8536). Each contains one zone: the changes of its
// offset so far and, in the last line, the rules from then on (PosixTimeZone.h). Numbers are big-endian.
//
//     "TZif", version, 15 unused bytes, and the counts of six tables, 4 bytes each
//     the tables, with times of 4 bytes
//     from version 2 on: the same again, with times of 8 bytes, and the last line
//
// Files with leap seconds are rejected, since the system's time does not count them.
#pragma once

#include "Platform/Foundation/Dates/TimeZoneRules.h"

#include <optional>
#include <string_view>

/// Nothing for any other bytes.
std::optional<TimeZoneRules> timeZoneRulesFromFile(std::string_view bytes);
