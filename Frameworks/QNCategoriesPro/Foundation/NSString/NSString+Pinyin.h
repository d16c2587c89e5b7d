// Chinese in Latin letters. None gives none. Any thread.
//
// Each Chinese character becomes the syllable that ICU's transliteration has for it, and everything else
// stays as it is; so do the rare characters that ICU has no syllable for. A character with several readings
// (行 is "xíng" or "háng") has the commonest, whatever the word; ICU knows better in some words only (重庆 is
// "chóng qìng"). Kanji and Hanja are read as if they were Chinese.
//
// The first text with Chinese takes some 0.1 s, in which ICU loads its rules, each further character some
// 10 µs; a text without any takes neither. `PinyinText` searches one text many times.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

namespace qn {

/// "打印机L200" becomes "dǎ yìn jī L200": a blank stands between syllables, and between a syllable and a
/// letter or digit.
Ref<NSString> pinyin(const Ref<NSString> &text);
/// "dǎ yìn jī L200" as "da yin ji L200". "ü" is no tone mark: 女 is "nü".
Ref<NSString> pinyinWithoutToneMarks(const Ref<NSString> &text);
/// The initials of the syllables, "zh" and "g" of 中国 as "zh g". The first letter stands for one that begins
/// with a vowel.
Ref<NSString> pinyinInitials(const Ref<NSString> &text);
/// The first letters of the syllables, without blanks: "dyjL200".
Ref<NSString> pinyinFirstLetters(const Ref<NSString> &text);

/// A text that `compare` puts in the order of Chinese dictionaries by sound: character by character, by
/// letters without regard to the dots of "ü", then those with dots after those without, then by tone, then by
/// code unit. Of everything else, case does not count.
Ref<NSString> pinyinSortingKey(const Ref<NSString> &text);

/// Where a text has what somebody typed: location NSNotFound and length 0 when nowhere or when nothing was
/// typed. As `PinyinText::rangeOf`.
NSRange rangeOfPinyin(const Ref<NSString> &text, const Ref<NSString> &typed);
/// Whether the text begins with what somebody typed; false when nothing was.
bool hasPinyinPrefix(const Ref<NSString> &text, const Ref<NSString> &typed);

} // namespace qn
