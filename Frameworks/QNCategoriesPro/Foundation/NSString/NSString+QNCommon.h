// Conversions of texts. A text of none gives none, zero or false. Any thread.
//
// "The UTF-8 bytes" are those of `dataValue`; where that gives none, an operation on them gives none or zero.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSData;
class NSNumber;
class NSString;

namespace qn {

/// The UTF-8 bytes, without a terminating zero. None also for a text with an unpaired surrogate.
Ref<NSData> dataValue(const Ref<NSString> &text);

/// The text without white space and line ends at either end.
Ref<NSString> stringByTrim(const Ref<NSString> &text);
/// Whether the text has no characters but "0" to "9"; true for the empty text.
bool isAllNum(const Ref<NSString> &text);
NSRange rangeOfAll(const Ref<NSString> &text);
/// The translation of the key in the default table of texts; the key itself when it has no entry.
Ref<NSString> localized(const Ref<NSString> &key);
/// The JSON array or dictionary in the text. When it is not one, the result is none and the error is logged.
id jsonValueDecoded(const Ref<NSString> &text);
/// The MIME type for a path or for an extension, with or without its dot; "application/octet-stream" when it
/// is unknown.
Ref<NSString> MIMEType(const Ref<NSString> &text);
/// The text of the program's resource of that name, or of the name with ".txt", in UTF-8; none when there is
/// neither, or when the name leads out of the resources.
Ref<NSString> stringNamed(const Ref<NSString> &name);

// Numbers

/// As `numberWithString` (NSNumber+QNCommon.h).
Ref<NSNumber> numberValue(const Ref<NSString> &text);
/// That number, narrowed to the type as NSNumber does; 0 when the text is not a number.
std::int8_t charValue(const Ref<NSString> &text);
std::uint8_t unsignedCharValue(const Ref<NSString> &text);
std::int16_t shortValue(const Ref<NSString> &text);
std::uint16_t unsignedShortValue(const Ref<NSString> &text);
std::uint32_t unsignedIntValue(const Ref<NSString> &text);
std::int64_t longValue(const Ref<NSString> &text);
std::uint64_t unsignedLongValue(const Ref<NSString> &text);
std::uint64_t unsignedLongLongValue(const Ref<NSString> &text);
NSUInteger unsignedIntegerValue(const Ref<NSString> &text);
/// As `dataWithHexString` (NSData+QNCommon.h).
Ref<NSData> hexData(const Ref<NSString> &text);

// Escaping

/// The text with every character percent-encoded that is not allowed in the query of a URL: "a b/ü?" becomes
/// "a%20b/%C3%BC?". None also for a text with an unpaired surrogate.
Ref<NSString> URLEncode(const Ref<NSString> &text);
/// The text with every percent escape decoded. None when one is incomplete or the result is not valid UTF-8.
Ref<NSString> URLDecode(const Ref<NSString> &text);
/// The text with everything percent-encoded but ASCII letters, digits and "-._~"; the text itself when it has
/// an unpaired surrogate.
Ref<NSString> URLEntityEncode(const Ref<NSString> &text);
/// As `URLDecode`, but the text itself where that gives none.
Ref<NSString> URLEntityDecode(const Ref<NSString> &text);

// Generated texts

/// A new random UUID in upper case: "0F3A8C2E-…".
Ref<NSString> UUID();
/// Milliseconds since 1970-01-01 00:00 UTC in decimal.
Ref<NSString> timeStamp();
/// The date that many seconds after 1970-01-01 00:00 UTC, where `timeStamp` begins with an integer (0 without
/// one), by a pattern such as "yyyy-MM-dd", in the current locale and time zone. Unlike `timeStamp()`, in
/// seconds.
Ref<NSString> timeStampToString(const Ref<NSString> &timeStamp, const Ref<NSString> &format);
/// Four random characters of "A" to "Z" and "0" to "9".
Ref<NSString> getRandomString();
/// A size given in bytes, with two decimals, in the largest of the units B, KB, MB … YB that it reaches:
/// "1.50KB"; "0B" for 0. Each unit is 1000 times the one before in disk mode, 1024 times otherwise.
Ref<NSString> convertDataSize(std::uint64_t size, bool diskMode);
/// With 1024.
Ref<NSString> stringFromFileSize(std::uint64_t size);
/// With 1000.
Ref<NSString> stringFromDiskSize(std::uint64_t size);

/// Compares versions such as "1.10" number by number: -1 when `newV` is later, 1 when it is earlier, 0 when
/// they are equal or either is none or blank. Raises NSRangeException when they are equal up to the end of
/// the shorter one.
NSInteger compareVesion(const Ref<NSString> &currentV, const Ref<NSString> &newV);

// The UTF-8 bytes, converted as by the operations of the same names in NSData+QNCommon.h

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
/// Key, vector and text are taken as UTF-8 bytes, and the result is read by `UTF8String`. Ciphertext is
/// seldom valid UTF-8, so encrypting usually gives none, or only the bytes before the first zero.
Ref<NSString> AES256EncryptWithKey(const Ref<NSString> &text, const Ref<NSString> &key,
                                   const Ref<NSString> &iv);
Ref<NSString> AES256DecryptWithkey(const Ref<NSString> &text, const Ref<NSString> &key,
                                   const Ref<NSString> &iv);

} // namespace qn

#pragma GCC visibility pop
