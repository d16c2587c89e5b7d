// Models copied, compared and archived.
#include "Platform/Foundation/NSCoder.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSKeyedArchiver.h"
#include "Platform/Foundation/NSKeyedUnarchiver.h"
#include "Platform/Foundation/NSNull.h"
#include "Platform/Foundation/NSPropertyListSerialization.h"
#include "Tests/Frameworks/ModelTesting.h"
#include "Tests/Platform/Foundation/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

/// Counts how often it is hashed.
class Counted : public Node {
    NS_CLASS(Counted, Node)
public:
    static inline int hashes = 0;
    NSUInteger hash() const override {
        ++hashes;
        return Node::hash();
    }
};
NS_IMPLEMENTATION(Counted) {}

struct Span {
    double from = 0, to = 0;
};

} // namespace

template <>
inline constexpr const char *runtime::customEncoding<Span> = "{Span=dd}";

namespace {

class Spanned : public Node {
    NS_CLASS(Spanned, Node)
public:
    Span span;
    std::int8_t small = 0;
};
NS_IMPLEMENTATION(Spanned) {
    cls.property<&Spanned::span>("span").property<&Spanned::small>("small");
}

/// Keeps what it is given, as it is.
class Notes : public NSCoder {
    NS_CLASS(Notes, NSCoder)
public:
    void encodeObject(const id &object, const Ref<NSString> &key) override { kept->setObject(object, key); }
    id decodeObjectForKey(const Ref<NSString> &key) override { return kept->objectForKey(key); }

    const Ref<NSMutableDictionary> kept = NSMutableDictionary::dictionary();
};
NS_IMPLEMENTATION(Notes) {}

Ref<Everything> filled() {
    const auto model = make<Everything>();
    model->fill();
    return model;
}

id unarchived(const Ref<NSData> &archive) {
    return NSKeyedUnarchiver::unarchivedObjectOfClasses({Node::class_(), NSString::class_(), NSData::class_(),
                                                         NSNumber::class_(), NSValue::class_(),
                                                         NSArray::class_(), NSNull::class_()},
                                                        archive);
}

} // namespace

TEST(ModelCopy, sharesWhatItRefersTo) {
    const auto model = filled();
    const long texts = model->text.use_count(), blocks = model->block.use_count();
    {
        const auto copy = as<Everything>(qn::modelCopy(model));
        ASSERT_TRUE(copy && copy != model);
        EXPECT_TRUE(copy->text == model->text && copy->value == model->value && copy->next == model->next);
        EXPECT_TRUE(model->text.use_count() == texts + 1 && model->block.use_count() == blocks + 1);
        EXPECT_TRUE(copy->flag && copy->whole == -5 && copy->large == UINT64_MAX && copy->wide == 2.5L);
        EXPECT_TRUE(copy->type == Node::class_() && copy->action == model->action);
        EXPECT_TRUE(copy->pointer == model->pointer && copy->size == model->size);
        EXPECT_EQ(copy->numbers[1], 0) << "C arrays are not copied";
        EXPECT_EQ(model.use_count(), 1);
    }
    EXPECT_TRUE(model->text.use_count() == texts && model->block.use_count() == blocks);
    const id text = make<NSMutableString>(u"t"), null = NSNull::null();
    EXPECT_TRUE(qn::modelCopy(text) != text && qn::modelCopy(text)->isEqual(text));
    EXPECT_TRUE(qn::modelCopy(null) == null && !qn::modelCopy(nullptr));
}

TEST(ModelEquality, isOfTheSameClassAndValues) {
    const auto model = filled(), other = filled();
    other->block = model->block;
    other->value = model->value;
    EXPECT_TRUE(qn::modelIsEqual(model, other) && qn::modelHash(model) == qn::modelHash(other));
    other->pointer = nullptr; // such types do not count
    other->wide = 1;
    other->action = nullptr;
    EXPECT_TRUE(qn::modelIsEqual(model, other));
    other->size.width = 2;
    EXPECT_FALSE(qn::modelIsEqual(model, other));
    other->size = model->size;
    other->text = nullptr;
    EXPECT_FALSE(qn::modelIsEqual(model, other) || qn::modelIsEqual(other, model));

    EXPECT_FALSE(qn::modelIsEqual(make<Node>(), make<Counted>()) || qn::modelIsEqual(make<Node>(), nullptr));
    const auto bare = make<NSObject>();
    EXPECT_EQ(qn::modelHash(bare), reinterpret_cast<NSUInteger>(bare.get())) << "of nothing that counts";
    EXPECT_FALSE(qn::modelIsEqual(bare, make<NSObject>()));
    EXPECT_TRUE(qn::modelIsEqual(u"a"_ns, u"a"_ns) && qn::modelHash(u"a"_ns) == u"a"_ns->hash());
    EXPECT_EQ(qn::modelHash(nullptr), 0u);
}

