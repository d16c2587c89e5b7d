// Texts with attributes by range.
#include "Platform/Foundation/NSAttributedString.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Tests/Platform/Foundation/Text.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

/// "a:x ab:y …" — the characters of each effective range and the value of attribute `k`.
std::string shown(const NSAttributedString &attributed) {
    std::string all;
    for (NSRange range; range.end() < attributed.length();) {
        const id value = attributed.attribute(u"k"_ns, range.end(), &range);
        all += text(attributed.string()->substringWithRange(range)) + ":" + text(value) + " ";
    }
    return all;
}

} // namespace

TEST(NSAttributedString, keepsAttributesByRange) {
    const auto source = NSMutableAttributedString::attributedStringWithString(u"abcdef"_ns);
    source->addAttribute(u"k"_ns, u"1"_ns, {1, 3});
    EXPECT_EQ(shown(*source), "a:(none) bcd:1 ef:(none) ");
    source->addAttribute(u"k"_ns, u"2"_ns, {3, 2});
    const auto snapshot = as<NSAttributedString>(source->copy());
    const auto part = snapshot->attributedSubstringFromRange({2, 3});
    source->setAttributes(nullptr, {2, 4});
    EXPECT_EQ(shown(*source), "a:(none) b:1 cdef:(none) ");
    source->removeAttribute(u"k"_ns, {0, 6});
    EXPECT_EQ(source->attributesAtIndex(1)->count(), 0u);
    EXPECT_EQ(shown(*snapshot), "a:(none) bc:1 de:2 f:(none) ");
    EXPECT_EQ(shown(*part), "c:1 de:2 ");
    const auto whole = as<NSMutableAttributedString>(part->mutableCopy());
    whole->appendAttributedString(whole);
    EXPECT_EQ(shown(*whole), "c:1 de:2 c:1 de:2 ");
    EXPECT_EQ(text(part), "c{\n    k = 1;\n}de{\n    k = 2;\n}");
    const auto empty = NSAttributedString::attributedStringWithString(nullptr);
    EXPECT_TRUE(snapshot->attributedSubstringFromRange({6, 0})->isEqual(empty));
    EXPECT_EQ(raised([&] { return empty->attributesAtIndex(0); }), NSRangeException);
    EXPECT_EQ(raised([&] { return part->attributedSubstringFromRange({1, 3}); }), NSRangeException);
    EXPECT_EQ(raised([&] { return source->setAttributes(nullptr, {7, 0}), 0; }), NSRangeException);
}

TEST(NSAttributedString, isComparedByTextAndAttributes) {
    // However the runs came about: against one attribute a character.
    constexpr unsigned seed = 31;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::map<std::string, Ref<NSMutableAttributedString>> byAttributes;
    std::size_t met = 0;
    for (int round = 0; round < 500; ++round) {
        std::string model = "...";
        const auto made = NSMutableAttributedString::attributedStringWithString(u"abc"_ns);
        for (std::size_t changes = random() % 4; changes > 0; --changes) {
            const std::size_t from = random() % 4, length = random() % (4 - from);
            const char value = "12."[random() % 3];
            model.replace(from, length, length, value);
            if (value == '.')
                made->setAttributes(nullptr, {from, length});
            else
                made->addAttribute(u"k"_ns, string({&value, 1}), {from, length});
        }
        for (const auto &[attributes, other] : byAttributes)
            ASSERT_EQ(other->isEqual(made), attributes == model) << text(other) << text(made);
        met += !byAttributes.emplace(model, made).second;
    }
    EXPECT_GT(met, 400u);
    const auto one = NSAttributedString::attributedStringWithString(u"a"_ns);
    EXPECT_EQ(one->hash(), as<NSAttributedString>(one->mutableCopy())->hash());
    EXPECT_FALSE(one->isEqual(u"a"_ns));
    EXPECT_FALSE(one->isEqual(NSAttributedString::attributedStringWithString(u"b"_ns)));
}
