// A fuzz target over all three formats of property lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fuzz {

/// Bytes that mean something in one of the formats.
inline constexpr std::string_view tellingBytes = "<>/&;\"=\\(){},U7 -x\x0F\x10\xA1\xD1\xFF";

} // namespace fuzz

/// Reads the bytes, immutable and mutable, and what was read must come back from every format that can hold
/// it. Ends the process when it does not. Always 0; a coverage-guided fuzzer may call it, too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size);
