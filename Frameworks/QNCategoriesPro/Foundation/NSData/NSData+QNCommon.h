// Conversions of byte buffers. A buffer of none gives none, or zero. Any thread.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSData;
class NSString;

namespace qn {

/// The text in the bytes, as UTF-8, up to the first zero byte or else to the end. Empty data gives the empty
/// text; bytes that are not valid UTF-8 give none.
Ref<NSString> UTF8String(const Ref<NSData> &data);

/// Two upper-case digits per byte, without separators: "0AFF".
Ref<NSString> hexString(const Ref<NSData> &data);
/// Two lower-case digits per byte, without separators: the description without brackets and blanks.
Ref<NSString> APNSToken(const Ref<NSData> &data);

/// The bytes of a hexadecimal text. Blanks are skipped, an odd last character is ignored. Characters that are
/// not digits are not an error: a pair has the value of its leading digits, 0 without any, and "-1" is 0xFF.
/// Only the low byte of each UTF-16 unit counts. None for a text that is empty or nothing but blanks.
Ref<NSData> dataWithHexString(const Ref<NSString> &text);

/// The JSON array or dictionary in the bytes. When they are not one, the result is none and the error is
/// logged.
id jsonValueDecoded(const Ref<NSData> &data);

/// The bytes of the program's resource of that name; none when there is none, or when the name leads out of
/// the resources.
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
/// The decoded bytes as `UTF8String` reads them.
Ref<NSString> base64DecodedString(const Ref<NSData> &data);

// Digests, as bytes or as upper-case hexadecimal. Algorithm numbers:
//
//     number     0      1    2        3        4        5
//     digest     SHA-1  MD5  SHA-256  SHA-384  SHA-512  SHA-224
//     bytes      20     16   32       48       64       28

/// The length of a digest in bytes; 20 for an unknown number.
std::size_t size_t_alg(std::uint32_t alg);

/// None for an unknown number.
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

/// The HMAC in upper-case hexadecimal. The key is the text's UTF-8 up to the first zero byte. None for an
/// unknown number, and without a key.
Ref<NSString> hmacStringUsingAlg(const Ref<NSData> &data, std::uint32_t alg, const Ref<NSString> &key);
/// The HMAC as bytes. None for an unknown number, and without a key.
Ref<NSData> hmacDataUsingAlg(const Ref<NSData> &data, std::uint32_t alg, const Ref<NSData> &key);

// AES-128, -192 or -256, depending on the length of the key, in CBC mode with PKCS#7 padding. An empty
// initialisation vector, or none, stands for 16 zero bytes. The result is none for keys that are not 16, 24
// or 32 bytes long, for vectors that are not 16 bytes long, and for ciphertext that is not whole blocks or
// whose padding is wrong.

Ref<NSData> AES256EncryptWithKey(const Ref<NSData> &data, const Ref<NSData> &key, const Ref<NSData> &iv);
Ref<NSData> AES256DecryptWithkey(const Ref<NSData> &data, const Ref<NSData> &key, const Ref<NSData> &iv);

} // namespace qn

#pragma GCC visibility pop
