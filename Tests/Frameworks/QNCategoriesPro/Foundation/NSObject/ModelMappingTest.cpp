// Which keys reach which properties, and what the hooks of a class change.
#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"
#include "Platform/Foundation/Text/NSObjCRuntime.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/OnThreads.h"

#include <gtest/gtest.h>

namespace {

/// A letter a property: what the class maps is given with each test.
class Letters : public NSObject {
    NS_CLASS(Letters, NSObject)
public:
    Ref<NSString> a, b, c, d, umlaut;
    Ref<NSArray> children;
    Ref<Letters> child;
    std::int32_t computed() const { return 1; }

    /// As in "a=A d=D"; what is none is left out.
    std::string values() const {
        std::string values;
        for (const auto &[name, value] : {std::pair("a", a), {"b", b}, {"c", c}, {"d", d}, {"ä", umlaut}})
            if (value)
                values += (values.empty() ? "" : " ") + std::string(name) + "=" + value->utf8();
        return values;
    }
};
NS_IMPLEMENTATION(Letters) {
    cls.property<&Letters::a>("a", "C").property<&Letters::b>("b", "C").property<&Letters::c>("c", "C");
    cls.property<&Letters::d>("d", "C").property<&Letters::umlaut>("ä", "C");
    cls.property<&Letters::children>("children").property<&Letters::child>("child");
    cls.property<&Letters::computed>("computed");
}

/// A class of letters with hooks; each is registered once.
Class lettersWith(const char *name, const std::function<void(Class)> &declare) {
    return objc_registerSubclass<Letters>(name, declare);
}

template <auto Hook>
std::function<void(Class)> classHook(const char *selector) {
    return [selector](Class cls) { runtime::addMethod<Hook>(cls->metaClass(), selector); };
}

std::string mapped(Class cls, const std::string &json) {
    const auto model = as<Letters>(qn::modelWithJSON(cls, string(json)));
    return model ? model->values() : "none";
}

Ref<NSDictionary> keyMapper() {
    return qn::_dictionaryWithJSON(string(R"({"a":"in.a", "b":"in..b", "c":"c.",
                                             "d":["", "D", 1, "in.deep.d", "e"], "ä":3, "unknown":"a"})"));
}

Ref<NSDictionary> sharedMapper() {
    return qn::_dictionaryWithJSON(string(R"({"b":"a", "c":"a", "d":"", "ä":[""]})"));
}

Ref<NSArray> someNames() {
    return arrayOf({u"a"_ns, u"b"_ns, u"none"_ns});
}

Ref<NSArray> oneName() {
    return arrayOf({u"a"_ns});
}

/// While the record of this class is built, a newer one is built and stored, as another thread might.
Class overtaken = nullptr;

Ref<NSDictionary> overtakingMapper() {
    if (const Class cls = std::exchange(overtaken, nullptr)) {
        class_addProperty(cls, "late", {{"T", "@\"NSString\""}, {"G", "b"}, {"S", "setB:"}});
        QNClassInfo::classInfoWithClass(cls)->setNeedUpdate();
        _QNModelMeta::metaWithClass(cls);
    }
    return nullptr;
}

} // namespace

TEST(ModelMapping, keysPathsAndSeveralKeys) {
    const Class cls = lettersWith("KeyedLetters", classHook<&keyMapper>("modelCustomPropertyMapper"));
    const std::string more = R"(,"1":1,"2":1,"3":1,"4":1,"5":1,"6":1,"7":1,"8":1,"9":1})";
    for (const std::string &end : {std::string("}"), more}) { // walked by key, and by property
        const auto map = [&](const std::string &begin) { return mapped(cls, begin + end); };
        EXPECT_EQ(map(R"({"in":{"a":"A","b":"B","deep":{"d":"D"}},"c.":"C","ä":"no")"), "a=A b=B c=C d=D");
        EXPECT_EQ(map(R"({"in":"text","a":"no","b":"no","c":"no","d":"no","e":"E")"), "d=E");
        EXPECT_EQ(map(R"({"D":"first","e":"E","in":{"a":null})"), "d=first");
        EXPECT_EQ(map(R"({"in":{"deep":[]})"), "");
    }
    EXPECT_EQ(mapped(cls, R"({"in.a":"literal"})"), "a=literal");
}

TEST(ModelMapping, aKeySharedByProperties) {
    const Class cls = lettersWith("SharedLetters", classHook<&sharedMapper>("modelCustomPropertyMapper"));
    EXPECT_EQ(mapped(cls, R"({"a":"x","b":"no","d":"no","ä":"no"})"), "a=x b=x c=x");
}

