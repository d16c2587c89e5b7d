// Every kind of property beside every kind of value, by the long way over dictionaries and read straight out
// of a text.
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelJSON.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelReader.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelSetting.h"
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/CGGeometry.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Runtime/Object/NSBlock.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/TextTable.h"
#include "Tests/Support/Words.h"

#include <cmath>
#include <map>

namespace {

class Spot : public NSObject {
    NS_CLASS(Spot, NSObject)
public:
    std::int32_t x = 0;
    id copy() const override { return self(); }
};
NS_PROPERTIES(Spot, x)

/// Runs code of its own when it is filled.
class AskedSpot : public Spot {
    NS_CLASS(AskedSpot, Spot)
public:
    bool filled(const Ref<NSDictionary> &) { return x >= 0; }
};
NS_IMPLEMENTATION(AskedSpot) {
    cls.method<&AskedSpot::filled>("modelCustomTransformFromDictionary:");
}

/// Leads to a class that runs code of its own.
class AskingSpot : public Spot {
    NS_CLASS(AskingSpot, Spot)
public:
    Ref<NSSet> askingSpots;
    Ref<NSDictionary> askedSpots;
};
NS_PROPERTIES(AskingSpot, (askingSpots, AskingSpot), (askedSpots, AskedSpot))

class DoublingSpot : public Spot {
    NS_CLASS(DoublingSpot, Spot)
public:
    void setX(std::int32_t value) { x += 2 * value; }
};
NS_IMPLEMENTATION(DoublingSpot) {
    cls.method<&DoublingSpot::setX>("setX:");
}

union Word {
    std::int32_t whole;
    float part;
};

} // namespace

template <>
inline constexpr const char *runtime::customEncoding<Word> = "(Word=if)";

namespace {

constexpr const char *initialName = "initial";
const auto initialBlock = makeBlock<int()>([] { return 77; });

/// A property of every type, and of every class that is treated by itself.
class Simple : public NSObject {
    NS_CLASS(Simple, NSObject)
public:
    bool b = true;
    std::int8_t c = 77;
    std::uint8_t uc = 77;
    std::int16_t s = 77;
    std::uint16_t us = 77;
    std::int32_t i = 77;
    std::uint32_t ui = 77;
    std::int64_t q = 77;
    std::uint64_t uq = 77;
    float f = 77;
    double d = 77;
    long double ld = 77;
    Ref<NSMutableString> mutableString = as<NSMutableString>(u"initial"_ns->mutableCopy());
    Ref<NSValue> value = ::number(77);
    Ref<NSNumber> number = ::number(77);
    Ref<NSDecimalNumber> decimal = NSDecimalNumber::decimalNumberWithString(u"77"_ns);
    Ref<NSData> data = NSData::data();
    Ref<NSMutableData> mutableData = NSMutableData::dataWithLength(0);
    Ref<NSDate> date = NSDate::dateWithTimeIntervalSinceReferenceDate(77);
    Ref<NSURL> url = NSURL::URLWithString(u"initial"_ns);
    Ref<NSMutableArray> mutableArray;
    Ref<NSArray> array = arrayOf({u"initial"_ns});
    Ref<NSDictionary> dictionary;
    Ref<NSMutableDictionary> mutableDictionary;
    Ref<NSSet> set;
    Ref<NSMutableSet> mutableSet;
    Ref<Spot> spot, filledSpot = make<Spot>();
    id any;
    Class cls = Spot::class_();
    SEL selector = "initial"_sel;
    Ref<Block<int()>> block = initialBlock;
    void *pointer = const_cast<char *>(initialName);
    const char *text = initialName;
    int (*function)() = nullptr;
    CGSize size = {7, 7};
    Word word = {77};
    std::int32_t list[2] = {7, 7};
};
NS_PROPERTIES(Simple, b, c, uc, s, us, i, ui, q, uq, f, d, ld, mutableString, value, number, decimal, data,
              mutableData, date, url, mutableArray, array, dictionary, mutableDictionary, set, mutableSet,
              spot, filledSpot, any, cls, selector, block, pointer, text, function, size, word, list)

/// Copies, classes of elements, and two properties of one key besides.
class Everything : public Simple {
    NS_CLASS(Everything, Simple)
public:
    Ref<NSString> string = u"initial"_ns;
    Ref<NSArray> spots;
    Ref<NSDictionary> spotsByName;
    Ref<NSSet> spotSet;
    Ref<Spot> copiedSpot, twin;
    id otherTwin;

