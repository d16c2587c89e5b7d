// Whether a text has the form that a standard defines. False for none and for the empty text. Nothing is
// trimmed, and digits are ASCII digits. Any thread. The time is at most linear in the length of the text,
// also for hostile texts.
//
// The form only: an address need not exist, nor a number belong to anybody. For digits only, see `isAllNum`
// in NSString+QNCommon.h.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSString;

namespace qn {

// Networks

/// A mailbox of RFC 5321, at most 254 characters, 64 before the "@": `jdoe@example.org`,
/// `"J. Doe"@example.org`, `jdoe@[192.0.2.1]`, `jdoe@[IPv6:2001:db8::1]`. No comments, no display name, ASCII
/// only.
bool isEmailAddress(const Ref<NSString> &text);
/// A URI of RFC 3986 with a scheme, whichever that is: what `NSURL` accepts, and not relative.
bool isURL(const Ref<NSString> &text);
/// A name of RFC 1123: labels of 1 to 63 letters, digits and hyphens, which neither begin nor end with a
/// hyphen; 253 characters at most; the last label not all digits; no dot at the end.
bool isHostName(const Ref<NSString> &text);
/// Four decimal numbers without leading zeros.
bool isIPv4Address(const Ref<NSString> &text);
/// In the notation of RFC 4291, also with an IPv4 address at the end; no brackets, zone or prefix length.
bool isIPv6Address(const Ref<NSString> &text);
/// Six bytes in hexadecimal, separated by hyphens or by colons, or three pairs of them separated by dots.
bool isMACAddress(const Ref<NSString> &text);

// Telephone and post

/// "+" and 2 to 15 digits of country code and number, the first of which is not 0.
bool isE164TelephoneNumber(const Ref<NSString> &text);
/// As people write it, 64 characters at most: 3 to 15 digits with single blanks, hyphens, dots and slashes
/// between them, groups in parentheses, "+" in front and an extension ("x12", "ext. 12", ";ext=12") at the
/// end.
bool isTelephoneNumber(const Ref<NSString> &text);
/// A postal code of a country, given by its two capital letters of ISO 3166. False for countries that are not
/// in the table (Validation/PostalCodes.cpp).
bool isPostalCode(const Ref<NSString> &text, const Ref<NSString> &country);

// Check digits

/// At least two digits, the last of which checks the others by ISO/IEC 7812: cards, IMEIs.
bool hasLuhnCheckDigit(const Ref<NSString> &text);
/// An account number of ISO 13616, with a country of its registry and that country's length and form: without
/// blanks, or in groups of four with single blanks. Capitals only.
bool isIBAN(const Ref<NSString> &text);
/// At least one digit and a check character, "0" to "9" or "X", by ISO 7064 MOD 11-2: ISNI, ORCID.
bool hasMod11_2CheckCharacter(const Ref<NSString> &text);
/// An identity number of GB 11643: 17 digits, of which the seventh to fourteenth are a Gregorian date, and a
/// check character as above.
bool isChineseIdentityNumber(const Ref<NSString> &text);

// Characters

/// Whether there are only hexadecimal digits.
bool isHexadecimal(const Ref<NSString> &text);
/// Whether there are only letters of any script, with their combining marks.
bool isAllLetters(const Ref<NSString> &text);
/// Whether there is a Chinese character; Japanese and Korean texts may contain some, too.
bool containsChinese(const Ref<NSString> &text);
/// Whether something is shown as an emoji: "☺" only when the variation selector for that follows.
bool containsEmoji(const Ref<NSString> &text);

} // namespace qn

#pragma GCC visibility pop
