// Qt's event loop drives the main run loop.
#include "Platform/Interface/RunLoopBridge.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSTimer/NSTimer+QNCommon.h"
#include "Tests/Support/QtTesting.h"

namespace {

class Events : public QObject {
public:
    int delivered = 0;
    bool eventFilter(QObject *, QEvent *) override {
        ++delivered;
        return false;
    }
};

class RunLoopBridgeTest : public testing::Test {
protected:
    Ref<NSTimer> timer(double seconds, NSRunLoopMode inMode, const std::string &name) {
        const auto made = qn::timerWithTimeInterval(
            seconds, makeBlock<void(const Ref<NSTimer> &)>([this, name](const Ref<NSTimer> &) {
                events.push_back(name);
            }),
            true);
        NSRunLoop::mainRunLoop()->addTimer(made, inMode);
        return made;
    }
    std::vector<std::string> takeEvents() {
        QtTesting::settle();
        return std::exchange(events, {});
    }

    using Names = std::vector<std::string>;
    QtTesting qt;
    NSRunLoopMode mode = NSDefaultRunLoopMode;
    RunLoopBridge bridge{[this] { return mode; }};
    Names events;
};

} // namespace

TEST_F(RunLoopBridgeTest, servesTimersOfTheModeThatIsOn) {
    const auto common = timer(2, NSRunLoopCommonModes, "both");
    const auto usual = timer(1, NSDefaultRunLoopMode, "default");
    const auto modal = timer(1, NSModalPanelRunLoopMode, "modal");
    EXPECT_EQ(takeEvents(), Names{});
    qt.advance(1s);
    EXPECT_EQ(takeEvents(), Names{"default"});
    mode = NSModalPanelRunLoopMode;
    bridge.wake();
    EXPECT_EQ(takeEvents(), Names{"modal"}) << "it fell due before its mode was on";
    qt.advance(4s);
    EXPECT_EQ(takeEvents(), (Names{"both", "modal"})) << "dates it was too late for are skipped";
    for (const auto &one : {common, usual, modal})
        one->invalidate();
    qt.advance(9s);
    EXPECT_EQ(takeEvents(), Names{});
}

TEST_F(RunLoopBridgeTest, servesTheMainQueueBetweenQtsOwnEvents) {
    EXPECT_TRUE(QtTesting::eventually([&] {
        QtTesting::settle();
        return !dispatch::mainQueue().hasWork();
    }));
    std::thread([this] {
        dispatch::mainQueue().async([this] {
            events.push_back("block");
            QMetaObject::invokeMethod(
                &bridge, [this] { events.push_back("Qt"); }, Qt::QueuedConnection);
            dispatch::mainQueue().async([this] { events.push_back("block of the block"); });
        });
    }).join();
    EXPECT_EQ(takeEvents(), (Names{"block", "Qt", "block of the block"}));

    std::thread waiting([this] { dispatch::mainQueue().sync([this] { events.push_back("synchronous"); }); });
    EXPECT_TRUE(QtTesting::eventually([this] { return !events.empty(); }));
    waiting.join();
}

TEST_F(RunLoopBridgeTest, sleepsWhileNothingIsDue) {
    const auto hourly = timer(3600, NSDefaultRunLoopMode, "hourly");
    EXPECT_EQ(takeEvents(), Names{});
    Events seen;
    bridge.installEventFilter(&seen);
    for (int minute = 1; minute < 60; ++minute) {
        qt.clock.advance(1min);
        QtTesting::settle();
    }
    EXPECT_EQ(seen.delivered, 0);
    for (int i = 0; i < 100; ++i)
        bridge.wake();
    QtTesting::settle();
    EXPECT_EQ(seen.delivered, 1) << "wakes are merged";
    qt.advance(1min);
    EXPECT_EQ(takeEvents(), Names{"hourly"});
    EXPECT_LE(seen.delivered, 3);
    hourly->invalidate();
}
