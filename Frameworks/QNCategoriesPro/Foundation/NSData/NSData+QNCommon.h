// Conversions of byte buffers. None gives none, or zero. Any thread.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

class NSData;
class NSString;

namespace qn {

/// The text that the bytes hold as UTF-8 up to the first zero byte, or up to their end when there is none.
/// Empty data gives the empty text; none gives none, and so do bytes that are not valid UTF-8.
Ref<NSString> UTF8String(const Ref<NSData> &data);

/// Two upper-case digits a byte, without separators: "0AFF".
Ref<NSString> hexString(const Ref<NSData> &data);
/// The description without brackets and blanks: two lower-case digits a byte.
Ref<NSString> APNSToken(const Ref<NSData> &data);

/// The bytes that the text writes in hexadecimal, blanks left aside, an odd last character ignored. Never
/// fails on what is no digit: a pair of characters has the value of its leading digits, 0 without any, and
/// "-1" is 0xFF. Only the low byte of a UTF-16 unit counts. None for a text without anything but blanks.
Ref<NSData> dataWithHexString(const Ref<NSString> &text);

/// The array or dictionary that the bytes hold as JSON. None, and a line in the log, when they are not JSON.
id jsonValueDecoded(const Ref<NSData> &data);

/// The bytes of the program's resource of that name; none when there is none, and for a name that leads out
/// of the resources.
Ref<NSData> dataNamed(const Ref<NSString> &name);

/// Zlib's CRC-32.
std::uint32_t crc32(const Ref<NSData> &data);
/// The same as eight lower-case hexadecimal digits.
Ref<NSString> crc32String(const Ref<NSData> &data);

// Base64 in lines of 64 characters, each ended by a line feed, the last one too. Reading skips every
// character that base64 does not use and gives none when what remains is not base64 with its padding.

Ref<NSData> base64EncodedData(const Ref<NSData> &data);
Ref<NSString> base64EncodedString(const Ref<NSData> &data);
Ref<NSData> base64DecodedData(const Ref<NSData> &data);
/// By way of `UTF8String`.
Ref<NSString> base64DecodedString(const Ref<NSData> &data);

// Digests, as bytes or as upper-case hexadecimal. Algorithm numbers:
//
//     number     0      1    2        3        4        5
//     digest     SHA-1  MD5  SHA-256  SHA-384  SHA-512  SHA-224
//     bytes      20     16   32       48       64       28

/// The length of a digest in bytes; 20 for a number without algorithm.
std::size_t size_t_alg(std::uint32_t alg);

/// None for a number without algorithm.
Ref<NSString> stringWithAlg(const Ref<NSData> &data, std::uint32_t alg);
Ref<NSData> dataWithAlg(const Ref<NSData> &data, std::uint32_t alg);

Ref<NSString> MD5_string(const Ref<NSData> &data);
Ref<NSData> MD5_data(const Ref<NSData> &data);
Ref<NSString> SHA1_string(const Ref<NSData> &data);
Ref<NSData> SHA1_data(const Ref<NSData> &data);
Ref<NSString> SHA224_string(const Ref<NSData> &data);
Ref<NSData> SHA224_data(const Ref<NSData> &data);
Ref<NSString> SHA256_string(const Ref<NSData> &data);
Ref<NSData> SHA256_data(const Ref<NSData> &data);
Ref<NSString> SHA384_string(const Ref<NSData> &data);
Ref<NSData> SHA384_data(const Ref<NSData> &data);
Ref<NSString> SHA512_string(const Ref<NSData> &data);
Ref<NSData> SHA512_data(const Ref<NSData> &data);

/// The HMAC in upper-case hexadecimal. The key is the text's UTF-8 up to the first zero byte. None for a
/// number without algorithm, and without key.
Ref<NSString> hmacStringUsingAlg(const Ref<NSData> &data, std::uint32_t alg, const Ref<NSString> &key);
/// The HMAC. None for a number without algorithm, and without key.
Ref<NSData> hmacDataUsingAlg(const Ref<NSData> &data, std::uint32_t alg, const Ref<NSData> &key);

// AES-128, -192 or -256, by the length of the key, in CBC mode with PKCS#7 padding. An empty initialisation
// vector, or none, is all zeros. None for keys that are not 16, 24 or 32 bytes and vectors that are not 16
// bytes long, and for bytes to decrypt that are not whole blocks or not padded.

Ref<NSData> AES256EncryptWithKey(const Ref<NSData> &data, const Ref<NSData> &key, const Ref<NSData> &iv);
Ref<NSData> AES256DecryptWithkey(const Ref<NSData> &data, const Ref<NSData> &key, const Ref<NSData> &iv);

} // namespace qn
