// Conversions of texts. None gives none, zero or false. Any thread.
//
// "The UTF-8 bytes" are those of `dataValue`; where there are none, an operation on them gives none or zero.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

class NSData;
class NSNumber;
class NSString;

namespace qn {

/// The UTF-8 bytes, without a terminating zero. Returns none if the argument is none or has a surrogate that
/// stands alone.
Ref<NSData> dataValue(const Ref<NSString> &text);

/// The text without white space and line ends at both ends.
Ref<NSString> stringByTrim(const Ref<NSString> &text);
/// Whether there is nothing but "0" to "9"; true for the empty text.
bool isAllNum(const Ref<NSString> &text);
NSRange rangeOfAll(const Ref<NSString> &text);
/// What the user reads for this key, from the default table of texts; the key itself when it has no entry.
Ref<NSString> localized(const Ref<NSString> &key);
/// The array or dictionary that the text holds as JSON. None, and a line in the log, when it is not JSON.
id jsonValueDecoded(const Ref<NSString> &text);
/// The MIME type of a path, by its extension, or of an extension with or without its dot;
/// "application/octet-stream" when it is unknown.
Ref<NSString> MIMEType(const Ref<NSString> &text);
/// The program's resource of that name, or of the name with ".txt", read as UTF-8; none when there is
/// neither, and for a name that leads out of the resources.
Ref<NSString> stringNamed(const Ref<NSString> &name);

// Numbers

/// As `numberWithString`.
Ref<NSNumber> numberValue(const Ref<NSString> &text);
/// The number's value of that width; 0 when the text is no number.
std::int8_t charValue(const Ref<NSString> &text);
std::uint8_t unsignedCharValue(const Ref<NSString> &text);
std::int16_t shortValue(const Ref<NSString> &text);
std::uint16_t unsignedShortValue(const Ref<NSString> &text);
std::uint32_t unsignedIntValue(const Ref<NSString> &text);
std::int64_t longValue(const Ref<NSString> &text);
std::uint64_t unsignedLongValue(const Ref<NSString> &text);
std::uint64_t unsignedLongLongValue(const Ref<NSString> &text);
NSUInteger unsignedIntegerValue(const Ref<NSString> &text);
/// As `dataWithHexString`.
Ref<NSData> hexData(const Ref<NSString> &text);

// Escaping

/// The text with every character that may not stand in the query of a URL percent-encoded, so that
/// "a b/ü?" becomes "a%20b/%C3%BC?". Returns none if the argument is none or has a surrogate that
/// stands alone.
Ref<NSString> URLEncode(const Ref<NSString> &text);
/// The text with every percent escape replaced. None when one is not complete or the result is not UTF-8.
Ref<NSString> URLDecode(const Ref<NSString> &text);
/// The text with everything percent-encoded but ASCII letters, digits and "-._~"; the text itself when it has
/// a surrogate that stands alone.
Ref<NSString> URLEntityEncode(const Ref<NSString> &text);
/// As `URLDecode`, but the text itself where that gives none.
Ref<NSString> URLEntityDecode(const Ref<NSString> &text);

// Made texts

/// A new random UUID in upper case: "0F3A8C2E-…".
Ref<NSString> UUID();
/// Milliseconds since 1970-01-01 00:00 UTC in decimal.
Ref<NSString> timeStamp();
/// The date that lies the text's leading integer of seconds after 1970, by a pattern such as "yyyy-MM-dd", in
/// the current locale and time zone.
Ref<NSString> timeStampToString(const Ref<NSString> &timeStamp, const Ref<NSString> &format);
/// Four random characters of "A" to "Z" and "0" to "9".
Ref<NSString> getRandomString();
/// A size in bytes with two digits after the point, in the largest of the units B, KB, MB … YB of which it
/// has at least one: "1.50KB"; "0B" for 0. A unit is 1000 of the unit before in disk mode, 1024 otherwise.
Ref<NSString> convertDataSize(std::uint64_t size, bool diskMode);
Ref<NSString> stringFromFileSize(std::uint64_t size);
Ref<NSString> stringFromDiskSize(std::uint64_t size);

/// Compares versions such as "1.10" number by number: -1 when `newV` is later, 1 when it is earlier, 0 when
/// they are equal or either is none or blank. Raises NSRangeException when one ends where the other goes on.
NSInteger compareVesion(const Ref<NSString> &currentV, const Ref<NSString> &newV);

// The UTF-8 bytes, converted as by the operations of byte buffers

Ref<NSString> MD5_string(const Ref<NSString> &text);
Ref<NSData> MD5_data(const Ref<NSString> &text);
Ref<NSString> SHA1_string(const Ref<NSString> &text);
Ref<NSData> SHA1_data(const Ref<NSString> &text);
Ref<NSString> SHA224_string(const Ref<NSString> &text);
Ref<NSData> SHA224_data(const Ref<NSString> &text);
Ref<NSString> SHA256_string(const Ref<NSString> &text);
Ref<NSData> SHA256_data(const Ref<NSString> &text);
Ref<NSString> SHA384_string(const Ref<NSString> &text);
Ref<NSData> SHA384_data(const Ref<NSString> &text);
Ref<NSString> SHA512_string(const Ref<NSString> &text);
Ref<NSData> SHA512_data(const Ref<NSString> &text);
Ref<NSString> hmacStringUsingAlg(const Ref<NSString> &text, std::uint32_t alg, const Ref<NSString> &key);
Ref<NSData> hmacDataUsingAlg(const Ref<NSString> &text, std::uint32_t alg, const Ref<NSData> &key);
std::uint32_t crc32(const Ref<NSString> &text);
Ref<NSString> crc32String(const Ref<NSString> &text);
Ref<NSData> base64EncodedData(const Ref<NSString> &text);
Ref<NSString> base64EncodedString(const Ref<NSString> &text);
Ref<NSData> base64DecodedData(const Ref<NSString> &text);
Ref<NSString> base64DecodedString(const Ref<NSString> &text);
/// Key, vector and text by their UTF-8 bytes, the result read by `UTF8String`: cipher bytes are seldom text,
/// so encrypting usually gives none or a piece.
Ref<NSString> AES256EncryptWithKey(const Ref<NSString> &text, const Ref<NSString> &key,
                                   const Ref<NSString> &iv);
Ref<NSString> AES256DecryptWithkey(const Ref<NSString> &text, const Ref<NSString> &key,
                                   const Ref<NSString> &iv);

} // namespace qn
