// A text in which one searches by what somebody types on a keyboard with Latin letters.
//
// A Chinese character is found by itself and by the beginning of its syllable, one letter or more, with or
// without its tone: 打印机 by "dyj", "dayinji", "dayj", "dǎyìnjī" and "打yj". Blanks and apostrophes may
// stand between syllables ("da yin", "xi'an"), and "v" or "u" for "ü". Everything else is found by itself, in
// any case. Readings are those of `pinyin`.
//
//     const qn::PinyinText name(u"三楼打印机"_ns);
//     name.rangeOf(u"dyj"_ns); // 2, 3
//
// Nothing is prepared before the first search, and no reading is fetched before a letter is searched for in
// Chinese; both are kept. A search takes time in proportion to text times typed. Threads: one at a time.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/HanReading.h"
#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

namespace qn {

class PinyinText {
public:
    /// In none, nothing is found.
    explicit PinyinText(const Ref<NSString> &text) : text_(text) {}

    /// What was typed, of several places the one that ends first, and of those the longest. Location
    /// NSNotFound and length 0 when there is none, or nothing was typed.
    NSRange rangeOf(const Ref<NSString> &typed) const;
    /// Whether the text begins with what was typed; false when nothing was.
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
