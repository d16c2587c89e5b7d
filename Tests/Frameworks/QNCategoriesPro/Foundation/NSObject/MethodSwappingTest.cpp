#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+MethodSwapping.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"
#include "Platform/Runtime/Object/Message.h"
#include "Platform/Runtime/Reflection/Reflection.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

#include <set>
#include <thread>

using testing::AllOf;

namespace {

class Bell : public NSObject {
    NS_CLASS(Bell, NSObject)
public:
    Ref<NSString> ring() { return u"ding"_ns; }
    Ref<NSString> loudRing() { return NSString::stringWithFormat("%s!", sound("loudRing").c_str()); }
    Ref<NSString> strike() { return u"dong"_ns; }
    Ref<NSString> hum() { return u"mmm"_ns; }
    bool crack(std::int32_t width) { return width > 0; }
    static Ref<NSString> maker() { return u"foundry"_ns; }
    static Ref<NSString> owner() { return u"church"_ns; }

    std::string sound(const char *selector) {
        return text(objc_msgSend<id>(self(), sel_registerName(selector)));
    }

    Ref<NSString> note;
    void setNote(const Ref<NSString> &text) { note = text; }
    void setLowNote(const Ref<NSString> &text) {
        note = NSString::stringWithFormat("low %s", text->utf8().c_str());
    }
};
NS_IMPLEMENTATION(Bell) {
    cls.property<&Bell::note>("note", "N")
        .method<&Bell::setNote>("setNote:")
        .method<&Bell::setLowNote>("setLowNote:")
        .method<&Bell::ring>("ring")
        .method<&Bell::loudRing>("loudRing")
        .method<&Bell::strike>("strike")
        .method<&Bell::hum>("hum")
        .method<&Bell::crack>("crack:")
        .classMethod<&Bell::maker>("maker")
        .classMethod<&Bell::owner>("owner");
}

class HandBell : public Bell {
    NS_CLASS(HandBell, Bell)
public:
    Ref<NSString> shake() { return u"tinkle"_ns; }
};
NS_IMPLEMENTATION(HandBell) {
    cls.method<&HandBell::shake>("shake");
}

class SmallHandBell : public HandBell {
    NS_CLASS(SmallHandBell, HandBell)
};
NS_IMPLEMENTATION(SmallHandBell) {}

class DoorBell : public Bell {
    NS_CLASS(DoorBell, Bell)
};
NS_IMPLEMENTATION(DoorBell) {}

template <class T>
std::string sounds() {
    const auto bell = make<T>();
    return bell->sound("ring") + " " + bell->sound("strike") + " " + bell->sound("hum");
}

} // namespace

TEST(MethodSwapping, theManualsExample) {
    const auto bell = make<Bell>();
    {
        const auto swap = qn::swapMethods<Bell>("ring"_sel, "loudRing"_sel);
        EXPECT_EQ(text(objc_msgSend<id>(bell, "ring"_sel)), "ding!");
    }
    EXPECT_EQ(text(objc_msgSend<id>(bell, "ring"_sel)), "ding");
}

TEST(MethodSwapping, ofInheritedMethodsConcernsTheClassAlone) {
    auto swap = qn::swapMethods<HandBell>("ring"_sel, "shake"_sel);
    EXPECT_EQ(sounds<HandBell>(), "tinkle dong mmm");
    EXPECT_EQ(make<HandBell>()->sound("shake"), "ding");
    EXPECT_EQ(sounds<SmallHandBell>(), "tinkle dong mmm") << "inherited";
    EXPECT_EQ(sounds<Bell>() + ", " + sounds<DoorBell>(), "ding dong mmm, ding dong mmm");
    swap.undo();
    EXPECT_EQ(sounds<HandBell>(), "ding dong mmm");
    const auto above = qn::swapMethods<Bell>("ring"_sel, "hum"_sel);
    EXPECT_EQ(sounds<HandBell>(), "mmm dong ding") << "it inherits again";
    auto both = qn::swapMethods<DoorBell>("ring"_sel, "strike"_sel);
    both = qn::swapMethods<DoorBell>("strike"_sel, "hum"_sel); // and the one before is undone
    EXPECT_EQ(sounds<DoorBell>(), "mmm ding dong");
}

TEST(MethodSwapping, ofTheClassObject) {
    const auto maker = [](Class cls) { return text(objc_msgSend<id>(cls->self(), "maker"_sel)); };
    const auto swap = qn::swapClassMethods<DoorBell>("maker"_sel, "owner"_sel);
    EXPECT_EQ(maker(DoorBell::class_()) + " " + maker(Bell::class_()), "church foundry");
}

