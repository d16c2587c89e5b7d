// Texts with attributes by range.
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

namespace {

/// "a:x bc:y …" — the characters of each effective range and the value of attribute `k`, "." for none.
std::string shown(const NSAttributedString &attributed) {
    std::string all;
    for (NSRange range; range.end() < attributed.length();) {
        const id value = attributed.attribute(u"k"_ns, range.end(), &range);
        all += text(attributed.string()->substringWithRange(range)) + ":" + (value ? text(value) : ".") + " ";
    }
    return all;
}

} // namespace

TEST(NSAttributedString, keepsAttributesByRange) {
    const auto source = NSMutableAttributedString::attributedStringWithString(u"abcdef"_ns);
    source->addAttribute(u"k"_ns, u"1"_ns, {1, 3});
    source->addAttribute(u"k"_ns, u"2"_ns, {3, 2});
    const auto snapshot = as<NSAttributedString>(source->copy());
    const auto part = snapshot->attributedSubstringFromRange({2, 3});
    source->removeAttribute(u"k"_ns, {0, 6});
    EXPECT_EQ(source->attributesAtIndex(1)->count(), 0u);
    EXPECT_EQ(shown(*snapshot), "a:. bc:1 de:2 f:. ");
    const auto whole = as<NSMutableAttributedString>(part->mutableCopy());
    whole->appendAttributedString(whole);
    EXPECT_EQ(shown(*whole), "c:1 de:2 c:1 de:2 ");
    EXPECT_EQ(text(part), "c{\n    k = 1;\n}de{\n    k = 2;\n}");
    const auto empty = NSAttributedString::attributedStringWithString(nullptr);
    EXPECT_TRUE(snapshot->attributedSubstringFromRange({6, 0})->isEqual(empty));
    EXPECT_FALSE(whole->isEqual(whole->string()));
    EXPECT_EQ(raised([&] { return empty->attributesAtIndex(0); }), NSRangeException);
    EXPECT_EQ(raised([&] { return part->attributedSubstringFromRange(NSMakeRange(1, 3)); }),
              NSRangeException);
    EXPECT_EQ(raised([&] { source->setAttributes(nullptr, NSMakeRange(7, 0)); }), NSRangeException);
}

TEST(NSAttributedString, followsOneAttributeACharacterThroughRandomChanges) {
    Random random(31);
    using Model = std::vector<std::pair<char, char>>; // a character and its attribute, '.' for none
    std::map<Model, Ref<NSMutableAttributedString>> met;
    std::size_t again = 0;
    for (int round = 0; round < 3000; ++round) {
        const auto made = NSMutableAttributedString::attributedStringWithString(u"ab"_ns);
        Model model = {{'a', '.'}, {'b', '.'}};
        for (std::size_t changes = random() % 6; changes > 0; --changes) {
            const std::size_t from = random() % (model.size() + 1),
                              length = random() % (model.size() - from + 1);
            const char value = "12."[random() % 3];
            const auto marked = dictionaryOf({{u"k"_ns, string({&value, 1})}});
            const auto attributes = value == '.' ? nullptr : marked;
            const auto operation = random() % 4;
            if (operation == 0 && model.size() < 6) {
                model.emplace_back('c', value);
                made->appendAttributedString(
                    NSMutableAttributedString::attributedStringWithString(u"c"_ns, attributes));
                EXPECT_EQ(made->length(), model.size());
            } else {
                for (std::size_t i = from; i < from + length; ++i)
                    model[i].second = value;
                if (operation == 1 && value == '.')
                    made->removeAttribute(u"k"_ns, {from, length});
                else if (operation == 1)
                    made->addAttribute(u"k"_ns, string({&value, 1}), {from, length});
                else
                    made->setAttributes(attributes, {from, length});
            }
        }
        const std::size_t from = random() % (model.size() + 1), length = random() % (model.size() - from + 1);
        const auto part = made->attributedSubstringFromRange({from, length});
        for (std::size_t i = 0; i < length; ++i) {
            EXPECT_EQ(part->string()->characterAtIndex(i), static_cast<unichar>(model[from + i].first));
            const id value = part->attribute(u"k"_ns, i);
            ASSERT_EQ(value ? text(value) : ".", std::string(1, model[from + i].second)) << text(made);
        }
        const auto [same, isNew] = met.emplace(model, made);
        again += !isNew;
        for (const auto &[others, other] : {*same, *met.begin()})
            ASSERT_EQ(other->isEqual(made->copy()), others == model) << text(other) << text(made);
        ASSERT_EQ(same->second->hash(), as<NSAttributedString>(made->copy())->hash());
    }
    EXPECT_GT(again, 1000u);
}

TEST(NSAttributedString, aChangeLooksAtItsOwnRangeOnly) {
    static int comparisons;
    class Value final : public NSObject {
    public:
        bool isEqual(const id &other) const override { return ++comparisons, NSObject::isEqual(other); }
    };
    const auto attributes = [] { return dictionaryOf({{u"k"_ns, make<Value>()}}); };
    constexpr int count = 500;
    const auto made = make<NSMutableAttributedString>();
    comparisons = 0;
    for (int i = 0; i < count; ++i)
        made->appendAttributedString(NSAttributedString::attributedStringWithString(u"abc"_ns, attributes()));
    for (NSUInteger i = 0; i < count; ++i)
        made->setAttributes(attributes(), {3 * i + 1, 1});
    EXPECT_LT(comparisons, 4 * count);
}