    static Ref<NSDictionary> mapper() {
        return dictionaryOf({{u"otherTwin"_ns, u"k"_ns}, {u"twin"_ns, u"k"_ns}});
    }
};
NS_IMPLEMENTATION(Everything) {
    cls.property<&Everything::string>("string", "C").property<&Everything::copiedSpot>("copiedSpot", "C");
    cls.property<&Everything::spots>("spots", "", {"NoSuchClass", "Spot"});
    cls.property<&Everything::spotsByName, Spot>("spotsByName")
        .property<&Everything::spotSet, Spot>("spotSet");
    cls.property<&Everything::twin>("twin").property<&Everything::otherTwin>("otherTwin");
    cls.classMethod<&Everything::mapper>("modelCustomPropertyMapper");
}

class Contradictory : public NSObject {
    NS_CLASS(Contradictory, NSObject)
};
NS_IMPLEMENTATION(Contradictory) {
    cls.protocol("P").protocol("P");
}

/// The class and what is in it, as in "NSArray (NSString e, Spot 5)".
std::string shown(const id &object) {
    if (!object || as<objc_class>(object))
        return text(object);
    const std::string name = class_getName(object->isa());
    std::vector<id> parts;
    if (const auto array = as<NSArray>(object))
        parts = array->allObjects();
    else if (const auto set = as<NSSet>(object))
        parts = set->allObjects()->allObjects();
    else if (const auto dictionary = as<NSDictionary>(object))
        for (const auto &[key, value] : dictionary->allEntries())
            parts.insert(parts.end(), {key, value});
    else
        return name + " " + (as<Spot>(object) ? std::to_string(as<Spot>(object)->x) : text(object));
    std::string all;
    for (const id &part : parts)
        all += (all.empty() ? "" : ", ") + shown(part);
    return name + " (" + all + ")";
}

std::string shownProperty(Everything &model, const _QNModelPropertyMeta &meta) {
    switch (meta.valueType()) {
    case QNEncodingTypeSEL:
        return sel_getName(meta.get<SEL>(model));
    case QNEncodingTypePointer:
    case QNEncodingTypeCString:
        return std::to_string(reinterpret_cast<std::uintptr_t>(meta.get<void *>(model)));
    case QNEncodingTypeStruct:
        return std::to_string(std::lround(model.size.width));
    case QNEncodingTypeUnion:
        return std::to_string(model.word.whole);
    case QNEncodingTypeCArray:
        return std::to_string(static_cast<std::int32_t *>(meta.get<void *>(model))[1]);
    default:
        return shown(model.valueForKey(meta._name));
    }
}

const _QNModelPropertyMeta *metaNamed(const std::string &name) {
    const auto meta = _QNModelMeta::metaWithClass(Everything::class_());
    return peek<_QNModelPropertyMeta>(meta->_mapper->objectForKey(string(name)));
}

/// What properties are given, by the names that the rows have for it.
std::map<std::string, id> values() {
    const std::int32_t list[2] = {4, 5};
    return {{"null", NSNull::null()},
            {"300", number(300)},
            {"-1.5", number(-1.5)},
            {"nan", number(NAN)},
            {"large", NSDecimalNumber::decimalNumberWithString(u"9223372036854775808.5"_ns)},
            {"'42'", u"42"_ns},
            {"'yes'", u"yes"_ns},
            {"'Spot'", u"Spot"_ns},
            {"'-3.9x'", u" -3.9x"_ns},
            {"'(null)'", u"(null)"_ns},
            {"data", dataOf("hi")},
            {"url", NSURL::URLWithString(u"u:/a"_ns)},
            {"attributed", NSAttributedString::attributedStringWithString(u"att"_ns)},
            {"array", arrayOf({dictionaryOf({{u"x"_ns, u"5"_ns}}), u"e"_ns, make<Spot>()})},
            {"set", setOf({number(7)})},
            {"dictionary", dictionaryOf({{u"x"_ns, number(9)}})},
            {"date", NSDate::dateWithTimeIntervalSince1970(99)},
            {"pointer", NSValue::valueWithPointer(reinterpret_cast<void *>(16))},
            {"size", NSValue::valueWith(CGSize{3, 4})},
            {"word", NSValue::valueWith(Word{8})},
            {"list", NSValue::valueWithBytes(list, "[2i]")},
            {"class", Spot::class_()->self()},
            {"block", makeBlock<int()>([] { return 1; })}};
}

/// All properties of a model of everything, one a line; for others as any object.
std::string shownModel(const id &object) {
    const auto model = as<Everything>(object);
    if (!model)
        return shown(object);
    std::string text;
    for (const id &each : *_QNModelMeta::metaWithClass(Everything::class_())->_allPropertyMetas)
        text += shownProperty(*model, *peek<_QNModelPropertyMeta>(each)) + "\n";
    return text;
}

id byTheLongWay(Class cls, const std::string &json) {
    return qn::modelWithDictionary(cls, qn::_dictionaryWithJSON(dataOf(json)));
}

} // namespace

