#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Invocation.h"
#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Foundation/Numbers/CGGeometry.h"
#include "Platform/Runtime/Object/Class.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/Ticker.h"

using testing::AllOf;

namespace {

class Lamp : public NSObject {
    NS_CLASS(Lamp, NSObject)
public:
    Ref<NSString> label(const Ref<NSString> &name, std::int16_t watts, bool isOn) {
        return NSString::stringWithFormat("%s %d %d", name ? name->utf8().c_str() : "-", watts, isOn);
    }
    std::uint8_t brightness() const { return brightness_; }
    void setBrightness(std::uint8_t value) {
        brightness_ = value;
        thread = std::this_thread::get_id();
    }
    double area(CGRect frame) const { return frame.size.width * frame.size.height; }
    CGSize size(double side) const { return {side, side}; }
    Class kind(Class cls) const { return cls; }
    void fail() { throw NSException(NSGenericException, "broken"); }

    std::atomic<std::thread::id> thread;

private:
    std::uint8_t brightness_ = 0;
};

NS_IMPLEMENTATION(Lamp) {
    cls.method<&Lamp::label>("label:watts:isOn:");
    cls.method<&Lamp::brightness>("brightness");
    cls.method<&Lamp::setBrightness>("setBrightness:");
    cls.method<&Lamp::area>("area:");
    cls.method<&Lamp::size>("size:");
    cls.method<&Lamp::kind>("kind:");
    cls.method<&Lamp::fail>("fail");
}

class InvocationTest : public OnManualClock {
protected:
    id perform(const std::string &selector, const std::vector<id> &arguments = {}) {
        return qn::performSelector(lamp, sel_registerName(selector), arguments);
    }
    std::string complaintOf(const std::string &selector, const std::vector<id> &arguments) {
        return complaint([&] { return perform(selector, arguments); });
    }

    const Ref<Lamp> lamp = make<Lamp>();
};

} // namespace

TEST_F(InvocationTest, theManualsExample) {
    const auto label = "label:watts:isOn:"_sel;
    EXPECT_EQ(text(qn::performSelector(lamp, label, {u"Desk"_ns, number(40), number(true)})), "Desk 40 1");
    EXPECT_EQ(text(qn::performSelector(lamp, label, {nullptr, number(7.9), number(0)})), "- 7 0");
}

TEST_F(InvocationTest, boxesWhateverCrosses) {
    EXPECT_EQ(perform("setBrightness:", {number(300)}), nullptr);
    EXPECT_EQ(typed(perform("brightness")), "C 44") << "narrowed as by NSNumber";
    const auto frame = NSValue::valueWith(CGRect{{1, 1}, {2, 3}});
    EXPECT_EQ(typed(perform("area:", {frame})), "d 6");
    EXPECT_EQ(as<NSValue>(perform("size:", {number(2)}))->getValue<CGSize>(), (CGSize{2, 2}));
    EXPECT_EQ(perform("kind:", {Lamp::class_()->self()}), Lamp::class_()->self());
    EXPECT_EQ(perform("kind:", {nullptr}), nullptr);
    EXPECT_EQ(qn::performSelector(nullptr, "brightness"_sel), nullptr);
    EXPECT_EQ(complaintOf("fail", {}), "NSGenericException broken");
}

TEST_F(InvocationTest, saysWhatDoesNotFitBeforeAnythingIsSent) {
    const std::tuple<std::string, std::vector<id>, const char *> table[] = {
        {"dim", {}, "unrecognized selector"},
        {"setBrightness:", {}, "takes 1 arguments, given 0"},
        {"brightness", {lamp}, "takes 0 arguments, given 1"},
        {"label:watts:isOn:",
         {u"Desk"_ns, number(40), u"yes"_ns},
         "argument 3 is of type \"B\", which an object of NSString"},
        {"setBrightness:", {nullptr}, "argument 1 is of type \"C\", which none does not fit"},
        {"area:", {NSValue::valueWith(CGSize{1, 1})}, "argument 1"},
        {"kind:", {u"Lamp"_ns}, "argument 1"}};
    for (const auto &[selector, arguments, fault] : table)
        EXPECT_THAT(complaintOf(selector, arguments),
                    AllOf(StartsWith(NSInvalidArgumentException), HasSubstr("-[Lamp " + selector + "]"),
                          HasSubstr(fault)));
    EXPECT_EQ(raised([&] { return qn::performSelectorInBackground(lamp, "dim"_sel), 0; }),
              NSInvalidArgumentException)
        << "on the thread of the caller";
}

TEST_F(InvocationTest, waitsForItsTimeAndThread) {
    const auto setBrightness = "setBrightness:"_sel;
    const auto timer = qn::performSelectorAfterDelay(lamp, setBrightness, {number(1)}, 2);
    qn::performSelectorAfterDelay(lamp, setBrightness, {number(9)}, 2)->invalidate();
    advanceAndRun(1999ms);
    EXPECT_EQ(lamp->brightness(), 0);
    advanceAndRun(1ms);
    EXPECT_EQ(lamp->brightness(), 1);
    EXPECT_FALSE(timer->isValid());

    qn::performSelectorOnMainThread(lamp, setBrightness, {number(2)});
    EXPECT_EQ(lamp->brightness(), 1) << "not within the call";
    dispatch::mainQueue().drain();
    EXPECT_EQ(lamp->brightness(), 2);

    id seen;
    std::thread worker([&] { seen = qn::performSelectorOnMainThreadAndWait(lamp, "brightness"_sel); });
    while (!dispatch::mainQueue().hasWork())
        std::this_thread::yield();
    dispatch::mainQueue().drain();
    worker.join();
    EXPECT_EQ(typed(seen), "C 2");

    const auto elsewhere = make<Lamp>();
    qn::performSelectorInBackground(elsewhere, setBrightness, {number(3)});
    qn::performSelectorOnQueue(dispatch::globalQueue(), lamp, setBrightness, {number(3)});
    awaitThat([&] {
        return elsewhere->thread.load() != std::thread::id() &&
               lamp->thread.load() != std::this_thread::get_id();
    });
    EXPECT_NE(elsewhere->thread.load(), std::this_thread::get_id());
}
