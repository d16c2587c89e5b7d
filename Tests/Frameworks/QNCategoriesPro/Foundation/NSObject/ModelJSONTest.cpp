// Models written as JSON and text.
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelDescription.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelJSON.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/ModelWriter.h"
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Tests/Frameworks/QNCategoriesPro/Foundation/NSObject/ModelTesting.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/TimeZoneScope.h"

#include <cmath>

namespace {

class Paths : public NSObject {
    NS_CLASS(Paths, NSObject)
public:
    id whole;
    Ref<NSString> b, c, d;
    static Ref<NSDictionary> mapper() {
        return dictionaryOf(
            {{u"whole"_ns, u"a"_ns}, {u"b"_ns, u"a.b"_ns}, {u"c"_ns, u"a.c"_ns}, {u"d"_ns, u"a.b"_ns}});
    }
};
NS_IMPLEMENTATION(Paths) {
    cls.property<&Paths::whole>("whole").property<&Paths::b>("b").property<&Paths::c>("c");
    cls.property<&Paths::d>("d").classMethod<&Paths::mapper>("modelCustomPropertyMapper");
}

class Keyless : public NSObject {
    NS_CLASS(Keyless, NSObject)
public:
    Ref<NSString> word = u"w"_ns;
    static Ref<NSDictionary> mapper() { return dictionaryOf({{u"word"_ns, u""_ns}}); }
};
NS_IMPLEMENTATION(Keyless) {
    cls.property<&Keyless::word>("word").classMethod<&Keyless::mapper>("modelCustomPropertyMapper");
}

class Hooked : public NSObject {
    NS_CLASS(Hooked, NSObject)
public:
    Ref<NSString> word;
    bool write(const Ref<NSMutableDictionary> &dictionary) const {
        dictionary->setObject(NSNumber::numberWithUnsignedInteger(dictionary->count()), u"count"_ns);
        return word != nullptr;
    }
};
NS_IMPLEMENTATION(Hooked) {
    cls.property<&Hooked::word>("word").method<&Hooked::write>("modelCustomTransformToDictionary:");
}

/// An array of one object that counts how often it is read.
class CountingArray : public NSArray {
    NS_CLASS(CountingArray, NSArray)
public:
    explicit CountingArray(id element) : element_(std::move(element)) {}
    NSUInteger count() const override { return 1; }
    id objectAtIndex(NSUInteger) const override {
        ++reads;
        return element_;
    }
    static inline NSUInteger reads = 0;

private:
    const id element_;
};
NS_IMPLEMENTATION(CountingArray) {}

/// The JSON of an object, by way of an array around it so that it may be anything.
std::string json(const id &object) {
    return text(qn::modelToJSONString(arrayOf({NSURL::URLWithString(u"x"_ns), object})));
}

std::size_t countOf(std::string_view part, const std::string &whole) {
    std::size_t count = 0;
    for (auto at = whole.find(part); at != whole.npos; at = whole.find(part, at + 1))
        ++count;
    return count;
}

} // namespace

TEST(ModelJSON, ofEveryKindOfObject) {
    const TimeZoneScope berlin(u"Europe/Berlin");
    const id date = NSDate::dateWithTimeIntervalSince1970(1390220688), null = NSNull::null(),
             data = NSData::data(), bare = make<NSObject>(), seven = number(7);
    const std::pair<id, const char *> table[] = {
        {u"a"_ns, R"(["x","a"])"},
        {date, R"(["x","2014-01-20T13:24:48+0100"])"},
        {NSAttributedString::attributedStringWithString(u"t"_ns), R"(["x","t"])"},
        {null, R"(["x"])"},
        {data, R"(["x"])"},
        {bare, R"(["x"])"},
        {NSValue::valueWithPointer(nullptr), R"(["x"])"},
        {dictionaryOf({{u"k"_ns, date}, {seven, null}, {u"d"_ns, data}}),
         R"(["x",{"k":"2014-01-20T13:24:48+0100","7":null,"d":null}])"},
        {arrayOf({date, null, data, bare, seven}), R"(["x",["2014-01-20T13:24:48+0100",7]])"},
        {arrayOf({null, seven}), R"(["x",[null,7]])"}, // valid as it is
        {setOf({seven, data}), R"(["x",[7]])"},
        {arrayOf({NSNumber::numberWithFloat(INFINITY), make<NSString>(u"a\xD800"),
                  dictionaryOf({{u"k"_ns, NSDecimalNumber::notANumber()}})}),
         "[\"x\",[\"a\uFFFD\",{\"k\":null}]]"}, // one value does not cost the others
    };
    for (const auto &[object, expected] : table)
        EXPECT_EQ(json(object), expected);
    const id valid = dictionaryOf({{u"k"_ns, null}});
    EXPECT_EQ(qn::modelToJSONObject(valid), valid);
    for (const id &none : {id(), id(null), id(u"text"_ns), seven, bare, data})
        EXPECT_TRUE(!qn::modelToJSONObject(none) && !qn::modelToJSONData(none) &&
                    !qn::modelToJSONString(none));
    EXPECT_EQ(ModelToJSONObjectRecursive(null), null);
}

