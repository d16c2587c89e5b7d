#include "Platform/Runtime/Object/Message.h"
#include "Platform/Runtime/Object/NSBlock.h"
#include "Platform/Runtime/Object/ObjectPool.h"
#include "Platform/Runtime/Reflection/Reflection.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Testing.h"

#include <malloc.h>

namespace {

class Instrument : public NSObject {
    NS_CLASS(Instrument, NSObject)
public:
    virtual std::int32_t strings() const { return 0; }
    std::int32_t tune(std::int32_t steps) { return pitch += steps; }
    void setLabel(const Ref<NSString> &text) { label = text; }
    id echo(const id &object) { return object; }
    Ref<NSString> kind() const { return u"instrument"_ns; }
    long useCount() { return weak_from_this().use_count(); }
    static std::int32_t count() { return 7; }

    std::int32_t pitch = 0;
    Ref<NSString> label;
};
NS_IMPLEMENTATION(Instrument) {
    cls.method<&Instrument::strings>("strings")
        .method<&Instrument::tune>("tune:")
        .method<&Instrument::setLabel>("setLabel:")
        .method<&Instrument::echo>("echo:")
        .method<&Instrument::kind>("kind")
        .method<&Instrument::useCount>("useCount")
        .classMethod<&Instrument::count>("count");
}

class Violin : public Instrument {
    NS_CLASS(Violin, Instrument)
public:
    std::int32_t strings() const override { return 4; }
    Ref<NSString> kindOfViolin() const { return u"violin"_ns; }
};
NS_IMPLEMENTATION(Violin) {
    cls.method<&Violin::kindOfViolin>("kind");
}

const Class early = objc_getClass("Unused");

class Unused : public Violin {
    NS_CLASS(Unused, Violin)
};
NS_IMPLEMENTATION(Unused) {}

namespace first {
class Twin : public NSObject {
    NS_CLASS(Twin, NSObject)
};
NS_IMPLEMENTATION(Twin) {}
} // namespace first
namespace second {
class Twin : public NSObject {
    NS_CLASS(Twin, NSObject)
};
NS_IMPLEMENTATION(Twin) {}
} // namespace second

template <std::int32_t answer>
bool addAnswer(Class cls, SEL selector) {
    return class_addMethod(
        cls, selector, +[](NSObject *, SEL) { return answer; });
}

} // namespace

TEST(Class, hierarchyOfClassesAndMetaClasses) {
    const Class root = NSObject::class_(), violin = Violin::class_();
    EXPECT_EQ(root->metaClass()->superclass(), root) << "class objects are objects";
    EXPECT_EQ(violin->isa(), violin->metaClass());
    EXPECT_EQ(root->metaClass()->isa(), root->metaClass());

    const id object = make<Violin>(), asObject = violin->self();
    EXPECT_TRUE(object->isMemberOfClass(violin) && object->isKindOfClass(Instrument::class_()));
    EXPECT_FALSE(object->isMemberOfClass(Instrument::class_()) || object->isKindOfClass(NSString::class_()));
    EXPECT_FALSE(object->isKindOfClass(nullptr));
    EXPECT_TRUE(asObject->isKindOfClass(Instrument::class_()->metaClass()) && asObject->isKindOfClass(root));
    EXPECT_FALSE(asObject->isKindOfClass(Instrument::class_()));
    EXPECT_EQ(asObject->description()->utf8(), "Violin");
    EXPECT_EQ(asObject->copy(), asObject);
}

