// Chinese in Latin letters, beside ICU itself, the syllables that there are, and a slow and obvious search.
// docs/pinyin.md quotes from here.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+Pinyin.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/HanReading.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinSyllable.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinText.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/OnThreads.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/TextTable.h"
#include "Tests/Support/Words.h"

#include <unicode/translit.h>
#include <unicode/uniset.h>

namespace {

using Units = std::u16string;

Ref<NSString> of(const Units &units) {
    return make<NSString>(units);
}

Units unitsOf(const icu::UnicodeString &text) {
    return Units(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

/// The finals of Chinese by the Scheme for the Chinese Phonetic Alphabet, as they are written after an
/// initial, "y" and "w" among those, or by themselves.
const auto finals =
    words("a o e ai ei ao ou an en ang eng ong er i ia ie iao iu ian in iang ing iong u ua uo uai "
          "ui uan un uang ue ü üe");

/// What a person would try: each way to spend the typed characters on the text from here on, all of them.
/// The ends of those that use up all of it.
std::set<std::size_t> endsOf(const std::vector<std::pair<Units, Units>> &characters, std::size_t at,
                             const Units &typed) {
    if (typed.empty())
        return {at};
    if (at == characters.size())
        return {};
    const auto &[itself, letters] = characters[at];
    std::set<std::size_t> ends;
    const auto spend = [&](std::size_t size) { ends.merge(endsOf(characters, at + 1, typed.substr(size))); };
    if (typed.starts_with(itself))
        spend(itself.size());
    for (std::size_t size = 1; size <= letters.size() && size <= typed.size(); ++size) {
        const char16_t letter = letters[size - 1], given = typed[size - 1];
        if (given != letter && !(letter == u'ü' && (given == u'u' || given == u'v')))
            break;
        const std::size_t rest = std::min(typed.find_first_not_of(u' ', size), typed.size());
        for (std::size_t gap = size; gap <= rest; ++gap)
            spend(gap);
    }
    return ends;
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
    for (const auto &[given, expected] : rowsOf(ZK_TABLES "/Foundation/NSString/Readings.txt")) {
        const auto name = string(given);
        EXPECT_EQ(text(qn::pinyin(name)) + " | " + text(qn::pinyinWithoutToneMarks(name)) + " | " +
                      text(qn::pinyinInitials(name)) + " | " + text(qn::pinyinFirstLetters(name)),
                  expected);
    }
    for (const auto operation : {qn::pinyin, qn::pinyinWithoutToneMarks, qn::pinyinInitials,
                                 qn::pinyinFirstLetters, qn::pinyinSortingKey}) {
        EXPECT_EQ(operation(nullptr), nullptr);
        EXPECT_EQ(text(operation(u""_ns)), "");
    }
    for (const auto operation :
         {qn::pinyin, qn::pinyinWithoutToneMarks, qn::pinyinInitials, qn::pinyinFirstLetters})
        EXPECT_EQ(text(operation(u"Laser — ひらがな 한글 é"_ns)), "Laser — ひらがな 한글 é");
    EXPECT_EQ(qn::pinyin(of(u"\xD801打\xDC00"))->units(), u"\xD801"
                                                          u"dǎ\xDC00");
}

TEST(Pinyin, readsRunsOfAllIdeographsAsICUDoes) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Transliterator> theirs(
        icu::Transliterator::createInstance("Han-Latin", UTRANS_FORWARD, status));
    const icu::UnicodeSet ideographs(u"[[:sc=Han:]&[:Ideographic:]]", status);
    ASSERT_TRUE(U_SUCCESS(status));
    Random random(1);
    std::set<std::string> unknown;
    for (std::int32_t round = 0; round < ideographs.size() / 120; ++round) {
        icu::UnicodeString raw;
        for (int i = 0; i < 30; ++i)
            raw.append(
                ideographs.charAt(static_cast<std::int32_t>(random() % 0x7FFFFFFF) % ideographs.size()));
        auto run = qn::han::charactersOf(unitsOf(raw));
        theirs->transliterate(raw);
        const auto syllables = words(text(of(unitsOf(raw))));
        ASSERT_EQ(syllables.size(), run.size());
        qn::han::addReadings(run);
        for (std::size_t i = 0; i < run.size(); ++i) {
            const Units &reading = run[i].reading;
            EXPECT_EQ(reading.empty() ? "" : syllables[i], text(of(reading)));
            EXPECT_EQ(reading.empty(), qn::han::hasIdeographs(string(syllables[i])->units())) << syllables[i];
            const qn::PinyinSyllable syllable(reading);
            const auto whole = text(of(Units(syllable.letters))),
                       after = text(of(Units(syllable.letters.substr(syllable.initial().size()))));
            if (!after.empty() && !std::ranges::count(finals, after) && !std::ranges::count(finals, whole))
                unknown.insert(whole);
        }
    }
    unknown.erase("hm"); // a sigh
    EXPECT_EQ(unknown, std::set<std::string>()) << "syllables that there are not";
}

TEST(Pinyin, findsWhatAPersonWouldFind) {
    const std::vector<std::pair<Units, Units>> alphabet = {
        {u"打", u"da"}, {u"大", u"da"}, {u"安", u"an"}, {u"女", u"nü"}, {u"略", u"lüe"}, {u"干", u"gan"},
        {u"a", u""},    {u"1", u""},    {u" ", u""},    {u"々", u""},   {u"𠀀", u"he"}};
    const Units keys = u"daanuvünlhe 1打女";
    Random random(2);
    int found = 0;
    for (int round = 0; round < 30000; ++round) {
        std::vector<std::pair<Units, Units>> characters(1 + random.below(6));
        Units units, typed;
        std::vector<std::size_t> places;
        for (auto &one : characters) {
            one = random.of(alphabet);
            places.push_back(units.size());
            units += one.first;
        }
        places.push_back(units.size());
        for (std::size_t size = 1 + random.below(6); size > 0; --size)
            typed += random.of(keys);
        NSRange expected{NSNotFound, 0};
        std::size_t firstEnd = characters.size() + 1;
        for (std::size_t start = 0; start < characters.size(); ++start) {
            const auto ends = endsOf(characters, start, typed);
            if (ends.empty() || *ends.begin() >= firstEnd)
                continue;
            firstEnd = *ends.begin();
            expected = {places[start], places[firstEnd] - places[start]};
        }
        const auto both = text(of(units + u" / " + typed));
        const qn::PinyinText searched(of(units));
        ASSERT_EQ(searched.rangeOf(of(typed)), expected) << both;
        ASSERT_EQ(searched.hasPrefix(of(typed)), !endsOf(characters, 0, typed).empty()) << both;
        found += expected.length > 0;
    }
    EXPECT_GT(found, 1000);
}

TEST(Pinyin, forgivesHowItIsTyped) {
    const std::tuple<const char *, const char *, NSRange> rows[] = {
        {"西安", "xi'an", {0, 2}},   {"西安", "xi’an", {0, 2}},
        {"西安", "xian", {0, 2}},    {"女", "nu\u0308\u030C", {0, 1}},
        {"女", "NÜ", {0, 1}},        {"女", "nǚ", {0, 1}},
        {"打", "da\u030C", {0, 1}},  {"打印", "da y ", {0, 2}},
        {"ÉTÉ 打", "été d", {0, 5}}, {"𠀀1", "he1", {0, 3}}};
    for (const auto &[given, typed, range] : rows)
        EXPECT_EQ(qn::rangeOfPinyin(string(given), string(typed)), range) << given << " / " << typed;
    const NSRange nowhere{NSNotFound, 0};
    for (const auto &[given, typed] :
         {std::pair{"先", "xi'an"}, {"打", "d a"}, {"Straße", "STRASSE"}, {"打", ""}, {"", "d"}})
        EXPECT_EQ(qn::rangeOfPinyin(string(given), string(typed)), nowhere) << given << " / " << typed;
    EXPECT_EQ(qn::rangeOfPinyin(nullptr, u"d"_ns), nowhere);
    EXPECT_EQ(qn::rangeOfPinyin(u"打"_ns, nullptr), nowhere);
}

TEST(Pinyin, sortsAsDictionariesDo) {
    const std::vector<std::string> sorted = {"1 楼", "阿",   "安", "八达", "巴",   "爸", "重庆", "大",
                                             "大厅", "大印", "单", "Dell", "Lu 1", "卢", "驴",   "绿",
                                             "乱",   "略",   "罗", "西安", "先",   "中", "重"};
    std::vector<std::string> seen = sorted;
    std::shuffle(seen.begin(), seen.end(), Random(3));
    std::sort(seen.begin(), seen.end(), [](const std::string &a, const std::string &b) {
        return qn::pinyinSortingKey(string(a))->compare(qn::pinyinSortingKey(string(b))) ==
               NSComparisonResult::OrderedAscending;
    });
    EXPECT_EQ(seen, sorted);
}

TEST(Pinyin, isReadByManyThreadsFromTheStart) {
    dispatch::onThreads(4, [](int) {
        for (int round = 0; round < 50; ++round)
            EXPECT_EQ(text(qn::pinyin(u"重庆打印机"_ns)), "chóng qìng dǎ yìn jī");
    });
}
