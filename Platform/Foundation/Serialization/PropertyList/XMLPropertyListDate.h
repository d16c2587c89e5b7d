// Dates in XML property lists: "2014-01-20T12:24:48Z", in UTC, by the Gregorian calendar in all years.
#pragma once

#include "Platform/Foundation/Dates/NSDate.h"

#include <optional>
#include <string>
#include <string_view>

/// The date in whole seconds, rounded down; nothing outside the years 0 to 9999.
std::optional<std::string> xmlPropertyListDateText(NSTimeInterval sinceReferenceDate);
/// Seconds from the reference date. Nothing for a text in another form, and for a day or time that does not
/// exist.
std::optional<NSTimeInterval> xmlPropertyListDate(std::string_view text);
