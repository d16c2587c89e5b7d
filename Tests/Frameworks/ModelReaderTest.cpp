// Models read straight out of a text are those that the long way over dictionaries gives.
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/ModelReader.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelDescription.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Runtime/Class.h"

#include <gtest/gtest.h>

namespace {

class Leaf : public NSObject {
    NS_CLASS(Leaf, NSObject)
public:
    std::int32_t size = 0;
    Ref<NSString> name;
    id copy() const override { return self(); }
};
NS_IMPLEMENTATION(Leaf) {
    cls.property<&Leaf::size>("size").property<&Leaf::name>("name", "C");
}

class Tree : public NSObject {
    NS_CLASS(Tree, NSObject)
public:
    std::uint8_t height = 0;
    Ref<NSString> kind, sameKind;
    Ref<Leaf> leaf, copiedLeaf;
    Ref<NSArray> leaves, plain;
    Ref<NSDictionary> leavesByName, table;
    id any;

    static Ref<NSDictionary> mapper() {
        return NSDictionary::dictionaryWithEntries({{u"kind"_ns, u"k"_ns}, {u"sameKind"_ns, u"k"_ns}});
    }
};
NS_IMPLEMENTATION(Tree) {
    cls.property<&Tree::height>("height").property<&Tree::kind>("kind").property<&Tree::sameKind>("sameKind");
    cls.property<&Tree::leaf>("leaf").property<&Tree::copiedLeaf>("copiedLeaf", "C");
    cls.property<&Tree::leaves>("leaves", "", {"Leaf"}).property<&Tree::plain>("plain");
    cls.property<&Tree::leavesByName>("leavesByName", "", {"Leaf"}).property<&Tree::table>("table");
    cls.property<&Tree::any>("any").classMethod<&Tree::mapper>("modelCustomPropertyMapper");
}

/// Runs code of its own when it is filled.
class Asked : public Leaf {
    NS_CLASS(Asked, Leaf)
public:
    bool filled(const Ref<NSDictionary> &) { return size >= 0; }
};
NS_IMPLEMENTATION(Asked) {
    cls.method<&Asked::filled>("modelCustomTransformFromDictionary:");
}

class Doubling : public Leaf {
    NS_CLASS(Doubling, Leaf)
public:
    void setSize(std::int32_t value) { size += 2 * value; }
};
NS_IMPLEMENTATION(Doubling) {
    cls.method<&Doubling::setSize>("setSize:");
}

class Holder : public NSObject {
    NS_CLASS(Holder, NSObject)
public:
    Ref<Leaf> leaf = make<Leaf>();
    Ref<Asked> asked;
    Ref<NSArray> manyAsked;
};
NS_IMPLEMENTATION(Holder) {
    cls.property<&Holder::leaf>("leaf").property<&Holder::asked>("asked");
    cls.property<&Holder::manyAsked>("manyAsked", "", {"Asked"});
}

Ref<NSData> bytes(const std::string &text) {
    return NSData::dataWithBytes(text.data(), text.size());
}

/// Without addresses.
std::string described(const id &object) {
    std::string text = object ? ModelDescription(object)->utf8() : "none";
    for (std::size_t at = 0; (at = text.find("0x", at)) != std::string::npos;)
        text.erase(at, text.find_first_not_of("0123456789abcdefx", at) - at);
    return text;
}

/// By the long way.
id model(Class cls, const std::string &text) {
    return qn::modelWithDictionary(cls, qn::_dictionaryWithJSON(bytes(text)));
}

} // namespace

TEST(ModelReader, givesWhatTheLongWayGives) {
    objc_registerClasses<Leaf>();
    const std::string texts[] = {
        R"({})",
        R"({"height":300,"k":"oak","unknown":[{"k":"ash"},{"k":null}],"any":{"k":1},"kind":"elm"})",
        R"({"leaf":{"size":"12","name":7,"unknown":{}},"plain":[1,[2,{"size":3}],null]})",
        R"({"leaf":[1],"leaves":[{"size":1},null,5,[{"size":2}],{"name":"x"}],"table":{"leaf":{"size":1}}})",
        R"({"leaf":null,"leaves":null,"any":null,"height":null,"k":{},"plain":{},"table":[]})",
        R"({"leaf":5,"leaves":"none","height":"7","k":[1],"any":[{}]})",
        R"({"unknown":1,"unknown":2,"any":{"k":1,"k":2},"k":"\u00e4\ud83d\ude00\n"})",
    };
    for (const std::string &text : texts) {
        const auto expected = described(model(Tree::class_(), text));
        EXPECT_EQ(described(qn::readModel(Tree::class_(), bytes(text))), expected) << text;
        const auto models = qn::readModelArray(Tree::class_(), bytes("[" + text + "," + text + "]"));
        ASSERT_NE(models, nullptr) << text;
        EXPECT_EQ(described(models->firstObject()) + described(models->lastObject()), expected + expected)
            << text;
    }
    const auto models =
        qn::readModelArray(Leaf::class_(), bytes(R"([1,{"size":1},[{"size":2}],"x",{"size":3}])"));
    ASSERT_EQ(models->count(), 2u);
    EXPECT_TRUE(models->isKindOfClass(NSMutableArray::class_()));
    EXPECT_EQ(as<Leaf>(models->lastObject())->size, 3);
}

TEST(ModelReader, givesUpWhereItCouldTell) {
    objc_registerClasses<Leaf, Asked>();
    const struct {
        Class cls;
        std::string text;
    } cases[] = {
        {Asked::class_(), R"({"size":1})"},
        {Doubling::class_(), R"({"size":1})"},
        {Leaf::class_(), R"({"size":1,"size":"x"})"},
        {Leaf::class_(), R"({"size":1,"name":"\ud800"})"},
        {Leaf::class_(), "{\"\xff\":1}"},
        {Leaf::class_(), R"([{"size":1}])"},
        {Leaf::class_(), R"({"size":1} x)"},
        {Leaf::class_(), R"({"name":)" + std::string(512, '[') + std::string(512, ']') + "}"},
        {Tree::class_(), R"({"copiedLeaf":{"size":1}})"},
        {Tree::class_(), R"({"leaves":{"size":1}})"},
        {Tree::class_(), R"({"leavesByName":{"a":{"size":1}}})"},
        {Holder::class_(), R"({"leaf":{"size":1}})"},
        {Holder::class_(), R"({"asked":{"size":1}})"},
        {Holder::class_(), R"({"manyAsked":[{"size":1}]})"},
        {NSString::class_(), R"({"size":1})"},
        {nullptr, R"({"size":1})"},
    };
    for (const auto &[cls, text] : cases) {
        EXPECT_EQ(qn::readModel(cls, bytes(text)), nullptr) << text;
        EXPECT_EQ(described(qn::modelWithJSON(cls, bytes(text))), described(model(cls, text))) << text;
    }
    EXPECT_EQ(as<Doubling>(qn::modelWithJSON(Doubling::class_(), bytes(cases[1].text)))->size, 2);
    EXPECT_EQ(qn::readModelArray(Leaf::class_(), bytes(R"({"size":1})")), nullptr);
    EXPECT_EQ(qn::readModelArray(Leaf::class_(), nullptr), nullptr);
}
