// Chinese in Latin letters. A text of none gives none. Any thread.
//
// Each Chinese character becomes the syllable that ICU's transliteration has for it. Everything else stays as
// it is, as do the rare characters for which ICU has no syllable. Of several readings (行 is "xíng" or
// "háng") a character has the commonest, except in the few words that ICU knows (重庆 is "chóng qìng"). Kanji
// and Hanja are read as if they were Chinese.
//
// The first text with Chinese takes about 0.1 s, while ICU loads its rules, each further character about 10
// µs; texts without Chinese cost neither. To search one text many times, use `PinyinText`.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

namespace qn {

/// "打印机L200" becomes "dǎ yìn jī L200": a blank stands between syllables, and between a syllable and a
/// letter or digit.
Ref<NSString> pinyin(const Ref<NSString> &text);
/// "打印机L200" becomes "da yin ji L200". "ü" stays: 女 is "nü".
Ref<NSString> pinyinWithoutToneMarks(const Ref<NSString> &text);
/// The initial consonants of the syllables: 中国 becomes "zh g". A syllable that begins with a vowel gives
/// its first letter.
Ref<NSString> pinyinInitials(const Ref<NSString> &text);
/// The first letters of the syllables, without blanks: "dyjL200".
Ref<NSString> pinyinFirstLetters(const Ref<NSString> &text);

/// A text that `compare` puts into the order of Chinese dictionaries by sound. Chinese is ordered character
/// by character: by the letters of the syllable with "ü" as "u", then "u" before "ü", then by tone, then by
/// code unit. The rest is case-folded.
Ref<NSString> pinyinSortingKey(const Ref<NSString> &text);

/// Where the text contains what was typed, as `PinyinText::rangeOf` finds it; location NSNotFound and length
/// 0 when it does not, or nothing was typed.
NSRange rangeOfPinyin(const Ref<NSString> &text, const Ref<NSString> &typed);
/// Whether the text begins with what was typed; false when nothing was typed.
bool hasPinyinPrefix(const Ref<NSString> &text, const Ref<NSString> &typed);

} // namespace qn

#pragma GCC visibility pop
