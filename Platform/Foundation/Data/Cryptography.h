// Digests, message authentication codes and encryption. Safe from any thread.
//
// Algorithm numbers:
//
//     number     0      1    2        3        4        5
//     digest     SHA-1  MD5  SHA-256  SHA-384  SHA-512  SHA-224
//     bytes      20     16   32       48       64       28
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <cstdint>
#include <span>

#pragma GCC visibility push(default)

class NSData;

namespace cryptography {

using Bytes = std::span<const std::uint8_t>;

/// The digest of the bytes; none for any other number.
Ref<NSData> digest(std::uint32_t algorithm, Bytes bytes);
/// The HMAC of the bytes; none for any other number.
Ref<NSData> hmac(std::uint32_t algorithm, Bytes key, Bytes bytes);

enum class Direction { Decrypt = 0, Encrypt = 1 };

/// AES-128, -192 or -256, by the length of the key, in CBC mode with PKCS#7 padding. None when the key is not
/// 16, 24 or 32 bytes or the initialisation vector not 16 bytes long, when bytes to decrypt are not whole
/// blocks or wrongly padded, and without memory for the result.
Ref<NSData> aesCBC(Direction direction, Bytes key, Bytes initialisationVector, Bytes bytes);

} // namespace cryptography

#pragma GCC visibility pop
