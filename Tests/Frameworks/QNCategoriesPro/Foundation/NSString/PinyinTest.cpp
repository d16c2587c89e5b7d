// Chinese in Latin letters, beside ICU itself, the syllables that there are, and a slow and obvious search.
// docs/pinyin.md quotes from here.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+Pinyin.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/HanReading.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinSyllable.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinText.h"
#include "Tests/Support/Objects.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <sstream>
#include <thread>
#include <unicode/translit.h>
#include <unicode/uniset.h>

namespace {

using Units = std::u16string;

Ref<NSString> ofUnits(const Units &units) {
    return make<NSString>(units);
}

const Units &ideographs() {
    static const Units all = [] {
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeSet set(u"[[:sc=Han:]&[:Ideographic:]]", status);
        icu::UnicodeString made;
        for (std::int32_t i = 0; i < set.size(); ++i)
            made.append(set.charAt(i));
        return Units(made.getBuffer(), static_cast<std::size_t>(made.length()));
    }();
    return all;
}

/// The finals of Chinese by the Scheme for the Chinese Phonetic Alphabet, as they are written after an
/// initial, "y" and "w" among those, or by themselves.
const std::set<Units> finals = {u"a",   u"o",   u"e",    u"ai",   u"ei",   u"ao", u"ou", u"an",  u"en",
                                u"ang", u"eng", u"ong",  u"er",   u"i",    u"ia", u"ie", u"iao", u"iu",
                                u"ian", u"in",  u"iang", u"ing",  u"iong", u"u",  u"ua", u"uo",  u"uai",
                                u"ui",  u"uan", u"un",   u"uang", u"ue",   u"ü",  u"üe", u""};

/// What a person would try: each way to spend the typed characters on the text from here on, all of them.
/// The ends of those that use up all of it.
void endsOf(const std::vector<std::pair<Units, Units>> &characters, std::size_t at, const Units &typed,
            std::set<std::size_t> &ends) {
    if (typed.empty()) {
        ends.insert(at);
        return;
    }
    if (at == characters.size())
        return;
    const auto &[itself, letters] = characters[at];
    if (typed.starts_with(itself))
        endsOf(characters, at + 1, typed.substr(itself.size()), ends);
    for (std::size_t size = 1; size <= letters.size() && size <= typed.size(); ++size) {
        if (typed[size - 1] != letters[size - 1] &&
            !(letters[size - 1] == u'ü' && (typed[size - 1] == u'u' || typed[size - 1] == u'v')))
            break;
        endsOf(characters, at + 1, typed.substr(size), ends);
        if (const auto rest = typed.find_first_not_of(u' ', size); rest != size)
            for (std::size_t gap = size + 1; gap <= std::min(rest, typed.size()); ++gap)
                endsOf(characters, at + 1, typed.substr(gap), ends);
    }
}

} // namespace

TEST(Pinyin, theManualsExample) {
    const auto name = u"三楼打印机L200"_ns;
    EXPECT_EQ(text(qn::pinyin(name)), "sān lóu dǎ yìn jī L200");
    EXPECT_EQ(text(qn::pinyinWithoutToneMarks(name)), "san lou da yin ji L200");
    EXPECT_EQ(text(qn::pinyinInitials(u"中国"_ns)), "zh g");
    EXPECT_EQ(text(qn::pinyinFirstLetters(name)), "sldyjL200");

    EXPECT_EQ(qn::rangeOfPinyin(name, u"dyj"_ns), NSMakeRange(2, 3));
    EXPECT_TRUE(qn::hasPinyinPrefix(name, u"san l"_ns));

    const qn::PinyinText searched(name); // for many searches of one text
    for (const auto &typed :
         {u"dayinji"_ns, u"dayj"_ns, u"da yin ji"_ns, u"DYJ"_ns, u"打yj"_ns, u"dǎyìnjī"_ns})
        EXPECT_EQ(searched.rangeOf(typed), NSMakeRange(2, 3));
}

