// Account numbers of ISO 13616. Any thread.
#pragma once

#include <string_view>

namespace qn {

/// One without blanks: its country is in the registry, its form is that country's, its check digits are
/// right.
bool isCompactIBAN(std::u16string_view text);

} // namespace qn
