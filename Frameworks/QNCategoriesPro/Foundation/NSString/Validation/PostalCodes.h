// The postal codes of countries. Any thread.
#pragma once

#include <string_view>

namespace qn {

/// Whether the text is a postal code of the country (capital letters of ISO 3166); false for a country that
/// is not in the table.
bool isPostalCodeOf(std::u16string_view country, std::u16string_view text);

} // namespace qn