TEST(Pinyin, leavesOtherTextAlone) {
    const struct {
        const char *text, *marked, *plain, *initials, *letters;
    } rows[] = {
        {"", "", "", "", ""},
        {"Laser — ひらがな 한글 é", "Laser — ひらがな 한글 é", "Laser — ひらがな 한글 é",
         "Laser — ひらがな 한글 é", "Laser — ひらがな 한글 é"},
        {"（打）印，机。", "（dǎ）yìn，jī。", "（da）yin，ji。", "（d）y，j。", "（d）y，j。"},
        {"3楼 打 印", "3 lóu dǎ yìn", "3 lou da yin", "3 l d y", "3l d y"},
        {"Ｆ打プ印", "Ｆ dǎ プ yìn", "Ｆ da プ yin", "Ｆ d プ y", "Ｆdプy"},
        {"女儿绿略", "nǚ ér lǜ lüè", "nü er lü lüe", "n e l l", "nell"},
        {"西安 呣嗯", "xī ān ḿ ń", "xi an m n", "x a m n", "xa mn"},
        {"重庆 重要 沈阳 藏文", "chóng qìng zhòng yào shěn yáng zàng wén",
         "chong qing zhong yao shen yang zang wen", "ch q zh y sh y z w", "cq zy sy zw"},
        {"行", "xíng", "xing", "x", "x"},
        {"㐅𠀀々〇", "wǔ hē 々 líng", "wu he 々 ling", "w h 々 l", "wh々l"},
    };
    for (const auto &row : rows) {
        const auto given = string(row.text);
        EXPECT_EQ(text(qn::pinyin(given)), row.marked);
        EXPECT_EQ(text(qn::pinyinWithoutToneMarks(given)), row.plain);
        EXPECT_EQ(text(qn::pinyinInitials(given)), row.initials);
        EXPECT_EQ(text(qn::pinyinFirstLetters(given)), row.letters);
    }
    for (const auto operation : {qn::pinyin, qn::pinyinWithoutToneMarks, qn::pinyinInitials,
                                 qn::pinyinFirstLetters, qn::pinyinSortingKey})
        EXPECT_EQ(operation(nullptr), nullptr);
    EXPECT_EQ(qn::pinyin(ofUnits(u"\xD801打\xDC00"))->units(), u"\xD801"
                                                               u"dǎ\xDC00");
}

TEST(Pinyin, readsRunsOfAllIdeographsAsICUDoes) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Transliterator> theirs(
        icu::Transliterator::createInstance("Han-Latin", UTRANS_FORWARD, status));
    ASSERT_TRUE(U_SUCCESS(status));
    auto characters = qn::han::charactersOf(ideographs());
    std::shuffle(characters.begin(), characters.end(), std::mt19937(1));
    characters.resize(characters.size() / 4);
    std::set<Units> unknown;
    for (std::size_t first = 0; first < characters.size(); first += 30) {
        std::vector run(characters.begin() + static_cast<std::ptrdiff_t>(first),
                        characters.begin() +
                            static_cast<std::ptrdiff_t>(std::min(first + 30, characters.size())));
        icu::UnicodeString raw;
        for (const auto &one : run)
            raw.append(static_cast<UChar32>(one.value));
        theirs->transliterate(raw);
        std::istringstream syllables(
            NSString(Units(raw.getBuffer(), static_cast<std::size_t>(raw.length()))).utf8());
        qn::han::addReadings(run);
        for (const auto &one : run) {
            std::string theirOwn;
            syllables >> theirOwn;
            if (one.reading.empty())
                EXPECT_TRUE(qn::han::hasIdeographs(string(theirOwn)->units())) << theirOwn;
            else
                EXPECT_EQ(NSString(one.reading).utf8(), theirOwn);
            const qn::PinyinSyllable syllable(one.reading);
            const Units after(syllable.letters.substr(syllable.initial().size()));
            if (!one.reading.empty() && !finals.contains(after) && !finals.contains(syllable.letters))
                unknown.insert(syllable.letters);
        }
        EXPECT_TRUE((syllables >> std::ws).eof());
    }
    unknown.erase(u"hm"); // a sigh
    EXPECT_EQ(unknown, std::set<Units>()) << "syllables that there are not";
}

