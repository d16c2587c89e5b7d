#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/JSONPath.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

namespace {

class Sheet : public NSObject {
    NS_CLASS(Sheet, NSObject)
public:
    std::int16_t width = 0;
    std::uint64_t serial = 0;
    bool glossy = false;
    float weight = 0;
    Ref<NSString> name;
    Ref<NSNumber> price;
    Ref<NSDecimalNumber> tax;
    Ref<NSDate> made;
    Ref<NSURL> maker;
    Ref<Sheet> back;
    Ref<NSArray> copies, notes;
    Ref<NSDictionary> kinds;
    Class type = nullptr;
    void *bits = nullptr;
    id any;
};
NS_PROPERTIES(Sheet, width, serial, glossy, weight, name, price, tax, made, (maker, key("by.url", "maker")),
              back, (copies, Sheet), notes, (kinds, Sheet), type, bits, any)

/// Refuses those without a name.
class Card : public Sheet {
    NS_CLASS(Card, Sheet)
public:
    bool isSound(const Ref<NSDictionary> &) const { return name != nullptr; }
};
NS_IMPLEMENTATION(Card) {
    cls.implement<qn::hooks::modelCustomTransformFromDictionary, &Card::isSound>();
}

/// The error's text; empty for none.
template <class Map>
std::string told(const Map &map) {
    Ref<NSError> error = NSError::errorWithDomain(u"stale"_ns, 1, nullptr);
    map(&error);
    return error ? text(error->localizedDescription()) : "";
}
std::string toldOfSheet(const std::string &json) {
    return told([&](Ref<NSError> *error) { qn::modelWithJSON<Sheet>(string(json), error); });
}

template <class T>
T of(const Ref<NSError> &error, const Ref<NSString> &key) {
    return as<NSNumber>(error->userInfo()->objectForKey(key))->valueAs<T>();
}

/// Valid, with up to so many levels of containers.
std::string anyJSON(Random &random, int levels) {
    const auto part = [&] { return anyJSON(random, levels - 1); };
    switch (random.below(levels > 0 ? 5 : 3)) {
    case 0:
        return "\"x\\\"]{\"";
    case 1:
        return "1.5e3";
    case 2:
        return "null";
    case 3:
        return "[ " + part() + "," + part() + "]";
    default:
        return "{\"b\" : " + part() + ",\n\"a\":" + part() +
               (random.below(2) ? ", \"\\u0061\": " + part() : "") + "}";
    }
}

} // namespace

TEST(ModelErrors, thereIsNoneWhenEverythingFits) {
    for (
        const char *json :
        {"{}",
         R"({"width": -32768, "serial": 18446744073709551615, "glossy": 7, "weight": 1e30, "unknown": []})",
         R"({"width": "12 mm", "serial": "0", "glossy": "YES", "weight": " -.5"})",
         R"({"width": null, "name": null, "copies": null, "back": null, "type": null, "bits": null})",
         R"({"width": "null", "price": "nil", "tax": "1.5", "name": 5})",
         R"({"made": "2014-01-20", "maker": "a://b", "any": [], "type": "Sheet"})",
         R"({"copies": [{"width": 1}, {}], "kinds": {"a": {"copies": []}}, "back": {"back": {}}, "notes": [1]})"})
        EXPECT_EQ(toldOfSheet(json), "") << json;
}

TEST(ModelErrors, nameThePropertyTheValueAndItsPlace) {
    const std::pair<const char *, const char *> faults[] = {
        {R"({"width": [1]})", "Sheet.width cannot be an array, which is no number: width, line 1, column 11"},
        {R"({"width": 32768})",
         "Sheet.width cannot be 32768, which is out of range: width, line 1, column 11"},
        {R"({"serial": -1})", "Sheet.serial cannot be -1, which is out of range: serial, line 1, column 12"},
        {R"({"weight": 1e39})", "which is out of range: weight, line 1, column 12"},
        {R"({"price": "free"})",
         "Sheet.price cannot be \"free\", which is no number: price, line 1, column 11"},
        {R"({"tax": "some"})", "which makes no NSDecimalNumber: tax"},
        {"{\"name\"\n : {}}",
         "Sheet.name cannot be an object, which makes no NSString: name, line 2, column 4"},
        {R"({"made": "soon"})", "Sheet.made cannot be \"soon\", which makes no NSDate: made"},
        {R"({"maker": "  "})", "which makes no NSURL: maker, line 1, column 11"},
        {R"({"maker": 1, "by": {"url": 2}})",
         "Sheet.maker cannot be 2, which makes no NSURL: by.url, line 1, column 28"},
        {R"({"back": {"back": 5}})", "which is no object to make a Sheet of: back.back, line 1, column 19"},
        {R"({"copies": {}})", "Sheet.copies cannot be an object, which is no array"},
        {R"({"copies": [{}, "é", 5]})",
         "Sheet.copies cannot be \"é\", which is no object to make a Sheet of: copies[1]"},
        {"{\"é\": \"é\", \"kinds\": {\"a\\u0062\": {}, \"ab\": {\"width\": \"x\"}}}",
         "Sheet.width cannot be \"x\", which is no number: kinds.ab.width, line 1, column 53"},
        {R"({"kinds": []})", "Sheet.kinds cannot be an array, which is no object"},
        {R"({"type": "NoSuchClass"})", "Sheet.type cannot be \"NoSuchClass\", which is no class"},
        {R"({"bits": 1})", "Sheet.bits cannot be 1, which JSON cannot hold"},
        {"", "The JSON is not valid, no value: line 1, column 1"},
        {"[]", "The JSON is no object: line 1, column 1"},
        {"{\n  \"é\": tru }", ": line 2, column 8"},
    };
    for (const auto &[json, fault] : faults)
        EXPECT_THAT(toldOfSheet(json), HasSubstr(fault)) << json;
}

