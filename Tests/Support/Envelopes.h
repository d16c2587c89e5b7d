// Requests written out byte by byte, as they are on the wire.
#pragma once

#include <cstdint>
#include <vector>

namespace envelopes {

using Bytes = std::vector<std::uint8_t>;

// clang-format off
inline const Bytes readThreshold = {
    0x1B, '%', '-', '1', '2', '3', '4', '5', 'X',
    '@', 'P', 'J', 'L', ' ', 'E', 'N', 'T', 'E', 'R', ' ', 'L', 'A', 'N', 'G', 'U', 'A', 'G', 'E', '=', 'A', 'C', 'L', '\r', '\n',
    0x00, 0xAC, 0xFF, 0x21, 0x00, 0x2E, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    '<', '!', '-', '-', '#', 's', 's', 'i', ' ', 'I', 'D', 'r', ' ', 'O', 'I', 'D', '_', 'P', 'L', 'A', 'T', 'F', 'O', 'R', 'M', '_',
    'C', 'O', 'N', 'S', 'U', 'M', 'E', 'A', 'B', 'L', 'E', '_', 'H', 'I', 'N', 'T', ' ', '-', '-', '>',
    0x1B, '%', '-', '1', '2', '3', '4', '5', 'X'};

inline const Bytes writeThreshold5 = {
    0x1B, '%', '-', '1', '2', '3', '4', '5', 'X',
    '@', 'P', 'J', 'L', ' ', 'E', 'N', 'T', 'E', 'R', ' ', 'L', 'A', 'N', 'G', 'U', 'A', 'G', 'E', '=', 'A', 'C', 'L', '\r', '\n',
    0x00, 0xAC, 0xFF, 0x20, 0x00, 0x1F, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    'O', 'I', 'D', '_', 'P', 'L', 'A', 'T', 'F', 'O', 'R', 'M', '_', 'C', 'O', 'N', 'S', 'U', 'M', 'E', 'A', 'B', 'L', 'E', '_',
    'H', 'I', 'N', 'T', '=', '5',
    0x1B, '%', '-', '1', '2', '3', '4', '5', 'X'};
// clang-format on

} // namespace envelopes