TEST(ModelJSON, ofEveryKindOfProperty) {
    const auto model = make<Everything>();
    model->real = NAN;
    model->wide = INFINITY;
    EXPECT_EQ(text(qn::modelToJSONString(model)), R"({"flag":false,"whole":0,"large":0})");
    model->fill();
    EXPECT_EQ(text(qn::modelToJSONString(model)),
              R"({"flag":true,"whole":-5,"large":18446744073709551615,"real":0.5,"wide":2.5,)"
              R"("text":"a\nb","type":"Node","action":"run:","next":[1]})");
}

TEST(ModelJSON, firstWriterOfAKeyWins) {
    const auto model = make<Paths>();
    const auto written = [&] { return text(qn::modelToJSONString(model)); };
    model->b = u"b"_ns;
    model->c = u"c"_ns;
    EXPECT_EQ(written(), R"({"a":{"c":"c"}})") << "the other of the two at a.b is at the head of the chain";
    model->d = u"d"_ns;
    EXPECT_EQ(written(), R"({"a":{"b":"d","c":"c"}})");
    const auto given = NSMutableDictionary::dictionary();
    given->setObject(u"own"_ns, u"b"_ns);
    model->whole = given;
    EXPECT_EQ(written(), R"({"a":{"b":"own","c":"c"}})");
    EXPECT_EQ(given->count(), 1u) << "a copy took its place";
    model->whole = u"text"_ns;
    EXPECT_EQ(written(), R"({"a":"text"})");
    EXPECT_EQ(text(qn::modelToJSONString(make<Keyless>())), "{}") << "it has properties, if no keys";
}

TEST(ModelJSON, hooksChangeOrRefuse) {
    const auto model = make<Hooked>();
    model->word = u"w"_ns;
    EXPECT_EQ(text(qn::modelToJSONString(model)), R"({"word":"w","count":1})");
    model->word = nullptr;
    EXPECT_EQ(qn::modelToJSONObject(model), nullptr);
    EXPECT_EQ(json(dictionaryOf({{u"k"_ns, model}})) + json(model), R"(["x",{"k":null}]["x"])");
}

namespace {

/// Objects of every kind within each other, now and then within themselves.
class RandomObjects : public Random {
public:
    using Random::Random;
    ~RandomObjects() { clear(); }

    void clear() {
        for (const auto &node : std::exchange(nodes_, {}))
            node->next = nullptr;
    }

    /// None now and then.
    id object(int depth) {
        if (depth > 4 || oneIn(2))
            return oneOf(
                u"a\"/\\\u001f b"_ns, make<NSMutableString>(u"longer than eight"), number(oneIn(2)),
                number(static_cast<double>((*this)()) / 1024), number(UINT64_MAX - (*this)()), NSNull::null(),
                NSDate::dateWithTimeIntervalSince1970(static_cast<double>(below(1ull << 32))),
                NSURL::URLWithString(u"a:b/c"_ns), NSData::data(),
                NSAttributedString::attributedStringWithString(u"ä€😀"_ns), oneIn(20) ? number(NAN) : nullptr,
                oneIn(20) ? make<NSString>(u"\xD800") : nullptr, nodes_.empty() ? nullptr : of(nodes_));
        const auto hooked = make<Hooked>();
        hooked->word = oneIn(2) ? u"w"_ns : nullptr;
        switch (below(8)) {
        case 0:
            return filled(make<Everything>(), depth);
        case 1:
            return filled(make<Node>(), depth);
        case 2:
            return paths(depth);
        case 3:
            return oneOf(hooked, make<Keyless>());
        case 4:
            return dictionary(depth);
        case 5:
            return NSSet::setWithArray(array(depth));
        default:
            return array(depth);
        }
    }

private:
    id oneOf(const auto &...objects) { return of(std::array<id, sizeof...(objects)>{objects...}); }