TEST(Class, isFoundByNameAndMakesInstances) {
    EXPECT_EQ(sel_registerName(std::string("tu") + "ne:"), "tune:"_sel) << "selectors are interned";
    EXPECT_NE("tune"_sel, "tune:"_sel);
    EXPECT_STREQ(class_getName(early), "Unused") << "before its file was initialised";
    EXPECT_EQ(objc_getClass("Violin"), Violin::class_());
    EXPECT_EQ(objc_getClass("NSObject"), NSObject::class_());
    EXPECT_EQ(objc_getClass("violin"), nullptr);
    const std::string twins = "NSInvalidArgumentException two classes of the program are named Twin";
    EXPECT_EQ(complaint([] { objc_getClass("Twin"); }), twins);
    EXPECT_EQ(runtime::findForeignClass("Twin"), nullptr);
    EXPECT_EQ(complaint([] { first::Twin::class_(); }), twins);
    EXPECT_EQ(complaint([] { second::Twin::class_(); }), twins);
    EXPECT_EQ(objc_registerSubclass<Violin>("Twin"), nullptr);

    EXPECT_EQ(class_createInstance(NSNull::class_()), NSNull::null());
    EXPECT_TRUE(as<NSMutableArray>(class_createInstance(NSMutableArray::class_())));
    EXPECT_EQ(class_createInstance(NSNumber::class_()), nullptr) << "needs a value";
    EXPECT_EQ(class_createInstance(nullptr), nullptr);
}

TEST(Selector, namesFromOutsideAreBounded) {
    EXPECT_EQ(runtime::findSelector("nobodyHasThis"), nullptr);
    EXPECT_EQ(runtime::registerForeignName("tune:"), "tune:"_sel);
    std::size_t bytes = 0;
    const auto name = [](std::size_t i) { return std::to_string(i) + std::string(1000, 'x'); };
    for (std::size_t i = 0; runtime::registerForeignName(name(i)); ++i)
        bytes += name(i).size();
    EXPECT_LE(bytes, runtime::foreignSelectorBytes);
    EXPECT_GT(bytes, runtime::foreignSelectorBytes / 2);
    EXPECT_EQ(runtime::registerForeignName(std::string(1000, 'y')), nullptr);
    EXPECT_EQ(runtime::registerForeignName(name(0)), runtime::findSelector(name(0))) << "known by now";
    EXPECT_TRUE(sel_registerName(std::string(1000, 'y'))) << "the program's own";
}

TEST(Class, rootObjectSpeaksForItself) {
    const id one = make<Violin>(), other = make<Violin>();
    EXPECT_TRUE(one->isEqual(one));
    EXPECT_FALSE(one->isEqual(other) || one->isEqual(nullptr));
    EXPECT_EQ(one->description()->utf8(), NSString::stringWithFormat("<Violin: %p>", one.get())->utf8());
    EXPECT_THAT(complaint([&] { one->copy(); }),
                StartsWith("NSInvalidArgumentException -[Violin copyWithZone:]"));
    EXPECT_THAT(complaint([&] { one->mutableCopy(); }),
                StartsWith("NSInvalidArgumentException -[Violin mutableCopyWithZone:]"));
}

TEST(TypeEncoding, ofMethods) {
    using runtime::methodEncoding;
    EXPECT_EQ((methodEncoding<std::int8_t, bool, std::int16_t, float, const id &, std::uint8_t, double>()),
              "c48@0:8B16s20f24@28C36d40");
    EXPECT_EQ((methodEncoding<char *, const char *, std::uint32_t, Class, std::uint64_t, SEL>()),
              "*52@0:8r*16I24#28Q36:44");
    std::vector<std::string> declared;
    for (const Method method : Instrument::class_()->methods())
        declared.push_back(std::string(sel_getName(method->name)) + " " + method->types);
    EXPECT_THAT(declared, ElementsAre("strings i16@0:8", "tune: i20@0:8i16", "setLabel: v24@0:8@16",
                                      "echo: @24@0:8@16", "kind @16@0:8", "useCount q16@0:8"));
}

TEST(Message, reachesInheritedAndOverriddenMethods) {
    const auto violin = make<Violin>();
    EXPECT_EQ(objc_msgSend<std::int32_t>(violin, "tune:"_sel, -5), -5);
    EXPECT_EQ(violin->pitch, -5);
    EXPECT_EQ(objc_msgSend<std::int32_t>(violin, "strings"_sel), 4) << "virtual in C++";
    EXPECT_EQ(text(objc_msgSend<id>(make<Instrument>(), "kind"_sel)), "instrument");
    EXPECT_EQ(text(objc_msgSend<id>(violin, "kind"_sel)), "violin") << "by selector";
    objc_msgSend(violin, "setLabel:"_sel, u"Guarneri"_ns);
    EXPECT_EQ(text(violin->label), "Guarneri");
    objc_msgSend(violin, "setLabel:"_sel, number(3));
    EXPECT_EQ(violin->label, nullptr) << "an object of another class arrives as none";

    const id asObject = Violin::class_()->self();
    EXPECT_EQ(objc_msgSend<std::int32_t>(asObject, "count"_sel), 7) << "inherited through the meta-classes";
    EXPECT_FALSE(violin->respondsToSelector("count"_sel));
    EXPECT_EQ(text(objc_msgSend<id>(asObject, "description"_sel)), "Violin");
}

