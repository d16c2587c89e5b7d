// Property lists in XML: objects to UTF-8 text, one element a line, indented by tabs.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <string>

class NSData;

/// None, and `refusal` says where what was expected, for what an XML property list cannot hold: characters
/// that XML has not (surrogates that stand alone, U+FFFE, U+FFFF, control characters but tab and the two of
/// line ends), dates outside the years 0 to 9999 of the Gregorian calendar, more than 512 levels, and other
/// objects than those of property lists. Dates are cut to whole seconds.
Ref<NSData> writeXMLPropertyList(const id &list, std::string &refusal);