TEST(ModelMapping, withoutHooksByName) {
    EXPECT_EQ(mapped(Letters::class_(), R"({"a":"A","ä":"Ä","d":5,"computed":2})"), "a=A d=5 ä=Ä");
    EXPECT_EQ(mapped(Letters::class_(), "{}"), "");
    for (const char *json : {"[]", "{", "5", "", "null"})
        EXPECT_EQ(mapped(Letters::class_(), json), "none") << json;
    for (const id &json : {id(), id(NSNull::null()), id(number(1))})
        EXPECT_EQ(qn::modelWithJSON<Letters>(json), nullptr);
    const auto bytes = NSData::dataWithBytes(R"({"a":"A"})", 9);
    EXPECT_EQ(qn::modelWithJSON<Letters>(bytes)->values(), "a=A");
    EXPECT_EQ(qn::modelWithDictionary<Letters>(bytes), nullptr);
    EXPECT_EQ(qn::modelWithDictionary(NSString::class_(), NSDictionary::dictionary()), nullptr);
    EXPECT_FALSE(qn::modelSetWithJSON(nullptr, bytes));
    EXPECT_FALSE(qn::modelSetWithJSON(make<NSObject>(), bytes));
}

TEST(ModelMapping, blackAndWhiteLists) {
    const auto whiteSome = classHook<&someNames>("modelPropertyWhitelist");
    const auto blackOne = classHook<&oneName>("modelPropertyBlacklist");
    const auto grey = [&](Class cls) {
        whiteSome(cls);
        blackOne(cls);
    };
    const std::string all = R"({"a":"A","b":"B","c":"C","d":"D","ä":"Ä"})";
    EXPECT_EQ(mapped(lettersWith("WhiteLetters", whiteSome), all), "a=A b=B");
    EXPECT_EQ(mapped(lettersWith("BlackLetters", blackOne), all), "b=B c=C d=D ä=Ä");
    EXPECT_EQ(mapped(lettersWith("GreyLetters", grey), all), "b=B");
    EXPECT_EQ(mapped(lettersWith("OpenLetters", classHook<&NSArray::array>("modelPropertyWhitelist")), all),
              "a=A b=B c=C d=D ä=Ä");
}

namespace {

id replaced(NSObject *, SEL, const id &given) {
    const auto dictionary = as<NSDictionary>(given);
    return dictionary->objectForKey(u"inner"_ns); // none without one
}

bool judged(NSObject *self, SEL, const id &) {
    return static_cast<Letters *>(self)->a != nullptr;
}

Class classFor(const Ref<NSDictionary> &dictionary) {
    return NSClassFromString(as<NSString>(dictionary->objectForKey(u"class"_ns)));
}

Ref<NSDictionary> genericClasses() {
    return dictionaryOf({{u"children"_ns, u"CustomLetters"_ns},
                         {u"child"_ns, u"Unknown"_ns},
                         {NSNull::null(), u"Letters"_ns}});
}

} // namespace

TEST(ModelMapping, hooksOfObjects) {
    const Class cls = lettersWith("HookedLetters", [](Class made) {
        class_addMethod(made, "modelCustomWillTransformFromDictionary:"_sel, &replaced);
        class_addMethod(made, "modelCustomTransformFromDictionary:"_sel, &judged);
    });
    EXPECT_EQ(mapped(cls, R"({"inner":{"a":"A"}})"), "a=A");
    EXPECT_EQ(mapped(cls, R"({"a":"A"})"), "none");
    EXPECT_EQ(mapped(cls, R"({"inner":{"b":"B"}})"), "none");
    EXPECT_EQ(mapped(cls, R"({"inner":5})"), "none");
    const auto value = u"B"_ns; // a model that failed keeps nothing
    const id inner = dictionaryOf({{u"b"_ns, value}});
    const auto owners = value.use_count();
    EXPECT_EQ(qn::modelWithDictionary(cls, dictionaryOf({{u"inner"_ns, inner}})), nullptr);
    EXPECT_EQ(value.use_count(), owners);
}

