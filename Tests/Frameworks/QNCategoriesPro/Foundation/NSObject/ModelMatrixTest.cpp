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

#include <gmock/gmock.h>

#include <iterator>
#include <limits>
#include <map>
#include <sstream>

namespace {

class Spot : public NSObject {
    NS_CLASS(Spot, NSObject)
public:
    std::int32_t x = 0;
    id copy() const override { return self(); }
};
NS_IMPLEMENTATION(Spot) {
    cls.property<&Spot::x>("x");
}

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
NS_IMPLEMENTATION(AskingSpot) {
    cls.property<&AskingSpot::askingSpots, AskingSpot>("askingSpots");
    cls.property<&AskingSpot::askedSpots, AskedSpot>("askedSpots");
}

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

class Everything : public NSObject {
    NS_CLASS(Everything, NSObject)
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
    Ref<NSString> string = u"initial"_ns;
    Ref<NSMutableString> mutableString = as<NSMutableString>(u"initial"_ns->mutableCopy());
    Ref<NSValue> value = ::number(77);
    Ref<NSNumber> number = ::number(77);
    Ref<NSDecimalNumber> decimal = NSDecimalNumber::decimalNumberWithString(u"77"_ns);
    Ref<NSData> data = NSData::data();
    Ref<NSMutableData> mutableData = NSMutableData::dataWithLength(0);
    Ref<NSDate> date = NSDate::dateWithTimeIntervalSinceReferenceDate(77);
    Ref<NSURL> url = NSURL::URLWithString(u"initial"_ns);
    Ref<NSMutableArray> mutableArray;
    Ref<NSArray> array = arrayOf({u"initial"_ns}), spots;
    Ref<NSDictionary> dictionary, spotsByName;
    Ref<NSMutableDictionary> mutableDictionary;
    Ref<NSSet> set, spotSet;
    Ref<NSMutableSet> mutableSet;
    Ref<Spot> spot, copiedSpot, twin, filledSpot = make<Spot>();
    id any, otherTwin;
    Class cls = Spot::class_();
    SEL selector = "initial"_sel;
    Ref<Block<int()>> block = makeBlock<int()>([] { return 77; });
    void *pointer = const_cast<char *>(initialName);
    const char *text = initialName;
    int (*function)() = nullptr;
    CGSize size = {7, 7};
    Word word = {77};
    std::int32_t list[2] = {7, 7};

