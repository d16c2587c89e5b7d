// The postal codes of countries. Any thread.
#pragma once

#include <string_view>

namespace qn {

/// False for a country that is not in the table.
bool isPostalCodeOf(std::u16string_view country, std::u16string_view text);

} // namespace qn