TEST(Message, toNoneGivesNoneOrZero) {
    const id none;
    EXPECT_EQ(objc_msgSend<std::int32_t>(none, "tune:"_sel, 3), 0);
    EXPECT_EQ(objc_msgSend<double>(none, nullptr), 0.0);
    EXPECT_EQ(objc_msgSend<id>(none, "no such operation"_sel), nullptr);
    objc_msgSend(none, "setLabel:"_sel, none);
}

TEST(Message, refusesWhatTheReceiverDoesNotTake) {
    const id violin = make<Violin>(), asObject = Violin::class_()->self();
    const SEL tune = "tune:"_sel;
    const auto expect = [](const std::string &reason, const std::string &expected) {
        EXPECT_THAT(reason, StartsWith("NSInvalidArgumentException " + expected));
    };
    expect(complaint([&] { objc_msgSend(violin, "smash"_sel); }), "-[Violin smash]: unrecognized selector");
    expect(complaint([&] { objc_msgSend(asObject, tune, 3); }), "+[Violin tune:]: unrecognized selector");
    expect(complaint([&] { objc_msgSend(violin, nullptr); }), "-[Violin <null selector>]: unrecognized");
    for (const auto &reason : {complaint([&] { objc_msgSend<std::int32_t>(violin, tune, std::int64_t{3}); }),
                               complaint([&] { objc_msgSend<std::int32_t>(violin, tune); }),
                               complaint([&] { objc_msgSend<std::int32_t>(violin, tune, violin); }),
                               complaint([&] { objc_msgSend<std::uint32_t>(violin, tune, 3); })})
        expect(reason, "-[Violin tune:]: sent with other types than i20@0:8i16");
    EXPECT_EQ(as<Violin>(violin)->pitch, 0);
}

TEST(Message, methodAddedAtRunTime) {
    const id violin = make<Violin>();
    const SEL selector = "addedLater"_sel;
    EXPECT_FALSE(violin->respondsToSelector(selector));
    EXPECT_TRUE(addAnswer<1>(Instrument::class_(), selector));
    EXPECT_EQ(objc_msgSend<std::int32_t>(violin, selector), 1) << "instances of subclasses have it";
    EXPECT_FALSE(addAnswer<2>(Instrument::class_(), selector));
    EXPECT_EQ(objc_msgSend<std::int32_t>(violin, selector), 1) << "and it stays";
    EXPECT_TRUE(addAnswer<3>(Violin::class_(), selector));
    EXPECT_EQ(objc_msgSend<std::int32_t>(violin, selector), 3);
    EXPECT_EQ(objc_msgSend<std::int32_t>(make<Instrument>(), selector), 1);
    EXPECT_FALSE(addAnswer<4>(nullptr, selector) || addAnswer<4>(Violin::class_(), nullptr));

    constexpr int additions = 200;
    std::atomic<int> added = 0;
    const auto name = [](int i) { return sel_registerName("concurrent" + std::to_string(i)); };
    std::thread writer([&] {
        for (; added < additions; ++added)
            addAnswer<5>(Violin::class_(), name(added));
    });
    for (int seen = 0; seen < additions; seen = added)
        EXPECT_EQ(objc_msgSend<std::int32_t>(seen ? violin : nullptr, name(seen - 1)), seen ? 5 : 0);
    writer.join();
}

