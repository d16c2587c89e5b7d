// Turns texts of devices, which may be any bytes, into valid UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace transport {

/// The text with U+FFFD for every byte that is not part of a valid UTF-8 character, cut between characters to
/// at most `most` bytes.
std::string validUtf8(std::string_view text, std::size_t most = std::string_view::npos);

} // namespace transport
