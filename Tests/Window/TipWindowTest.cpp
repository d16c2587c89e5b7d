// The tip window and the controller that ends its runs.
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"
#include "Tests/Window/WindowTesting.h"

#include <QKeyEvent>
#include <QTimer>

TEST_F(WindowTest, theTipIsCentredOverItsParent) {
    open();
    tip->setMsgText(u"Text"_ns);
    const QRectF parents[] = {
        {100, 200, 800, 600}, {0, 0, 10, 10}, {-500, -300, 1024.5, 768.5}, {7, 7, 0, 0}, {}};
    for (const QRectF &parent : parents) {
        tip->setParentFrame(parent);
        tip->center();
        EXPECT_NEAR(tip->x(), parent.center().x() - tip->width() / 2.0, 0.5);
        EXPECT_NEAR(tip->y(), parent.center().y() - tip->height() / 2.0, 0.5);
    }
    EXPECT_LT(tip->x(), 0) << "without a window its centre is at the origin of the screen";

    window->setGeometry(150, 120, 700, 500);
    addQueue("Laser", laserUri);
    QRect place;
    tipsDuring([&] {
        auto *const look = new QTimer(tip);
        QObject::connect(look, &QTimer::timeout, [&] {
            if (tip->isVisible())
                place = tip->geometry();
        });
        look->start(0);
        table->selectRow(0);
    });
    EXPECT_LE((place.center() - window->frameGeometry().center()).manhattanLength(), 2)
        << "over the main window, whenever it is run";
}

TEST_F(WindowTest, theTipShowsItsIndicatorAndStays) {
    open();
    auto *const indicator = part<QProgressBar>("tipProgress");
    for (const bool hidden : {true, false}) {
        tip->setProIndicator(hidden);
        EXPECT_EQ(indicator->isHidden(), hidden);
        EXPECT_EQ(std::pair(indicator->minimum(), indicator->maximum()), std::pair(0, 0)) << "indeterminate";
    }
    tip->setMsgText(nullptr);
    EXPECT_EQ(part<QLabel>("message")->text(), QString());

    tip->show();
    tip->close();
    EXPECT_TRUE(tip->isVisible()) << "only the timer ends a tip";
    for (const int key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(tip, &press);
        EXPECT_TRUE(tip->isVisible());
    }
    tip->setStopModalState();
    EXPECT_FALSE(tip->isVisible()) << "no run to stop: only hidden";
    EXPECT_EQ(logged("---------setStopModalState"), 1);
}

TEST_F(WindowTest, theTipsParentFrameIsReadWhole) {
    open();
    std::atomic<bool> done = false;
    std::atomic<int> torn = 0;
    std::vector<std::thread> threads;
    for (int writer = 1; writer <= 2; ++writer)
        threads.emplace_back([&, writer] {
            for (double i = writer; !done; i += 2)
                tip->setParentFrame({i, i, i, i});
        });
    for (int i = 0; i < 100'000; ++i) {
        const QRectF frame = tip->parentFrame();
        torn += frame.x() != frame.y() || frame.y() != frame.width() || frame.width() != frame.height();
    }
    done = true;
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(torn, 0);
}

TEST(UtilityControllerTest, isOneByEveryRoad) {
    const auto controller = UtilityController::shareInstance();
    EXPECT_EQ(UtilityController::allocWithZone(), controller);
    EXPECT_EQ(controller->copy(), controller);
    EXPECT_EQ(class_createInstance(UtilityController::class_()), controller);
    EXPECT_THROW(controller->mutableCopy(), NSException);
}

TEST_F(WindowTest, theTimerEndsTheRunAndDisarmsItself) {
    open();
    const auto controller = UtilityController::shareInstance();
    const auto stops = [&] { return logged("---------setStopModalState"); };
    controller->startRefreshTimer(3);
    qt.elapse(2999ms);
    EXPECT_EQ(stops(), 0);
    for (int i = 0; i < 3; ++i) {
        qt.elapse(3s);
        EXPECT_EQ(stops(), 1);
    }
    EXPECT_EQ(interface->delegate->tipWindow(), tip);
    interface->delegate->setTipWindow(nullptr);
    controller->startRefreshTimer(1);
    qt.elapse(10s);
    EXPECT_EQ(stops(), 1) << "without a tip window it is only disarmed";
    interface->delegate->setTipWindow(tip);
    qt.elapse(10s);
    EXPECT_EQ(stops(), 1);
}
