// Writes property lists in XML: UTF-8 text with one element per line, indented by tabs.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <string>

class NSData;

/// Dates are cut to whole seconds. On failure none, and `refusal` says what was expected where. XML property
/// lists cannot contain characters that XML does not allow (lone surrogates, U+FFFE, U+FFFF, and control
/// characters other than tab, line feed and carriage return), dates outside the years 0 to 9999 of the
/// Gregorian calendar, more than 512 levels, or objects other than those of property lists.
Ref<NSData> writeXMLPropertyList(const id &list, std::string &refusal);