TEST(ModelMatrix, aClassThatCannotBeUsedIsUnknown) {
    const auto model = as<Everything>(byTheLongWay(Everything::class_(), R"({"cls":"Contradictory"})"));
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->cls, Spot::class_());
}

TEST(ModelMatrix, everyValueIntoEveryProperty) {
    const auto given = values();
    std::map<std::string, std::map<std::string, std::string>> expected; // by property and value
    for (const auto &[names, become] : rowsOf(ZK_TABLES "/Foundation/NSObject/ModelMatrix.txt"))
        for (const std::string &property : words(names.substr(0, names.find(" given "))))
            for (const std::string &value : words(names.substr(names.find(" given ") + 7))) {
                ASSERT_TRUE(metaNamed(property) && given.contains(value)) << property << " " << value;
                const bool isClass = become.starts_with("NS") && become.find(' ') == become.npos;
                std::string outcome = become == "itself" ? shown(given.at(value))
                                      : isClass          ? become + " " + text(given.at(value))
                                                         : become;
                if (property.starts_with("mutable") && outcome != "(none)")
                    outcome.insert(2, "Mutable");
                EXPECT_TRUE(expected[property].emplace(value, outcome).second)
                    << property << " has two rows for " << value;
            }
    for (const auto &[property, outcomes] : expected)
        for (const auto &[value, object] : given) {
            const auto *meta = metaNamed(property);
            const auto model = make<Everything>();
            const std::string before = shownProperty(*model, *meta);
            ModelSetValueForProperty(*model, object, *meta);
            EXPECT_EQ(shownProperty(*model, *meta), outcomes.contains(value) ? outcomes.at(value) : before)
                << property << " given " << value;
        }
    EXPECT_EQ(expected.size(), 41u);
}

TEST(ModelMatrix, unusualValues) {
    const std::tuple<const char *, id, const char *> unusual[] = {
        {"number", u"True"_ns, "NSNumber 1"},
        {"number", u"tRUE"_ns, "NSNumber 0"},
        {"number", u"<Null>"_ns, "(none)"},
        {"number", u"1e3"_ns, "NSNumber 1"},
        {"number", u"1e3."_ns, "NSNumber 1000"},
        {"number", u"1e999.0"_ns, "(none)"},
        {"q", u"99999999999999999999"_ns, "NSNumber 9223372036854775807"},
        {"f", number(1e300), "NSNumber 0"}, // infinite as a float
        {"string", dataOf("\xFF"), "(none)"},
        {"data", make<NSString>(u"\xD800"), "(none)"},
        {"url", u" \n"_ns, "(none)"},
        {"date", u"2014-01-20"_ns, "NSDate 2014-01-20 00:00:00 +0000"}};
    for (const auto &[property, value, expected] : unusual) {
        const auto model = make<Everything>();
        ModelSetValueForProperty(*model, value, *metaNamed(property));
        EXPECT_EQ(shownProperty(*model, *metaNamed(property)), expected) << text(value);
    }
}

