// Account numbers of ISO 13616. Any thread.
#pragma once

#include <string_view>

namespace qn {

/// Whether a text without blanks has a country of the registry, that country's form, and the right check
/// digits.
bool isCompactIBAN(std::u16string_view text);

} // namespace qn