TEST(Pinyin, findsWhatAPersonWouldFind) {
    const std::vector<std::pair<Units, Units>> alphabet = {
        {u"打", u"da"}, {u"大", u"da"}, {u"安", u"an"}, {u"女", u"nü"}, {u"略", u"lüe"}, {u"干", u"gan"},
        {u"a", u""},    {u"1", u""},    {u" ", u""},    {u"々", u""},   {u"𠀀", u"he"}};
    const Units keys = u"daanuvünlhe 1打女";
    std::mt19937 random(2);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    int found = 0;
    for (int round = 0; round < 30000; ++round) {
        std::vector<std::pair<Units, Units>> characters(1 + below(6));
        Units units, typed;
        std::vector<std::size_t> places;
        for (auto &one : characters) {
            one = alphabet[below(alphabet.size())];
            places.push_back(units.size());
            units += one.first;
        }
        places.push_back(units.size());
        for (std::size_t size = 1 + below(6); size > 0; --size)
            typed += keys[below(keys.size())];

        NSRange expected{NSNotFound, 0};
        std::size_t firstEnd = characters.size() + 1;
        for (std::size_t start = 0; start < characters.size(); ++start) {
            std::set<std::size_t> ends;
            endsOf(characters, start, typed, ends);
            if (ends.empty() || *ends.begin() >= firstEnd)
                continue;
            firstEnd = *ends.begin();
            expected = {places[start], places[firstEnd] - places[start]};
        }
        std::set<std::size_t> ends;
        endsOf(characters, 0, typed, ends);
        const qn::PinyinText searched(ofUnits(units));
        ASSERT_EQ(searched.rangeOf(ofUnits(typed)), expected)
            << NSString(units).utf8() << " / " << NSString(typed).utf8();
        ASSERT_EQ(searched.hasPrefix(ofUnits(typed)), !ends.empty())
            << NSString(units).utf8() << " / " << NSString(typed).utf8();
        found += expected.length > 0;
    }
    EXPECT_GT(found, 1000);
}

TEST(Pinyin, forgivesHowItIsTyped) {
    const struct {
        const char *text, *typed;
        NSRange range;
    } rows[] = {
        {"西安", "xi'an", {0, 2}},
        {"西安", "xi’an", {0, 2}},
        {"西安", "xian", {0, 2}},
        {"先", "xi'an", {NSNotFound, 0}},
        {"女", "NÜ", {0, 1}},
        {"女", "nu\u0308\u030C", {0, 1}},
        {"女", "nǚ", {0, 1}},
        {"打", "da\u030C", {0, 1}},
        {"打", "d a", {NSNotFound, 0}},
        {"打印", "da y ", {0, 2}},
        {"Straße", "STRASSE", {NSNotFound, 0}},
        {"ÉTÉ 打", "été d", {0, 5}},
        {"打", "", {NSNotFound, 0}},
        {"", "d", {NSNotFound, 0}},
        {"none", "d", {NSNotFound, 0}},
        {"打", "none", {NSNotFound, 0}},
        {"𠀀1", "he1", {0, 3}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(qn::rangeOfPinyin(std::string_view(row.text) == "none" ? nullptr : string(row.text),
                                    std::string_view(row.typed) == "none" ? nullptr : string(row.typed)),
                  row.range)
            << row.text << " / " << row.typed;
}

TEST(Pinyin, sortsAsDictionariesDo) {
    const std::vector<std::string> sorted = {"1 楼", "阿",   "安", "八达", "巴",   "爸", "重庆", "大",
                                             "大厅", "大印", "单", "Dell", "Lu 1", "卢", "驴",   "绿",
                                             "乱",   "略",   "罗", "西安", "先",   "中", "重"};
    std::vector<std::string> seen = sorted;
    std::shuffle(seen.begin(), seen.end(), std::mt19937(3));
    std::sort(seen.begin(), seen.end(), [](const std::string &a, const std::string &b) {
        return qn::pinyinSortingKey(string(a))->compare(qn::pinyinSortingKey(string(b))) ==
               NSComparisonResult::OrderedAscending;
    });
    EXPECT_EQ(seen, sorted);
}

TEST(Pinyin, isReadByManyThreadsFromTheStart) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int round = 0; round < 50; ++round)
                EXPECT_EQ(text(qn::pinyin(u"重庆打印机"_ns)), "chóng qìng dǎ yìn jī");
        });
    for (std::thread &thread : threads)
        thread.join();
}