TEST(ModelErrors, areOfEveryOperation) {
    const auto list = u"[{}, 5]"_ns, table = u"{\"a\": {}, \"b\": []}"_ns;
    EXPECT_EQ(told([&](auto *error) { EXPECT_EQ(qn::modelArrayWithClass<Sheet>(list, error)->count(), 1u); }),
              "A model cannot be 5, which is no object to make a Sheet of: [1], line 1, column 6");
    EXPECT_EQ(told([&](auto *error) { qn::modelDictionaryWithClass<Sheet>(table, error); }),
              "A model cannot be an array, which is no object to make a Sheet of: b, line 1, column 16");
    EXPECT_EQ(told([&](auto *error) { qn::modelArrayWithClass<Sheet>(table, error); }),
              "The JSON is no array: line 1, column 1");
    const auto sheet = make<Sheet>();
    EXPECT_EQ(told([&](auto *error) {
                  EXPECT_TRUE(
                      qn::modelSetWithJSON(sheet, u"{\"weight\": \"1 g\", \"width\": \"A4\"}"_ns, error));
              }),
              "Sheet.width cannot be \"A4\", which is no number: width, line 1, column 28");
    EXPECT_EQ(told([&](auto *error) {
                  qn::modelWithJSON<Sheet>(dictionaryOf({{u"width"_ns, sheet}}), error);
              }),
              "Sheet.width cannot be a value of Sheet, which is no number: width")
        << "no text, hence no line";
    EXPECT_EQ(told([&](auto *error) { qn::modelWithJSON<Sheet>(sheet, error); }), "There is no JSON");
    EXPECT_THAT(
        told([&](auto *error) { qn::modelArrayWithClass<Card>(u"[{}, {\"name\": 1}, {}]"_ns, error); }),
        HasSubstr("2 objects were refused by Card"));
    EXPECT_THAT(told([&](auto *error) { qn::modelWithJSON<NSDate>(u"{}"_ns, error); }),
                HasSubstr("1 object was refused by NSDate"));
    EXPECT_THAT(told([&](auto *error) { qn::modelWithJSON(nullptr, u"{}"_ns, error); }),
                HasSubstr("refused by nil"));
    EXPECT_THAT(told([&](auto *error) { qn::modelSetWithJSON(make<Card>(), u"{}"_ns, error); }),
                HasSubstr("refused by Card"));

    Ref<NSError> error;
    qn::modelWithJSON<Sheet>(u"\uFEFF{\"name\": \"é\",\r\n\t\"width\": \"x\"}"_ns, &error);
    EXPECT_EQ(static_cast<qn::ModelError>(error->code()), qn::ModelError::unsuitableValue);
    EXPECT_EQ(text(error->userInfo()->objectForKey(qn::modelErrorPropertyKey())), "Sheet.width");
    EXPECT_EQ(text(error->userInfo()->objectForKey(qn::modelErrorValueKey())), "x");
    EXPECT_EQ(of<int>(error, qn::modelErrorLineKey()), 2);
    EXPECT_EQ(of<int>(error, qn::modelErrorColumnKey()), 11);
    EXPECT_EQ(of<int>(error, qn::modelErrorOffsetKey()), 29);
}

TEST(ModelErrors, endWhateverTheJSON) {
    const auto knot = NSMutableDictionary::dictionary();
    knot->setObject(knot, u"back"_ns);
    EXPECT_THAT(told([&](auto *error) { qn::modelWithJSON<Sheet>(knot, error); }),
                HasSubstr("which nests too deep"));
    knot->removeAllObjects();
    EXPECT_THAT(toldOfSheet("{\"name\": \"" + std::string(100'000, '-') + "\", \"width\": \"" +
                            std::string(100'000, '-') + "\"}"),
                HasSubstr("cannot be \"" + std::string(40, '-') + "…\""));

    // A value of any text is found where it stands: the part of the text from there on begins with it.
    Random random(2);
    int found = 0;
    for (int i = 0; i < 2000; ++i) {
        const std::string json = anyJSON(random, 3);
        const auto root =
            NSJSONSerialization::JSONObjectWithData(dataOf(json), NSJSONReadingOptions::None, nullptr);
        for (const qn::JSONPath &path :
             {qn::JSONPath{"a"}, qn::JSONPath{std::size_t{1}}, qn::JSONPath{"a", std::size_t{0}},
              qn::JSONPath{std::size_t{0}, "a"}}) {
            id value = root;
            for (const qn::JSONStep &step : path)
                if (const auto *key = std::get_if<std::string>(&step))
                    value = as<NSDictionary>(value) ? as<NSDictionary>(value)->objectForKey(string(*key))
                                                    : nullptr;
                else {
                    const auto array = as<NSArray>(value);
                    const std::size_t index = std::get<std::size_t>(step);
                    value = array && index < array->count() ? array->objectAtIndex(index) : nullptr;
                }
            const char begin = as<NSString>(value)       ? '"'
                               : as<NSNumber>(value)     ? '1'
                               : as<NSArray>(value)      ? '['
                               : as<NSDictionary>(value) ? '{'
                                                         : 'n';
            const std::size_t offset = qn::offsetOf(json, path);
            ASSERT_TRUE(value ? json[offset] == begin : offset <= json.size()) << json;
            found += value ? 1 : 0;
        }
    }
    EXPECT_GT(found, 100) << "values that there are";
}