TEST(ModelReader, givesWhatTheLongWayGives) {
    Random random(20140120);
    constexpr const char *scalars[] = {
        "null",     "true",           "-1",       "1.5e300",        "18446744073709551615", "\"\"",
        "\"12.5\"", "\"2014-01-20\"", "\"Spot\"", "\"\\u0000 nil\""};
    const Class cls = Everything::class_();
    const auto metas = _QNModelMeta::metaWithClass(cls)->_allPropertyMetas->allObjects();
    const auto name = [&] {
        const std::string any = random.of(std::array{"x", "k"}); // of a spot, of the twins
        return '"' + (random.oneIn(8) ? any : text(peek<_QNModelPropertyMeta>(random.of(metas))->_name)) +
               "\":";
    };
    const std::function<std::string(int)> value = [&](int depth) -> std::string {
        const auto kind = depth > 3 ? 9 : random.below(10);
        if (kind > 3)
            return random.of(scalars);
        std::string text;
        for (auto count = random.below(6); count > 0; --count)
            text += (text.empty() ? "" : ",") + (kind < 2 ? name() : "") + value(depth + 1);
        return kind < 2 ? "{" + text + "}" : "[" + text + "]";
    };
    int straight = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string text = "{";
        for (auto count = 1 + random.below(round % 2 ? 5 : 60); count > 0; --count)
            text += (text.size() > 1 ? "," : "") + name() + value(0);
        text += "}";
        const id model = byTheLongWay(cls, text);
        const auto expected = shownModel(model);
        ASSERT_TRUE(!model || qn::modelToJSONData(model)) << "what is read can be written: " << text;
        ASSERT_EQ(shownModel(qn::modelWithJSON(cls, dataOf(text))), expected) << text;
        if (const auto models = qn::readModelArray(cls, dataOf("[" + text + "," + text + "]"))) {
            ++straight;
            ASSERT_EQ(shownModel((*models)->firstObject()), expected) << text;
            ASSERT_EQ(shownModel((*models)->lastObject()), expected) << text;
        }
    }
    EXPECT_GT(straight, 1500); // read without the dictionaries in between
}

TEST(ModelReader, leavesOtherElementsOut) {
    const auto models = *qn::readModelArray(Spot::class_(), dataOf(R"([1,{"x":1},[{"x":2}],"x",{"x":3}])"));
    EXPECT_EQ(shown(models), "NSMutableArray (Spot 1, Spot 3)");
    EXPECT_EQ(qn::readModelArray(Spot::class_(), dataOf(R"({"x":1})")), Ref<NSArray>());
    EXPECT_EQ(qn::readModelArray(Spot::class_(), nullptr), std::nullopt);
}

TEST(ModelReader, decidesByTheClass) {
    const auto expectStraight = [](Class cls, const std::string &text, bool isStraight) {
        EXPECT_EQ(qn::readModel(cls, dataOf(text)).has_value(), isStraight) << text;
        EXPECT_EQ(shownModel(qn::modelWithJSON(cls, dataOf(text))), shownModel(byTheLongWay(cls, text)))
            << text;
    };
    for (const std::string &text : words(R"(
             {"spot":{"x":1}} {"spots":[{"x":1},null,5,[{"x":2}]]} {"copiedSpot":{"x":1}} {"k":{"x":1}}
             {"spot":[1],"any":{"k":1,"k":2},"y":1,"y":2,"copiedSpot":null} {"k":[{"x":1}]} {"spots":{"x":1}}
             {"spotsByName":{"a":{"x":1}},"spotSet":[{"x":1}]} {"filledSpot":{"x":1}}
             {"i":1,"string":"\ud800"} {"string":)" +
                                         repeated("[", 512) + repeated("]", 512) + "}"))
        expectStraight(Everything::class_(), text, true);
    for (const std::string text : {"{\"\xff\":1}", R"([{"x":1}])", R"({"x":1} x)"})
        expectStraight(Spot::class_(), text, true);
    expectStraight(Spot::class_(), R"({"x":1,"x":"x"})", false);
    for (const Class cls :
         {AskedSpot::class_(), AskingSpot::class_(), DoublingSpot::class_(), NSString::class_(), Class()})
        expectStraight(cls, R"({"x":1})", false);
    EXPECT_EQ(shownModel(qn::modelWithJSON(DoublingSpot::class_(), dataOf(R"({"x":1})"))), "DoublingSpot 2");
}
