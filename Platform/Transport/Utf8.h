// Texts of devices, which may be anything, as the UTF-8 that is handed on.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace transport {

/// The text with U+FFFD for every byte that belongs to no UTF-8 character, cut between characters after
/// `most` bytes.
std::string validUtf8(std::string_view text, std::size_t most = std::string_view::npos);

} // namespace transport