TEST(ModelMapping, hooksAreCheckedWhenDeclared) {
    const auto refusal = [](const std::function<void(Class)> &declare) {
        return complaint([&] { lettersWith("RefusedLetters", declare); });
    };
    EXPECT_EQ(
        refusal([](Class made) { runtime::addMethod<&judged>(made, "modelCustomPropertyMapper"); }),
        "NSInvalidArgumentException class RefusedLetters: modelCustomPropertyMapper has to be an operation "
        "of the class object with the types @16@0:8, not of instances with B40@0:8^v16:24@32");
    EXPECT_NE(refusal(classHook<&replaced>("modelCustomTransformFromDictionary:")), "");
    EXPECT_NE(refusal(classHook<&someNames>("modelCustomClassForDictionary:")), "");
    const auto allowed = [](Class made) {
        ClassBuilder<Letters>(made).implement<qn::hooks::modelPropertyBlacklist, &oneName>();
    };
    EXPECT_EQ(refusal(allowed), "");
    EXPECT_EQ(mapped(objc_getClass("RefusedLetters"), R"({"a":"A","b":"B"})"), "b=B");
}

TEST(ModelMapping, classesMadeAfterTheirNamesWereMet) {
    const Class cls = lettersWith("EarlyLetters", [](Class made) {
        class_addProperty(made, "later", {{"T", "@\"LateLetters\""}, {"G", "child"}, {"S", "setChild:"}});
        ClassBuilder<Letters>(made).property<&Letters::children>("list", "", {"LateLetters"});
    });
    const auto json = string(R"({"later":{"a":"A"},"list":[{"a":"A"}]})");
    const auto before = as<Letters>(qn::modelWithJSON(cls, json));
    EXPECT_TRUE(!before->child && joined(before->children) == "{\n    a = A;\n}");
    const Class late = lettersWith("LateLetters", nullptr);
    const auto after = as<Letters>(qn::modelWithJSON(cls, json));
    EXPECT_TRUE(after->child->isMemberOfClass(late));
    EXPECT_TRUE(after->children->firstObject()->isMemberOfClass(late));
}

TEST(ModelMapping, classesForDictionaries) {
    const Class other = lettersWith("OtherLetters", [](Class) {});
    const Class cls = lettersWith("CustomLetters", [](Class made) {
        runtime::addMethod<&classFor>(made->metaClass(), "modelCustomClassForDictionary:");
        runtime::addMethod<&genericClasses>(made->metaClass(), "modelContainerPropertyGenericClass");
    });
    const auto model = as<Letters>(qn::modelWithJSON(
        cls, string(R"({"children":[{"class":"OtherLetters"},{"class":"?"},{"class":"NSNumber"},5]})")));
    ASSERT_EQ(model->children->count(), 2u);
    EXPECT_EQ(model->children->objectAtIndex(0)->isa(), other);
    EXPECT_EQ(model->children->objectAtIndex(1)->isa(), cls);
    EXPECT_EQ(qn::modelWithJSON(cls, string(R"({"class":"Letters"})"))->isa(), Letters::class_());

    const auto array = qn::modelArrayWithClass(cls, id(string(R"([{"a":"1"},7,{"class":"NSString"}])")));
    EXPECT_EQ(array->count(), 1u);
    const auto byName = qn::modelDictionaryWithClass(cls, id(string(R"({"k":{"a":"1"},"l":7})")));
    EXPECT_EQ(as<Letters>(byName->objectForKey(u"k"_ns))->values(), "a=1");
    EXPECT_EQ(byName->count(), 1u);
    EXPECT_EQ(qn::modelArrayWithClass(cls, id(u"{}"_ns)), nullptr);
    EXPECT_EQ(qn::modelArrayWithClass(nullptr, NSArray::array()), nullptr);
    EXPECT_EQ(qn::modelDictionaryWithClass(cls, id(u"[]"_ns)), nullptr);
}

TEST(ModelMapping, nestedModelsAreFilledInPlaceOrMade) {
    const auto model = qn::modelWithJSON<Letters>(string(R"({"child":{"a":"A","child":{"b":"B"}}})"));
    const auto child = model->child;
    EXPECT_EQ(child->child->values(), "b=B");
    EXPECT_TRUE(qn::modelSetWithJSON(model, string(R"({"child":{"b":"B"}})")));
    EXPECT_EQ(model->child, child);
    EXPECT_EQ(child->values(), "a=A b=B");
    EXPECT_EQ(child.use_count(), 2);
    EXPECT_TRUE(qn::modelSetWithJSON(model, string(R"({"child":null})")));
    EXPECT_EQ(child.use_count(), 1);
}