TEST(MethodSwapping, isRefusedForWhatCannotBeExchanged) {
    const auto refusal = [](const char *first, const char *second) {
        return complaint(
            [&] { return qn::swapMethods<DoorBell>(sel_registerName(first), sel_registerName(second)); });
    };
    EXPECT_THAT(refusal("ring", "crack:"),
                AllOf(HasSubstr(NSInvalidArgumentException), HasSubstr("DoorBell: ring and crack:"),
                      HasSubstr("@16@0:8 and B20@0:8i16")));
    EXPECT_THAT(refusal("ring", "polish"), HasSubstr("no polish"));
    EXPECT_THAT(refusal("ring", "ring"), HasSubstr("the same"));
    EXPECT_EQ(raised([] { return qn::swapMethods<Bell>("ring"_sel, nullptr); }), NSInvalidArgumentException);
    EXPECT_TRUE(DoorBell::class_()->methods().empty()) << "and nothing has changed";
    qn::swapMethods(nullptr, "ring"_sel, "hum"_sel).undo();
}

TEST(MethodSwapping, isUndoneInAnyOrder) {
    const char *const names[] = {"ring", "strike", "hum", "shake"}; // three of them inherited
    const char *const originals[] = {"ding", "dong", "mmm", "tinkle"};
    struct Made {
        std::size_t first, second;
        qn::MethodSwap swap;
    };
    std::vector<Made> made;
    std::set<Method> met;
    Random random(1);
    const auto bell = make<HandBell>();
    for (int step = 0; step < 2000; ++step) {
        if (made.empty() || (made.size() < 5 && random.below(2))) {
            const std::size_t first = random.below(4), second = (first + 1 + random.below(3)) % 4;
            made.push_back(
                {first, second,
                 qn::swapMethods<HandBell>(sel_registerName(names[first]), sel_registerName(names[second]))});
        } else
            made.erase(made.begin() + static_cast<std::ptrdiff_t>(random.below(made.size())));
        std::size_t expected[] = {0, 1, 2, 3};
        for (const Made &each : made)
            std::swap(expected[each.first], expected[each.second]);
        for (std::size_t i = 0; i < 4; ++i) {
            ASSERT_EQ(bell->sound(names[i]), originals[expected[i]]);
            met.insert(HandBell::class_()->findMethod(sel_registerName(names[i])));
        }
    }
    EXPECT_LE(met.size(), 20u) << "methods are used again, however often they are exchanged";
    made.clear();
    EXPECT_EQ(HandBell::class_()->methods().size(), 1u);
}

TEST(MethodSwapping, leavesMethodsThatAreAddedMeanwhile) {
    const Class cls = objc_registerSubclass<Bell>("GardenBell");
    auto swap = qn::swapMethods(cls, "ring"_sel, "hum"_sel);
    EXPECT_FALSE(class_addMethod(
        cls, "ring"_sel, +[](NSObject *, SEL) { return id(); }))
        << "the class has one, for the swap";
    for (const char *name : {"one", "two", "three", "four", "five"})
        EXPECT_TRUE(class_addMethod(
            cls, sel_registerName(name), +[](NSObject *, SEL) { return id(u"added"_ns); }));
    swap.undo();
    const id bell = class_createInstance(cls);
    EXPECT_EQ(text(objc_msgSend<id>(bell, "five"_sel)) + text(objc_msgSend<id>(bell, "ring"_sel)),
              "addedding");
    qn::swapMethods(cls, "one"_sel, "hum"_sel).keep();
    EXPECT_EQ(text(objc_msgSend<id>(bell, "hum"_sel)), "added");
}

TEST(MethodSwapping, isNoticedByTheModelMapping) {
    const auto json = u"{\"note\": \"C\"}"_ns;
    EXPECT_EQ(text(qn::modelWithJSON<SmallHandBell>(json)->note), "C");
    const auto swap = qn::swapMethods<Bell>("setNote:"_sel, "setLowNote:"_sel);
    EXPECT_EQ(text(qn::modelWithJSON<SmallHandBell>(json)->note), "low C");
}

TEST(MethodSwapping, showsSendersBothMethodsOrNone) {
    const id bell = make<DoorBell>();
    const auto isExchanged = [&](SEL selector, const char *original) {
        return text(objc_msgSend<id>(bell, selector)) != original;
    };
    for (int round = 0; round < 100; ++round) {
        std::atomic<bool> ready = false;
        std::jthread sender([&] {
            for (bool isDone = false; !isDone; ready = true) {
                const bool ring = isExchanged("ring"_sel, "ding"), hum = isExchanged("hum"_sel, "mmm");
                isDone = isExchanged("ring"_sel, "ding");
                EXPECT_LE(ring, hum) << "the second one lagged behind";
                EXPECT_LE(hum, isDone) << "the first one lagged behind";
            }
        });
        while (!ready)
            std::this_thread::yield();
        const auto swap = qn::swapMethods<DoorBell>("ring"_sel, "hum"_sel);
        sender.join();
    }
}
