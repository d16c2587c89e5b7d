// Letter case and character boundaries by Unicode's rules, the same in every locale. Lone surrogates are
// kept. All raise NSInvalidArgumentException for a text of 2^31 code units or more. Safe from any thread.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"

#include <string>
#include <string_view>

namespace unicode {

std::u16string lowercase(std::u16string_view units);
std::u16string uppercase(std::u16string_view units);

/// Negative, zero or positive. Ignores case, and whether an accented character is composed or decomposed.
int compareIgnoringCase(std::u16string_view a, std::u16string_view b);

/// The range extended so that it splits no surrogate pair, combining sequence or joined emoji. The range must
/// fit into the text.
NSRange widenedToCharacters(std::u16string_view units, NSRange range);

} // namespace unicode