TEST(ModelMapping, nestingHasAnEnd) {
    id innermost = NSDictionary::dictionary();
    for (int level = 0; level < 10000; ++level)
        innermost = dictionaryOf({{u"child"_ns, innermost}});
    int depth = 0;
    for (auto model = qn::modelWithDictionary<Letters>(innermost); model; model = model->child)
        ++depth;
    EXPECT_EQ(depth, deepestVisits);
    // Unwinds level by level: to let go of it at once would take a frame a level.
    for (auto outer = as<NSDictionary>(std::exchange(innermost, nullptr)); outer;)
        outer = as<NSDictionary>(outer->objectForKey(u"child"_ns));

    const auto cycle = NSMutableDictionary::dictionary();
    cycle->setObject(cycle, u"child"_ns);
    cycle->setObject(arrayOf({cycle, cycle, cycle}), u"children"_ns);
    cycle->setObject(u"A"_ns, u"a"_ns);
    const auto model = qn::modelWithDictionary<Letters>(cycle);
    EXPECT_EQ(model->values() + (model->child ? "child" : ""), "a=A");
    cycle->removeAllObjects();
}

TEST(ModelMapping, settersMayChangeTheDictionary) {
    static auto &source = *new Ref<NSMutableDictionary>(NSMutableDictionary::dictionary());
    const Class cls = lettersWith("MeddlingLetters", [](Class made) {
        class_addMethod(
            made, "setA:"_sel, +[](NSObject *, SEL, const id &) { source->removeAllObjects(); });
    });
    source->setObject(u"x"_ns, u"a"_ns);
    source->setObject(u"y"_ns, u"b"_ns);
    EXPECT_EQ(as<Letters>(qn::modelWithDictionary(cls, source))->values(), "b=y");
    EXPECT_EQ(source->count(), 0u);
}

TEST(ModelMeta, isKeptUntilTheClassIsMarked) {
    const Class cls = lettersWith("MarkedLetters", nullptr);
    EXPECT_EQ(_QNModelMeta::metaWithClass(nullptr), nullptr);
    EXPECT_EQ(_QNModelMeta::initWithClass(nullptr), nullptr);
    const auto meta = _QNModelMeta::metaWithClass(cls);
    EXPECT_EQ(_QNModelMeta::metaWithClass(cls), meta);
    EXPECT_EQ(mapped(cls, R"({"late":"L"})"), "");

    class_addProperty(cls, "late", {{"T", "@\"NSString\""}, {"G", "b"}, {"S", "setB:"}});
    class_addProperty(cls, "wrong", {{"T", "i"}, {"G", "b"}, {"S", "setB:"}}); // accessors of another type
    EXPECT_EQ(mapped(cls, R"({"late":"L"})"), "");
    meta->_classInfo->setNeedUpdate();
    EXPECT_EQ(mapped(cls, R"({"late":"L","wrong":1})"), "b=L");
    EXPECT_NE(_QNModelMeta::metaWithClass(cls), meta);
    EXPECT_EQ(_QNModelMeta::metaWithClass(cls), _QNModelMeta::metaWithClass(cls));
}

TEST(ModelMeta, threadsMapAClassThatIsMarkedMeanwhile) {
    const Class cls = lettersWith("BusyLetters", nullptr);
    const auto knows = [&](const std::string &property) {
        return _QNModelMeta::metaWithClass(cls)->headForKey(string(property)) != nullptr;
    };
    const auto info = _QNModelMeta::metaWithClass(cls)->_classInfo;
    dispatch::onThreads(3, [&](int thread) {
        for (int round = 0; round < 200; ++round)
            if (thread == 0) {
                const std::string late = "late" + std::to_string(round);
                class_addProperty(cls, late, {{"T", "@\"NSString\""}, {"G", "b"}, {"S", "setB:"}});
                info->setNeedUpdate();
                EXPECT_TRUE(knows(late)) << "who marks sees what is new at once";
            } else
                EXPECT_EQ(mapped(cls, R"({"a":"A","child":{"b":"B"}})"), "a=A");
    });
    EXPECT_TRUE(knows("late199")) << "whoever stored a record last";
}

TEST(ModelMeta, oneThatWasBegunBeforeAMarkDoesNotStay) {
    const Class cls =
        lettersWith("OvertakenLetters", classHook<&overtakingMapper>("modelCustomPropertyMapper"));
    overtaken = cls;
    _QNModelMeta::metaWithClass(cls);
    EXPECT_TRUE(!overtaken && _QNModelMeta::metaWithClass(cls)->headForKey(u"late"_ns));
}
