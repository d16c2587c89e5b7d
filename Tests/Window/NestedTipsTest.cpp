// A toner read that is rejected while the status tip is up: a second modal run of the one tip window.
#include "Tests/Manager/ScriptedTransport.h"
#include "Tests/Window/WindowTesting.h"

#include "Platform/Dispatch/Queues/Semaphore.h"

#include <QTimer>

namespace {

class NestedTipsTest : public WindowTest {
protected:
    NestedTipsTest() {
        transport.attachLaser();
        transport.reads = {{.status = TL_USB_ERROR_TIMEOUT},
                           {.bytes = {0x00, 0xAC, 0xFF, 0x21, 0, 2, 0, 1}}}; // refuses
        transport.onCall = [this](const std::string &call) {
            if (call.starts_with("open"))
                answer.wait();
        };
    }

    /// Takes a step, inside whichever modal run is the innermost then, once the condition holds.
    void when(const std::function<bool()> &condition, const std::function<void()> &step) {
        auto *const poll = new QTimer(window);
        QObject::connect(poll, &QTimer::timeout, poll, [=] {
            if (!condition())
                return;
            poll->stop();
            step();
        });
        poll->start(0);
    }
    long stops() { return logged("---------setStopModalState"); }
    /// Moves time by a second and serves what falls due; events of the runs under way included.
    void second() { qt.elapse(1s); }

    dispatch::Semaphore answer{0};
    ScriptedTransport transport;
};

} // namespace

TEST_F(NestedTipsTest, theFirstTimerEndsTheInnerRunAndThenTheOuter) {
    open();
    addQueue("Laser", laserUri);
    bool innerReturned = false;
    const auto insideInner = [&] {
        EXPECT_TRUE(part<QProgressBar>("tipProgress")->isHidden());
        second(); // 2
        EXPECT_EQ(stops(), 0);
        qt.advance(1s); // 3: ends this run
        innerReturned = true;
    };
    const auto insideOuter = [&] {
        second(); // 1: so the timers of the two runs are apart
        when([&] { return says("message") == words("Get Printer Toner"); }, insideInner);
        answer.signal();
        EXPECT_TRUE(QtTesting::eventually([&] { return innerReturned; }));
        EXPECT_EQ(stops(), 1) << "the first timer";
        EXPECT_FALSE(tip->isVisible());
        EXPECT_TRUE(application.isRunningModal()) << "the outer run";
        second(); // 4: when the second timer, disarmed by now, would have fired
        second(); // 5
        EXPECT_EQ(stops(), 1);
        EXPECT_TRUE(application.isRunningModal());
        qt.advance(1s); // 6: ends this one
    };
    when([&] { return says("message") == words("Get Printer Status"); }, insideOuter);
    table->selectRow(0);
    EXPECT_TRUE(QtTesting::eventually([&] { return innerReturned && !application.isRunningModal(); }));
    EXPECT_EQ(stops(), 2);
    EXPECT_FALSE(application.isRunningModal());
    for (int seconds = 7; seconds <= 12; ++seconds) {
        second();
        EXPECT_EQ(stops(), seconds / 3) << "the first timer goes on at its interval";
    }
    // Which also ends a later tip before its time.
    transport.infoText = R"({"printer_status": 0})";
    second();
    EXPECT_EQ(choose(0), (Tips{{"Printer Status Tip", Indicator::none, 2}}));
}