TEST(Message, methodsAddedTakeWhatTheyAre) {
    constexpr int additions = 4000;
    const Class crowd = objc_registerSubclass<Violin>("Crowd");
    const auto name = [](int i) { return sel_registerName("crowded" + std::to_string(i)); };
    const auto inUse = [] { return mallinfo2().uordblks + mallinfo2().hblkhd; }; // 0 under sanitizers
    const auto before = inUse();
    for (int i = 0; i < additions; ++i)
        ASSERT_TRUE(addAnswer<6>(crowd, name(i)));
    EXPECT_LT(inUse(), before + additions * std::size_t{2000});
    const id one = class_createInstance(crowd);
    for (int i = 0; i < additions; ++i)
        ASSERT_EQ(objc_msgSend<std::int32_t>(one, name(i)), 6);
    EXPECT_FALSE(one->respondsToSelector(name(additions)));
}

TEST(Ownership, countsExactly) {
    auto violin = make<Violin>();
    id object = violin;
    EXPECT_EQ(violin.use_count(), 2) << "an upcast shares";
    object = *&object;
    EXPECT_EQ(violin.use_count(), 2) << "assigned to itself";
    Ref<Instrument> instrument = as<Instrument>(object);
    EXPECT_EQ(violin.use_count(), 3);
    EXPECT_TRUE(!as<NSString>(object) && !as<Violin>(nullptr) && !as<Violin>(make<Instrument>()));
    EXPECT_EQ(objc_msgSend<std::int64_t>(object, "useCount"_sel), 3) << "a send adds no owner";
    id echoed = objc_msgSend<id>(object, "echo:"_sel, object);
    EXPECT_EQ(violin.use_count(), 4) << "only the result is new";
    EXPECT_THROW(objc_msgSend(object, "smash"_sel), NSException);
    EXPECT_EQ(violin.use_count(), 4);

    const Weak<NSObject> weak = object;
    violin = nullptr, instrument = nullptr, echoed = nullptr;
    EXPECT_EQ(weak.lock(), object);
    object = nullptr;
    EXPECT_EQ(weak.lock(), nullptr);

    struct Ending final : Violin {
        explicit Ending(std::string &text) : seen(text) {}
        ~Ending() override {
            seen = complaint([&] { self(); });
        }
        std::string &seen;
    };
    std::string atEnd;
    make<Ending>(atEnd);
    EXPECT_THAT(atEnd, StartsWith("NSInvalidArgumentException -[Violin self]: nobody owns the object"));
}

TEST(Block, isAnObjectThatIsCalled) {
    const auto witness = std::make_shared<int>(40);
    auto block = makeBlock<int(std::unique_ptr<int>)>(
        [witness](std::unique_ptr<int> more) { return *witness + *more; });
    EXPECT_EQ((*block)(std::make_unique<int>(2)), 42);
    id object = block->copy();
    EXPECT_EQ(object, block) << "immutable: its copy is itself";
    EXPECT_TRUE(object->isKindOfClass(NSBlock::class_()));
    EXPECT_EQ(asBlock<int(std::unique_ptr<int>)>(object), block);
    EXPECT_TRUE(!asBlock<void(int)>(object) && !asBlock<int()>(make<Violin>()) && !asBlock<int()>(nullptr));
    block = nullptr;
    EXPECT_EQ(witness.use_count(), 2);
    object = nullptr;
    EXPECT_EQ(witness.use_count(), 1) << "what it captured goes with it";
}

TEST(ObjectPool, objectsOutliveItAndEndOnAnyThread) {
    std::vector<Ref<Instrument>> kept;
    {
        ObjectPool pool;
        for (std::int32_t i = 0; i < 1000; ++i) {
            const auto made = pool.make<Instrument>();
            made->pitch = i;
            made->setLabel(u"kept"_ns);
            if (i % 3 == 0)
                kept.push_back(made);
        }
    }
    for (std::size_t i = 0; i < kept.size(); ++i)
        ASSERT_EQ(kept[i]->pitch, static_cast<std::int32_t>(3 * i));
    std::vector<Ref<Instrument>> half(kept.begin() + 167, kept.end());
    kept.resize(167);
    std::thread([&half] { half.clear(); }).join();
    const Weak<Instrument> last = kept.back();
    kept.clear();
    EXPECT_TRUE(last.expired());
}
