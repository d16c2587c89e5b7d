// Whether a text has a form that standards give. False for none and for the empty text. Nothing is trimmed,
// and digits are those of ASCII. Any thread. Time grows with the length of the text, for hostile texts, too.
//
// Whether anybody answers at an address or owns a number is another question. `isAllNum` of
// NSString+QNCommon.h tells whether there are only digits.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

class NSString;

namespace qn {

// Networks

/// A mailbox of RFC 5321, at most 254 characters, 64 before the "@": `jdoe@example.org`,
/// `"J. Doe"@example.org`, `jdoe@[192.0.2.1]`, `jdoe@[IPv6:2001:db8::1]`. Neither comments nor names around
/// it, nor characters beyond ASCII.
bool isEmailAddress(const Ref<NSString> &text);
/// An absolute URI of RFC 3986, of any scheme: as `NSURL`, and with a scheme.
bool isURL(const Ref<NSString> &text);
/// A name of RFC 1123: labels of 1 to 63 letters, digits and hyphens, no hyphen at an end of one, 253
/// characters at most, the last label not all digits. Without a dot at the end.
bool isHostName(const Ref<NSString> &text);
/// Four decimal numbers without leading zeros.
bool isIPv4Address(const Ref<NSString> &text);
/// As RFC 4291 writes it, also with an IPv4 address at the end; without brackets, zone and prefix length.
bool isIPv6Address(const Ref<NSString> &text);
/// Six bytes in hexadecimal with hyphens or with colons, or three pairs of them with dots.
bool isMACAddress(const Ref<NSString> &text);

// Telephone and post

/// "+", the country code and the number, 2 to 15 digits and nothing else.
bool isE164TelephoneNumber(const Ref<NSString> &text);
/// As people write it: 3 to 15 digits, single blanks, hyphens, dots and slashes between them, groups in
/// parentheses, "+" before and an extension ("x12", "ext. 12", ";ext=12") behind.
bool isTelephoneNumber(const Ref<NSString> &text);
/// A postal code of a country, which is given by its two capital letters of ISO 3166. False for countries
/// that the table (Validation/PostalCodes.cpp) does not have.
bool isPostalCode(const Ref<NSString> &text, const Ref<NSString> &country);

// Check digits

/// At least two digits, the last of which checks the others by ISO/IEC 7812: cards, IMEIs.
bool hasLuhnCheckDigit(const Ref<NSString> &text);
/// An account number of ISO 13616 of a country of its registry, with that country's length and form: as
/// computers hold it, or in groups of four with blanks. Capitals only.
bool isIBAN(const Ref<NSString> &text);
/// At least one digit and a check character, "0" to "9" or "X", by ISO 7064 MOD 11-2: ISNI, ORCID.
bool hasMod11_2CheckCharacter(const Ref<NSString> &text);
/// An identity number of GB 11643: 17 digits, with a date in the Gregorian calendar at the seventh, and a
/// check character as above.
bool isChineseIdentityNumber(const Ref<NSString> &text);

// Characters

/// Whether there are only hexadecimal digits.
bool isHexadecimal(const Ref<NSString> &text);
/// Whether there are only letters, of any script, and marks upon them.
bool isAllLetters(const Ref<NSString> &text);
/// Whether there is a Chinese ideograph, of which Japanese and Korean texts have some, too.
bool containsChinese(const Ref<NSString> &text);
/// Whether something is shown as an emoji: "☺" only with the selector for it behind.
bool containsEmoji(const Ref<NSString> &text);

} // namespace qn
