// Letter case and character boundaries by Unicode's rules, the same in every locale. A surrogate that stands
// alone is kept as it is. Any thread.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"

#include <string>
#include <string_view>

namespace unicode {

std::u16string lowercase(std::u16string_view units);
std::u16string uppercase(std::u16string_view units);

/// Negative, zero or positive. Neither case nor the way an accent is written (composed or not) counts.
int compareIgnoringCase(std::u16string_view a, std::u16string_view b);

/// The range widened so that it cuts no surrogate pair, no combining sequence and no joined emoji. It has to
/// fit into the text.
NSRange widenedToCharacters(std::u16string_view units, NSRange range);

} // namespace unicode