TEST(ModelEquality, ofModelsThatLeadBackToThemselves) {
    const auto ring = [](const id &end) {
        const auto first = make<Node>(), second = make<Node>();
        first->next = NSArray::arrayWithObjects({second, end});
        second->next = NSArray::arrayWithObjects({first, first});
        return first;
    };
    const auto one = ring(u"e"_ns), two = ring(u"e"_ns), three = ring(u"f"_ns);
    EXPECT_TRUE(qn::modelIsEqual(one, two));
    EXPECT_FALSE(qn::modelIsEqual(one, three));
    for (const auto &each : {one, two, three})
        each->next = nullptr;

    const auto deep = chain(100000), same = chain(100000);
    EXPECT_EQ(qn::modelHash(deep), qn::modelHash(same));
    release(deep);
    release(same);

    constexpr int links = 400;
    const auto counted = chain<Counted>(links), other = chain<Counted>(links);
    EXPECT_TRUE(counted->isEqual(other));
    EXPECT_LE(Counted::hashes, 6 * links) << "not all the rest of the chain at each link";
    EXPECT_TRUE(other->isEqual(counted)) << "what is known is forgotten with the comparison";
    as<Node>(other->next)->next = u"other"_ns;
    EXPECT_FALSE(counted->isEqual(other));
}

TEST(ModelCoding, bringsBackWhatCanBeCoded) {
    const auto model = filled();
    model->next = make<Node>();
    const auto again = as<Everything>(unarchived(NSKeyedArchiver::archivedDataWithRootObject(model)));
    ASSERT_TRUE(again);
    EXPECT_TRUE(again->flag && again->whole == -5 && again->real == 0.5f && again->wide == 2.5L);
    EXPECT_TRUE(again->text->isEqual(model->text) && again->data->isEqual(model->data) &&
                as<Node>(again->next));
    EXPECT_TRUE(again->action == model->action && again->size == model->size);
    EXPECT_FALSE(again->type || again->pointer || again->block || again->value || again->numbers[1]);
    EXPECT_EQ(again->large, UINT64_MAX);

    model->real = NAN;
    model->wide = INFINITY;
    model->next = NSValue::valueWith(CGSize{1, 1});
    model->text = nullptr;
    const auto less = as<Everything>(unarchived(NSKeyedArchiver::archivedDataWithRootObject(model)));
    ASSERT_TRUE(less);
    EXPECT_FALSE(NSKeyedArchiver::archivedDataWithRootObject(model->value)) << "a pointer";
    EXPECT_TRUE(less->real == 0 && less->wide == 0 && !less->next && !less->text);
    EXPECT_EQ(qn::modelInitWithCoder(model, nullptr), model);
    EXPECT_TRUE(model->flag) << "nothing happens without a coder";
}

TEST(ModelCoding, worksWithAnyCoder) {
    const auto model = make<Spanned>();
    const auto notes = make<Notes>();
    model->next = NSNull::null();
    qn::modelEncodeWithCoder(model, notes);
    EXPECT_EQ(text(notes->kept->allKeys()), text(NSArray::arrayWithObjects({u"small"_ns, u"next"_ns})))
        << "of structures only those of geometry";
    notes->kept->setObject(NSValue::valueWith(Span{1, 2}), u"span"_ns);
    notes->kept->setObject(NSNumber::numberWithInt(300), u"small"_ns);
    qn::modelInitWithCoder(model, notes);
    EXPECT_TRUE(model->span.to == 2 && model->small == 44);
    notes->kept->setObject(u"5"_ns, u"small"_ns);
    notes->kept->setObject(NSValue::valueWith(CGSize{3, 4}), u"span"_ns);
    notes->kept->removeObjectForKey(u"next"_ns);
    qn::modelInitWithCoder(model, notes);
    EXPECT_TRUE(model->span.to == 2 && model->small == 44 && !model->next);
}

TEST(ModelCoding, takesNothingThatDoesNotFit) {
    // An archive of dictionaries in the place of objects, and of values of other kinds under the names.
    const auto stranger = make<Everything>();
    stranger->next = u"text"_ns;
    const auto archive = NSKeyedArchiver::archivedDataWithRootObject(stranger);
    std::string bytes(reinterpret_cast<const char *>(archive->bytes()), archive->length());
    for (const auto &[from, to] : {std::pair("next", "text"),
                                   {"next", "flag"},
                                   {"next", "size"},
                                   {"next", "data"},
                                   {"Everything", "NSObject++"},
                                   {"Everything", "Nobody    "}}) {
        std::string changed = bytes;
        for (auto at = changed.find(from); at != changed.npos; at = changed.find(from, at + 1))
            changed.replace(at, std::string_view(from).size(), to);
        const id object = unarchived(NSData::dataWithBytes(changed.data(), changed.size()));
        if (const auto model = as<Everything>(object))
            EXPECT_TRUE(!model->flag && model->size == CGSize() && !model->data) << to;
        else
            EXPECT_TRUE(!object && std::string_view(from) == "Everything") << to;
    }
    std::mt19937 random(6);
    for (int i = 0; i < 2000; ++i) {
        std::string changed = bytes;
        for (auto changes = 1 + random() % 4; changes > 0; --changes)
            changed[random() % changed.size()] = static_cast<char>(random());
        const id object = unarchived(NSData::dataWithBytes(changed.data(), changed.size()));
        EXPECT_TRUE(!object || object->description());
    }
}