    Ref<NSArray> array(int depth) {
        const auto made = NSMutableArray::array();
        for (auto count = below(4); count > 0; --count)
            if (const id each = object(depth + 1))
                made->addObject(each);
        return as<NSArray>(made->copy());
    }

    id dictionary(int depth) {
        const auto made = NSMutableDictionary::dictionary();
        for (const id &each : array(depth)->allObjects())
            made->setObject(each, oneIn(9) ? id(number(2)) : string(std::to_string(below(5))));
        return made;
    }

    id paths(int depth) {
        const auto made = make<Paths>();
        made->whole = object(depth + 1);
        made->b = oneIn(2) ? u"b"_ns : nullptr;
        made->c = oneIn(2) ? u"c"_ns : nullptr;
        return made;
    }

    id filled(const Ref<Node> &node, int depth) {
        if (const auto everything = as<Everything>(node)) {
            everything->fill();
            everything->real = oneIn(2) ? NAN : 1.1f;
            everything->wide = oneIn(2) ? 1e400L : 0.1L;
        }
        nodes_.push_back(node);
        node->next = object(depth + 1);
        return node;
    }

    std::vector<Ref<Node>> nodes_;
};

std::string byTheLongWay(const id &object) {
    return contents(NSJSONSerialization::dataWithJSONObject(qn::modelToJSONObject(object),
                                                            NSJSONWritingOptions::None, nullptr));
}

/// "(none)" as well where it gives up.
std::string straight(const id &object) {
    const auto json = qn::writeModel(object);
    return json ? contents(*json) : "(none)";
}

} // namespace

TEST(ModelWriter, givesWhatTheLongWayGives) {
    RandomObjects objects(45);
    int texts = 0, refusals = 0, vain = 0;
    for (int round = 0; round < 20000; ++round) {
        objects.clear();
        const id object = objects.object(0);
        const auto written = qn::writeModel(object);
        const std::string expected = byTheLongWay(object);
        ASSERT_TRUE(!written || contents(*written) == expected) << round << " " << expected;
        texts += written && *written;
        refusals += !written;
        vain += !written && expected != "(none)"; // for a value that another of the same key replaces
    }
    EXPECT_TRUE(texts > 5000 && refusals > 50 && vain < refusals / 10)
        << texts << " " << refusals << " " << vain;
}

TEST(ModelWriter, nestsAsDeepAsTheLongWay) {
    for (const int levels : {300, 511, 512, 513, 600})
        for (const id &bottom : {id(u"text"_ns), id(NSData::data()), id(make<Node>())}) {
            id array = bottom, mixed = bottom;
            for (int level = 0; level < levels; ++level) {
                array = arrayOf({array});
                const auto node = make<Node>();
                node->next = mixed;
                mixed = level % 2 ? id(dictionaryOf({{u"k"_ns, node}})) : node;
            }
            for (const id &object : {array, mixed}) {
                const auto written = qn::writeModel(object);
                EXPECT_TRUE(written || levels > 500) << levels;
                EXPECT_TRUE(!written || contents(*written) == byTheLongWay(object)) << levels;
            }
        }
}

TEST(ModelWriter, looksAtEachCollectionTwiceAtMost) {
    constexpr NSUInteger levels = 400;
    for (const auto write : {&straight, &byTheLongWay}) {
        id tower = NSData::data();
        for (NSUInteger level = 0; level < levels; ++level)
            tower = make<CountingArray>(tower);
        CountingArray::reads = 0;
        EXPECT_EQ(write(tower), std::string(levels, '[') + std::string(levels, ']'));
        EXPECT_LE(CountingArray::reads, 4 * levels);
    }
}

