// Dates as they stand in XML property lists: "2014-01-20T12:24:48Z", in UTC, by the Gregorian calendar in
// every year.
#pragma once

#include "Platform/Foundation/Dates/NSDate.h"

#include <optional>
#include <string>
#include <string_view>

/// Cut to whole seconds; nothing outside the years 0 to 9999.
std::optional<std::string> xmlPropertyListDateText(NSTimeInterval sinceReferenceDate);
/// Nothing for a text in any other form, and for a day or a time that does not exist.
std::optional<NSTimeInterval> xmlPropertyListDate(std::string_view text);
