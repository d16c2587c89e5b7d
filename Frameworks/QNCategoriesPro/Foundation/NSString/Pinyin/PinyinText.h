// A text that is searched by what somebody types on a keyboard with Latin letters.
//
// A Chinese character is found by itself and by the beginning of its syllable, one letter or more, with or
// without its tone: 打印机 by "dyj", "dayinji", "dayj", "dǎyìnjī" and "打yj". Blanks and apostrophes may be
// typed between syllables
// ("da yin", "xi'an"), and "v" or "u" for "ü". Everything else is found by itself, ignoring case. Readings
// are those of `pinyin`.
//
//     const qn::PinyinText name(u"三楼打印机"_ns);
//     name.rangeOf(u"dyj"_ns); // 2, 3
//
// The text is prepared at the first search, and readings are fetched at the first search with a letter in a
// text with Chinese; both are kept. A search takes time proportional to the length of the text times that of
// what was typed. Threads: one at a time, also for searches.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/HanReading.h"
#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

namespace qn {

class PinyinText {
public:
    /// A text of none contains nothing.
    explicit PinyinText(const Ref<NSString> &text) : text_(text) {}

    /// Where the text contains what was typed: of several places the one that ends first, of those the
    /// longest. Location NSNotFound and length 0 when there is none, or nothing was typed.
    NSRange rangeOf(const Ref<NSString> &typed) const;
    /// Whether the text begins with what was typed; false when nothing was typed.
    bool hasPrefix(const Ref<NSString> &typed) const;

private:
    enum class At { anywhere, beginning };
    NSRange search(const Ref<NSString> &typed, At place) const;
    void prepare() const;
    void read() const;

    Ref<NSString> text_;
    mutable std::vector<han::Character> characters_; ///< in lower case, the readings without tones
    mutable bool isUnread_ = false;                  ///< there are ideographs, without readings so far
};

} // namespace qn
