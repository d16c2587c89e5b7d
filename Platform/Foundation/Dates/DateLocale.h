// Locales as dates are written and read in them.
#pragma once

#include <string>
#include <unicode/locid.h>

/// The locale; of one whose numbers are not written in digits, such as Roman ones, the same with plain
/// digits: what is written in the others could not be read again.
icu::Locale dateLocale(const std::string &identifier);