TEST(ModelJSON, nestingHasAnEnd) {
    const auto deep = chain(100000);
    EXPECT_EQ(countOf("{", text(qn::modelToJSONString(deep))), 512u);
    EXPECT_EQ(countOf("{\n", text(qn::modelDescription(deep))), 512u);
    release(deep);

    // Each of many nodes leads to all others of its list and to itself.
    const auto list = NSMutableArray::array(), other = NSMutableArray::array();
    for (int i = 0; i < 2; ++i) {
        const auto node = make<Node>();
        node->next = list;
        list->addObject(node);
    }
    EXPECT_EQ(text(qn::modelToJSONString(list)), "[{},{}]");
    EXPECT_EQ(countOf("<Node", text(qn::modelDescription(list))), 2u);
    for (const id &node : list->allObjects())
        as<Node>(node)->next = nullptr;
}

TEST(ModelDescription, ofEveryKindOfProperty) {
    const auto model = make<Everything>();
    const auto pointer = [](const void *address) { return text(NSString::stringWithFormat("%p", address)); };
    const auto head = [&](const id &object, const char *name) {
        return "<" + std::string(name) + ": " + pointer(object.get()) + ">";
    };
    EXPECT_EQ(
        text(qn::modelDescription(model)),
        head(model, "Everything") +
            " {\n    action = <NULL>;\n    block = <nil>;\n    data = <nil>;\n    flag = 0;\n"
            "    large = 0;\n    next = <nil>;\n    numbers = " +
            pointer(model->numbers) + ";\n    pointer = " + pointer(nullptr) +
            ";\n    real = 0;\n    size = " + text(NSValue::valueWith(model->size)) +
            ";\n    text = <nil>;\n    type = <nil>;\n    value = <nil>;\n    whole = 0;\n    wide = 0\n}");
    model->fill();
    const auto filled = text(qn::modelDescription(model));
    for (const std::string &line :
         {std::string("action = run:;"), "block = " + head(model->block, "NSBlock") + ";",
          std::string("next = [\n        1\n    ];"), "pointer = " + pointer(model.get()) + ";",
          std::string("text = \"a\n    b\";"), std::string("type = Node;"), std::string("wide = 2.5\n")})
        EXPECT_EQ(countOf("\n    " + line, filled), 1u) << line << filled;
    EXPECT_EQ(text(qn::modelDescription(make<NSObject>())).find('{'), std::string::npos);
}

TEST(ModelDescription, ofEveryKindOfObject) {
    const auto bytes = NSMutableData::dataWithLength(60);
    const id one = number(1);
    const auto nested = dictionaryOf({{u"k"_ns, arrayOf({one, u"t"_ns})}, {one, NSNull::null()}});
    const std::pair<id, std::string> table[] = {
        {nullptr, "<nil>"},
        {NSNull::null(), "<null>"},
        {make<NSMutableString>(u"\"t"), "\"\"t\""},
        {one, "1"},
        {NSURL::URLWithString(u"a:b"_ns), "a:b"},
        {bytes, text(bytes).substr(0, 100) + "..."},
        {NSArray::array(), "[]"},
        {NSSet::set(), "[]"},
        {NSDictionary::dictionary(), "{}"},
        {setOf({one}), "[\n    1\n]"},
        {nested, "{\n    k = [\n        1;\n        \"t\"\n    ];\n    1 = <null>\n}"}};
    for (const auto &[object, expected] : table)
        EXPECT_EQ(text(ModelDescription(object)), expected);
    EXPECT_FALSE(qn::modelDescription(nullptr) || ModelDescriptionAddIndent(nullptr));
}

TEST(ModelDescription, ofWhatIsSharedIsBounded) {
    id tower = u"end"_ns;
    for (int level = 0; level < 40; ++level) {
        const auto node = make<Node>();
        node->next =
            level % 2 ? arrayOf({tower, tower}) : id(dictionaryOf({{u"a"_ns, tower}, {u"b"_ns, tower}}));
        tower = node;
    }
    const auto told = text(qn::modelDescription(tower));
    EXPECT_GT(told.size(), std::size_t{1} << 23);
    EXPECT_LT(told.size(), std::size_t{1} << 24);
    EXPECT_NE(told.find("\n                ..."), std::string::npos);
}