    static Ref<NSDictionary> mapper() {
        return dictionaryOf({{u"otherTwin"_ns, u"k"_ns}, {u"twin"_ns, u"k"_ns}});
    }
};
NS_IMPLEMENTATION(Everything) {
    cls.property<&Everything::b>("b").property<&Everything::c>("c").property<&Everything::uc>("uc");
    cls.property<&Everything::s>("s").property<&Everything::us>("us").property<&Everything::i>("i");
    cls.property<&Everything::ui>("ui").property<&Everything::q>("q").property<&Everything::uq>("uq");
    cls.property<&Everything::f>("f").property<&Everything::d>("d").property<&Everything::ld>("ld");
    cls.property<&Everything::string>("string", "C").property<&Everything::mutableString>("mutableString");
    cls.property<&Everything::value>("value").property<&Everything::number>("number");
    cls.property<&Everything::decimal>("decimal").property<&Everything::data>("data");
    cls.property<&Everything::mutableData>("mutableData").property<&Everything::date>("date");
    cls.property<&Everything::url>("url").property<&Everything::array>("array");
    cls.property<&Everything::mutableArray>("mutableArray").property<&Everything::dictionary>("dictionary");
    cls.property<&Everything::spots>("spots", "", {"NoSuchClass", "Spot"});
    cls.property<&Everything::mutableDictionary>("mutableDictionary");
    cls.property<&Everything::spotsByName>("spotsByName", "", {"Spot"});
    cls.property<&Everything::set>("set").property<&Everything::mutableSet>("mutableSet");
    cls.property<&Everything::spotSet>("spotSet", "", {"Spot"}).property<&Everything::spot>("spot");
    cls.property<&Everything::any>("any").property<&Everything::cls>("cls");
    cls.property<&Everything::selector>("selector").property<&Everything::block>("block");
    cls.property<&Everything::pointer>("pointer").property<&Everything::text>("text");
    cls.property<&Everything::function>("function").property<&Everything::size>("size");
    cls.property<&Everything::word>("word").property<&Everything::list>("list");
    cls.property<&Everything::copiedSpot>("copiedSpot", "C").property<&Everything::filledSpot>("filledSpot");
    cls.property<&Everything::twin>("twin").property<&Everything::otherTwin>("otherTwin");
    cls.classMethod<&Everything::mapper>("modelCustomPropertyMapper");
}

class Contradictory : public NSObject {
    NS_CLASS(Contradictory, NSObject)
};
NS_IMPLEMENTATION(Contradictory) {
    cls.protocol("P").protocol("P");
}

std::string shown(const id &object);

template <class Elements>
std::string joined(const Elements &elements) {
    std::string text;
    for (const id &element : elements)
        text += (text.empty() ? "" : ",") + shown(element);
    return text;
}

/// "~" marks mutable objects.
std::string shown(const id &object) {
    if (!object)
        return "none";
    for (const Class cls : {NSMutableString::class_(), NSMutableData::class_(), NSMutableArray::class_(),
                            NSMutableDictionary::class_(), NSMutableSet::class_()})
        if (object->isKindOfClass(cls))
            return "~" + shown(object->copy());
    if (const auto array = as<NSArray>(object))
        return "[" + joined(array->allObjects()) + "]";
    if (const auto set = as<NSSet>(object))
        return "(" + joined(set->allObjects()->allObjects()) + ")";
    if (const auto dictionary = as<NSDictionary>(object)) {
        std::string text;
        for (const auto &[key, value] : dictionary->allEntries())
            text += shown(key) + "=" + shown(value) + ";";
        return "{" + text + "}";
    }
    if (const auto spot = as<Spot>(object))
        return class_getName(spot->isa()) + std::to_string(spot->x);
    if (const auto date = as<NSDate>(object))
        return "T" + std::to_string(std::lround(date->timeIntervalSince1970()));
    if (const auto decimal = as<NSDecimalNumber>(object))
        return "D" + decimal->stringValue()->utf8();
    if (const auto value = as<NSValue>(object); value && !as<NSNumber>(object))
        return value->objCType();
    if (const auto text = as<NSAttributedString>(object))
        return shown(text->string());
    if (as<NSBlock>(object))
        return "block";
    return object->description()->utf8();
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

/// What properties are given, by the names that the rows have for it.
std::map<std::string, id> values() {
    const std::int32_t list[2] = {4, 5};
    return {
        {"null", NSNull::null()},
        {"300", number(300)},
        {"-1.5", number(-1.5)},
        {"nan", number(std::numeric_limits<double>::quiet_NaN())},
        {"decimal", NSDecimalNumber::decimalNumberWithString(u"9223372036854775808.5"_ns)},
        {"'Spot'", u"Spot"_ns},
        {"'42'", u"42"_ns},
        {"'-3.9x'", u" -3.9x"_ns},
        {"'yes'", u"yes"_ns},
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
        {"block", makeBlock<int()>([] { return 1; })},
    };
}

/// Each of these properties, given one of these values, is then shown like this.
struct Row {
    std::string_view properties, values, expected;
};

constexpr std::string_view itself = "itself"; // what the value is shown like
constexpr std::string_view numbers = "c uc s us i ui q uq f d ld";

/// What no row says leaves a property as it is.
constexpr Row rows[] = {
    {numbers,
     "null nan 'Spot' '(null)' data url attributed array set dictionary date pointer size word list class "
     "block",
     "0"},
    {"b",
     "null 'Spot' '(null)' data url attributed array set dictionary date pointer size word list class block",
     "0"},
    {"b", "300 -1.5 nan decimal '42' '-3.9x' 'yes'", "1"},
    {"c uc", "300", "44"},
    {"s us i ui q uq f d ld", "300", "300"},
    {"c s i q", "-1.5", "-1"},
    {"c s i", "decimal", "-1"},
    {"uc", "-1.5 decimal", "255"},
    {"us", "-1.5 decimal", "65535"},
    {"ui", "-1.5 decimal", "4294967295"},
    {"uq", "-1.5", "18446744073709551615"},
    {"f d ld", "-1.5", "-1.5"},
    {"q uq", "decimal", "9223372036854775807"},
    {"f", "decimal", "9.223372e+18"},
    {"d ld", "decimal", "9.223372036854776e+18"},
    {numbers, "'42'", "42"},
    {"c s i q", "'-3.9x'", "-3"},
    {"uc", "'-3.9x'", "253"},
    {"us", "'-3.9x'", "65533"},
    {"ui", "'-3.9x'", "4294967293"},
    {"uq", "'-3.9x'", "18446744073709551613"},
    {"f d ld", "'-3.9x'", "-3.9"},
    {numbers, "'yes'", "1"},

    {"string mutableString value number decimal data mutableData date url array mutableArray spots "
     "dictionary "
     "mutableDictionary spotsByName set mutableSet spotSet cls block",
     "null", "none"},
    {"string mutableString", "300 -1.5 nan 'Spot' '42' '-3.9x' 'yes' '(null)' url attributed", itself},
    {"string mutableString", "decimal", "9223372036854775808.5"},
    {"string mutableString", "data", "hi"},
    {"value", "300 -1.5 nan decimal pointer size word list", itself},
    {"number", "300 -1.5 nan decimal '42'", itself},
    {"number", "'Spot'", "0"},
    {"number", "'-3.9x'", "-3.9"},
    {"number", "'yes'", "1"},
    {"number", "'(null)' data url attributed array set dictionary date pointer size word list class block",
     "none"},
    {"decimal", "300", "D300"},
    {"decimal", "-1.5", "D-1.5"},
    {"decimal", "'42'", "D42"},
    {"decimal", "'-3.9x'", "D-3.9"},
    {"decimal", "decimal", itself},
    {"decimal", "nan 'Spot' 'yes' '(null)'", "none"},
    {"data mutableData", "'Spot'", "<53706f74>"},
    {"data mutableData", "'42'", "<3432>"},
    {"data mutableData", "'-3.9x'", "<202d332e 3978>"},
    {"data mutableData", "'yes'", "<796573>"},
    {"data mutableData", "'(null)'", "<286e756c 6c29>"},
    {"data mutableData", "data", itself},
    {"date", "'Spot' '42' '-3.9x' 'yes' '(null)'", "none"},
    {"date", "date", itself},
    {"url", "'Spot' '42' 'yes' '(null)' url", itself},
    {"url", "'-3.9x'", "-3.9x"},
    {"array mutableArray", "array", itself},
    {"array mutableArray", "set", "[7]"},
    {"spots", "array", "[Spot5,Spot0]"},
    {"spots", "set", "[]"},
    {"dictionary mutableDictionary", "dictionary", itself},
    {"spotsByName", "dictionary", "{}"},
    {"set mutableSet", "array", "({x=5;},e,Spot0)"},
    {"set mutableSet", "set", itself},
    {"spotSet", "array", "(Spot5,Spot0)"},
    {"spotSet", "set", "()"},
    {"spot", "dictionary", "Spot9"},
    {"any",
     "300 -1.5 nan decimal 'Spot' '42' '-3.9x' 'yes' '(null)' data url attributed array set dictionary date "
     "pointer "
     "size word list class block",
     itself},
    {"cls", "'Spot' class", "Spot"},
    {"block", "block", itself},
    {"selector", "null", "<null selector>"},
    {"selector", "'Spot' '42' '-3.9x' 'yes' '(null)'", itself},
    {"pointer text", "null", "0"},
    {"pointer text function", "pointer", "16"},
    {"size", "size", "3"},
    {"word", "word", "8"},
    {"list", "list", "5"},
};

std::vector<std::string> words(std::string_view text) {
    std::istringstream stream{std::string(text)};
    return {std::istream_iterator<std::string>(stream), {}};
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

const _QNModelPropertyMeta *metaNamed(const std::string &name) {
    const auto meta = _QNModelMeta::metaWithClass(Everything::class_());
    return peek<_QNModelPropertyMeta>(meta->_mapper->objectForKey(string(name)));
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
    for (const auto &[properties, names, outcome] : rows)
        for (const auto &property : words(properties))
            for (const auto &value : words(names)) {
                ASSERT_TRUE(metaNamed(property) && given.contains(value)) << property << " " << value;
                const std::string becomes = outcome == itself ? shown(given.at(value)) : std::string(outcome);
                const bool isMutable = property.starts_with("mutable") && becomes != "none";
                EXPECT_TRUE(expected[property].emplace(value, (isMutable ? "~" : "") + becomes).second)
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
    const auto set = [](const char *property, const id &value) {
        const auto model = make<Everything>();
        ModelSetValueForProperty(*model, value, *metaNamed(property));
        return shownProperty(*model, *metaNamed(property));
    };
    constexpr std::pair<const char16_t *, const char *> numbers[] = {{u"True", "1"},       {u"tRUE", "0"},
                                                                     {u"<Null>", "none"},  {u"1e3.", "1000"},
                                                                     {u"1e999.0", "none"}, {u"1e3", "1"}};
    for (const auto &[text, expected] : numbers)
        EXPECT_EQ(set("number", make<NSString>(text)), expected) << expected;
    EXPECT_EQ(set("q", u"99999999999999999999"_ns), "9223372036854775807");
    EXPECT_EQ(set("f", number(1e300)), "0"); // infinite as a float
    EXPECT_EQ(set("string", dataOf("\xFF")), "none");
    EXPECT_EQ(set("data", make<NSString>(u"\xD800")), "none");
    EXPECT_EQ(set("url", u" \n"_ns), "none");
    EXPECT_EQ(set("date", u"2014-01-20"_ns), "T1390176000");
}

TEST(ModelReader, givesWhatTheLongWayGives) {
    Random random(20140120);
    const auto pick = [&](std::size_t bound) { return random() % bound; };
    constexpr const char *scalars[] = {
        "null",     "true",           "-1",       "1.5e300",        "18446744073709551615", "\"\"",
        "\"12.5\"", "\"2014-01-20\"", "\"Spot\"", "\"\\u0000 nil\""};
    const auto name = [&] {
        const auto &metas = *_QNModelMeta::metaWithClass(Everything::class_())->_allPropertyMetas;
        if (pick(8) == 0)
            return std::string(pick(2) ? "\"x\":" : "\"k\":"); // of a spot, of the twins
        return '"' + peek<_QNModelPropertyMeta>(metas.objectAtIndex(pick(metas.count())))->_name->utf8() +
               "\":";
    };
    const std::function<std::string(int)> value = [&](int depth) -> std::string {
        const auto kind = depth > 3 ? 9 : pick(10);
        if (kind > 3)
            return scalars[pick(std::size(scalars))];
        std::string text;
        for (auto count = pick(6); count > 0; --count)
            text += (text.empty() ? "" : ",") + (kind < 2 ? name() : "") + value(depth + 1);
        return kind < 2 ? "{" + text + "}" : "[" + text + "]";
    };
    int straight = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string text = "{";
        for (auto count = 1 + pick(round % 2 ? 5 : 60); count > 0; --count)
            text += (text.size() > 1 ? "," : "") + name() + value(0);
        text += "}";
        const Class cls = Everything::class_();
        const id model = byTheLongWay(cls, text);
        const auto expected = shownModel(model);
        ASSERT_TRUE(!model || qn::modelToJSONData(model)) << "what is read can be written: " << text;
        ASSERT_EQ(shownModel(qn::modelWithJSON(cls, dataOf(text))), expected) << text;
        if (const auto models = qn::readModelArray(cls, dataOf("[" + text + "," + text + "]"))) {
            ++straight;
            ASSERT_EQ(shownModel((*models)->firstObject()) + shownModel((*models)->lastObject()),
                      expected + expected)
                << text;
        }
    }
    EXPECT_GT(straight, 1500); // read without the dictionaries in between
}

TEST(ModelReader, leavesOtherElementsOut) {
    const auto models = *qn::readModelArray(Spot::class_(), dataOf(R"([1,{"x":1},[{"x":2}],"x",{"x":3}])"));
    EXPECT_TRUE(models->isKindOfClass(NSMutableArray::class_()));
    EXPECT_EQ(shown(models), "~[Spot1,Spot3]");
    EXPECT_EQ(qn::readModelArray(Spot::class_(), dataOf(R"({"x":1})")), Ref<NSArray>());
    EXPECT_EQ(qn::readModelArray(Spot::class_(), nullptr), std::nullopt);
}

TEST(ModelReader, decidesByTheClass) {
    const struct {
        Class cls;
        std::string text;
        bool isStraight;
    } cases[] = {
        {Everything::class_(), R"({"spot":{"x":1}})", true},
        {Everything::class_(), R"({"spots":[{"x":1},null,5,[{"x":2}]]})", true},
        {Everything::class_(), R"({"spot":[1],"any":{"k":1,"k":2},"y":1,"y":2,"copiedSpot":null})", true},
        {Everything::class_(), R"({"copiedSpot":{"x":1}})", true},
        {Everything::class_(), R"({"k":{"x":1}})", true},
        {Everything::class_(), R"({"k":[{"x":1}]})", true},
        {Everything::class_(), R"({"spots":{"x":1}})", true},
        {Everything::class_(), R"({"spotsByName":{"a":{"x":1}},"spotSet":[{"x":1}]})", true},
        {Everything::class_(), R"({"filledSpot":{"x":1}})", true},
        {Everything::class_(), R"({"i":1,"string":"\ud800"})", true},
        {Everything::class_(), R"({"string":)" + std::string(512, '[') + std::string(512, ']') + "}", true},
        {Spot::class_(), "{\"\xff\":1}", true},
        {Spot::class_(), R"([{"x":1}])", true},
        {Spot::class_(), R"({"x":1} x)", true},
        {Spot::class_(), R"({"x":1,"x":"x"})", false},
        {AskedSpot::class_(), R"({"x":1})", false},
        {AskingSpot::class_(), R"({"x":1})", false},
        {DoublingSpot::class_(), R"({"x":1})", false},
        {NSString::class_(), R"({"x":1})", false},
        {nullptr, R"({"x":1})", false},
    };
    for (const auto &[cls, text, isStraight] : cases) {
        EXPECT_EQ(qn::readModel(cls, dataOf(text)).has_value(), isStraight) << text;
        EXPECT_EQ(shownModel(qn::modelWithJSON(cls, dataOf(text))), shownModel(byTheLongWay(cls, text)))
            << text;
    }
    EXPECT_EQ(shownModel(qn::modelWithJSON(DoublingSpot::class_(), dataOf(R"({"x":1})"))), "DoublingSpot2");
}
