// The JSON text of a printer file. See docs/virtual-printers.md for its keys.
#pragma once

#include "Platform/Transport/virtual/VirtualPrinterState.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace transport {

inline constexpr std::size_t longestPrinterText = 65536; // bytes

/// None for a text that does not describe a printer; `reason`, if given, then gets one sentence that says
/// why. Any bytes are safe.
std::optional<VirtualPrinterState> printerFromJson(std::string_view text, std::string *reason = nullptr);

/// The same text with another threshold, which is added at the end when there was none; nothing else changes.
/// None for a text that does not describe a printer.
std::optional<std::string> jsonWithThreshold(std::string_view text, std::int32_t threshold);

} // namespace transport
