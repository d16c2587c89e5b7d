// Every kind of property beside every kind of value, by the long way over dictionaries and read straight out
// of a text.
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelJSON.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelReader.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelSetting.h"
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/CGGeometry.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Runtime/Object/NSBlock.h"

#include <gmock/gmock.h>

#include <limits>
#include <random>
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
    Ref<NSValue> value = NSNumber::numberWithInt(77);
    Ref<NSNumber> number = NSNumber::numberWithInt(77);
    Ref<NSDecimalNumber> decimal = NSDecimalNumber::decimalNumberWithString(u"77"_ns);
    Ref<NSData> data = NSData::data();
    Ref<NSMutableData> mutableData = NSMutableData::dataWithLength(0);
    Ref<NSDate> date = NSDate::dateWithTimeIntervalSinceReferenceDate(77);
    Ref<NSURL> url = NSURL::URLWithString(u"initial"_ns);
    Ref<NSMutableArray> mutableArray;
    Ref<NSArray> array = NSArray::arrayWithObjects({u"initial"_ns}), spots;
    Ref<NSDictionary> dictionary, spotsByName;
    Ref<NSMutableDictionary> mutableDictionary;
    Ref<NSSet> set, spotSet;
    Ref<NSMutableSet> mutableSet;
    Ref<Spot> spot, copiedSpot, twin, filledSpot = make<Spot>();
    id any, otherTwin;
    Class cls = Spot::class_();
    SEL selector = sel_registerName("initial");
    Ref<Block<int()>> block = makeBlock<int()>([] { return 77; });
    void *pointer = const_cast<char *>(initialName);
    const char *text = initialName;
    int (*function)() = nullptr;
    CGSize size = {7, 7};
    Word word = {77};
    std::int32_t list[2] = {7, 7};

    static Ref<NSDictionary> mapper() {
        return NSDictionary::dictionaryWithEntries({{u"otherTwin"_ns, u"k"_ns}, {u"twin"_ns, u"k"_ns}});
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

std::string shown(const id &object);

template <class Elements>
std::string joined(const Elements &elements) {
    std::string text;
    for (const id &element : elements)
        text += (text.empty() ? "" : ",") + shown(element);
    return text;
}

/// Without blanks; "~" marks mutable objects, "-" is none.
std::string shown(const id &object) {
    if (!object)
        return "-";
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

id dictionaryOfX(const id &value) {
    return NSDictionary::dictionaryWithEntries({{u"x"_ns, value}});
}

/// The columns of the table, in its order.
std::vector<id> columns() {
    const std::int32_t list[2] = {4, 5};
    return {
        NSNull::null(),
        NSNumber::numberWithInt(300),
        NSNumber::numberWithDouble(-1.5),
        NSNumber::numberWithDouble(std::numeric_limits<double>::quiet_NaN()),
        NSDecimalNumber::decimalNumberWithString(u"9223372036854775808.5"_ns),
        u"Spot"_ns,
        u"42"_ns,
        u" -3.9x"_ns,
        u"yes"_ns,
        u"(null)"_ns,
        NSData::dataWithBytes("hi", 2),
        NSURL::URLWithString(u"u:/a"_ns),
        NSAttributedString::attributedStringWithString(u"att"_ns),
        NSArray::arrayWithObjects({dictionaryOfX(u"5"_ns), u"e"_ns, make<Spot>()}),
        NSSet::setWithObjects({NSNumber::numberWithInt(7)}),
        dictionaryOfX(NSNumber::numberWithInt(9)),
        NSDate::dateWithTimeIntervalSince1970(99),
        NSValue::valueWithPointer(reinterpret_cast<void *>(16)),
        NSValue::valueWith(CGSize{3, 4}),
        NSValue::valueWith(Word{8}),
        NSValue::valueWithBytes(list, "[2i]"),
        Spot::class_()->self(),
        makeBlock<int()>([] { return 1; }),
    };
}

/// A row: the property, then what each value makes of it. "." leaves it as it is; "*" after a cell repeats
/// it to the end of the row.
constexpr const char *table[] = {
    // null 300 -1.5 nan decimal "Spot" "42" " -3.9x" "yes" "(null)" data URL attributed array set dictionary
    //     date pointer size word list class block
    "b 0 1 1 1 1 0 1 1 1 0*",
    "c 0 44 -1 0 -1 0 42 -3 1 0*",
    "uc 0 44 255 0 255 0 42 253 1 0*",
    "s 0 300 -1 0 -1 0 42 -3 1 0*",
    "us 0 300 65535 0 65535 0 42 65533 1 0*",
    "i 0 300 -1 0 -1 0 42 -3 1 0*",
    "ui 0 300 4294967295 0 4294967295 0 42 4294967293 1 0*",
    "q 0 300 -1 0 9223372036854775807 0 42 -3 1 0*",
    "uq 0 300 18446744073709551615 0 9223372036854775807 0 42 18446744073709551613 1 0*",
    "f 0 300 -1.5 0 9.223372e+18 0 42 -3.9 1 0*",
    "d 0 300 -1.5 0 9.223372036854776e+18 0 42 -3.9 1 0*",
    "ld 0 300 -1.5 0 9.223372036854776e+18 0 42 -3.9 1 0*",
    "string - 300 -1.5 nan 9223372036854775808.5 Spot 42 _-3.9x yes (null) hi u:/a att .*",
    "mutableString - ~300 ~-1.5 ~nan ~9223372036854775808.5 ~Spot ~42 ~_-3.9x ~yes ~(null) ~hi ~u:/a ~att .*",
    "value - 300 -1.5 nan D9223372036854775808.5 . . . . . . . . . . . . ^v {CGSize=dd} (Word=if) [2i] . .",
    "number - 300 -1.5 nan D9223372036854775808.5 0 42 -3.9 1 -*",
    "decimal - D300 D-1.5 - D9223372036854775808.5 - D42 D-3.9 - - .*",
    "data - . . . . <53706f74> <3432> <202d332e_3978> <796573> <286e756c_6c29> <6869> .*",
    "mutableData - . . . . ~<53706f74> ~<3432> ~<202d332e_3978> ~<796573> ~<286e756c_6c29> ~<6869> .*",
    "date - . . . . - - - - - . . . . . . T99 .*",
    "url - . . . . Spot 42 -3.9x yes (null) . u:/a .*",
    "array - . . . . . . . . . . . . [{x=5;},e,Spot0] [7] .*",
    "mutableArray - . . . . . . . . . . . . ~[{x=5;},e,Spot0] ~[7] .*",
    "spots - . . . . . . . . . . . . [Spot5,Spot0] [] .*",
    "dictionary - . . . . . . . . . . . . . . {x=9;} .*",
    "mutableDictionary - . . . . . . . . . . . . . . ~{x=9;} .*",
    "spotsByName - . . . . . . . . . . . . . . {} .*",
    "set - . . . . . . . . . . . . ({x=5;},e,Spot0) (7) .*",
    "mutableSet - . . . . . . . . . . . . ~({x=5;},e,Spot0) ~(7) .*",
    "spotSet - . . . . . . . . . . . . (Spot5,Spot0) () .*",
    "spot . . . . . . . . . . . . . . . Spot9 .*",
    "any . 300 -1.5 nan D9223372036854775808.5 Spot 42 _-3.9x yes (null) <6869> u:/a att [{x=5;},e,Spot0] "
    "(7) "
    "{x=9;} T99 ^v {CGSize=dd} (Word=if) [2i] Spot block",
    "cls - . . . . Spot . . . . . . . . . . . . . . . Spot .",
    "selector <null_selector> . . . . Spot 42 _-3.9x yes (null) .*",
    "block - . . . . . . . . . . . . . . . . . . . . . block",
    "pointer 0 . . . . . . . . . . . . . . . . 16 .*",
    "text 0 . . . . . . . . . . . . . . . . 16 .*",
    "function . . . . . . . . . . . . . . . . . 16 .*",
    "size . . . . . . . . . . . . . . . . . . 3 .*",
    "word . . . . . . . . . . . . . . . . . . . 8 .*",
    "list . . . . . . . . . . . . . . . . . . . . 5 .*",
};

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

Ref<NSData> bytes(const std::string &text) {
    return NSData::dataWithBytes(text.data(), text.size());
}

id byTheLongWay(Class cls, const std::string &json) {
    return qn::modelWithDictionary(cls, qn::_dictionaryWithJSON(bytes(json)));
}

const _QNModelPropertyMeta *metaNamed(const std::string &name) {
    const auto meta = _QNModelMeta::metaWithClass(Everything::class_());
    return peek<_QNModelPropertyMeta>(meta->_mapper->objectForKey(NSString::stringWithUTF8String(name)));
}

} // namespace

TEST(ModelMatrix, everyValueIntoEveryProperty) {
    const auto values = columns();
    for (const std::string row : table) {
        std::istringstream cells(row);
        std::string name, cell;
        cells >> name;
        const auto *meta = metaNamed(name);
        ASSERT_NE(meta, nullptr) << name;
        for (std::size_t column = 0; column < values.size(); ++column) {
            ASSERT_TRUE(cell.ends_with('*') || cells >> cell) << row;
            const auto model = make<Everything>();
            const std::string before = shownProperty(*model, *meta);
            ModelSetValueForProperty(*model, values[column], *meta);
            std::string expected = cell.ends_with('*') ? cell.substr(0, cell.size() - 1) : cell;
            expected = expected == "." ? before : expected;
            std::string found = shownProperty(*model, *meta);
            std::ranges::replace(found, ' ', '_');
            std::ranges::replace(expected, ' ', '_');
            EXPECT_EQ(found, expected) << name << " from " << shown(values[column]);
        }
        EXPECT_TRUE(cell.ends_with('*') || !(cells >> cell)) << row;
    }
}

TEST(ModelMatrix, unusualValues) {
    const auto set = [](const char *property, const id &value) {
        const auto model = make<Everything>();
        ModelSetValueForProperty(*model, value, *metaNamed(property));
        return shownProperty(*model, *metaNamed(property));
    };
    constexpr std::pair<const char16_t *, const char *> numbers[] = {{u"True", "1"},    {u"tRUE", "0"},
                                                                     {u"<Null>", "-"},  {u"1e3.", "1000"},
                                                                     {u"1e999.0", "-"}, {u"1e3", "1"}};
    for (const auto &[text, expected] : numbers)
        EXPECT_EQ(set("number", make<NSString>(text)), expected) << expected;
    EXPECT_EQ(set("q", u"99999999999999999999"_ns), "9223372036854775807");
    EXPECT_EQ(set("f", NSNumber::numberWithDouble(1e300)), "0"); // infinite as a float
    EXPECT_EQ(set("string", NSData::dataWithBytes("\xFF", 1)), "-");
    EXPECT_EQ(set("data", make<NSString>(u"\xD800")), "-");
    EXPECT_EQ(set("url", u" \n"_ns), "-");
    EXPECT_EQ(set("date", u"2014-01-20"_ns), "T1390176000");
}

TEST(ModelReader, givesWhatTheLongWayGives) {
    std::mt19937 random(20140120);
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
        ASSERT_EQ(shownModel(qn::modelWithJSON(cls, bytes(text))), expected) << text;
        if (const auto models = qn::readModelArray(cls, bytes("[" + text + "," + text + "]"))) {
            ++straight;
            ASSERT_EQ(shownModel((*models)->firstObject()) + shownModel((*models)->lastObject()),
                      expected + expected)
                << text;
        }
    }
    EXPECT_GT(straight, 1500); // read without the dictionaries in between
}

TEST(ModelReader, leavesOtherElementsOut) {
    const auto models = *qn::readModelArray(Spot::class_(), bytes(R"([1,{"x":1},[{"x":2}],"x",{"x":3}])"));
    EXPECT_TRUE(models->isKindOfClass(NSMutableArray::class_()));
    EXPECT_EQ(shown(models), "~[Spot1,Spot3]");
    EXPECT_EQ(qn::readModelArray(Spot::class_(), bytes(R"({"x":1})")), Ref<NSArray>());
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
        EXPECT_EQ(qn::readModel(cls, bytes(text)).has_value(), isStraight) << text;
        EXPECT_EQ(shownModel(qn::modelWithJSON(cls, bytes(text))), shownModel(byTheLongWay(cls, text)))
            << text;
    }
    EXPECT_EQ(shownModel(qn::modelWithJSON(DoublingSpot::class_(), bytes(R"({"x":1})"))), "DoublingSpot2");
}
