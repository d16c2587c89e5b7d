// The window's own entry with a transport that never answers. What it does at its start is told by an
// argument:
//
//     scripted-window words      says its title and a label, and closes its window
//     scripted-window exchange   selects a printer, closes its window while the printer is still being read
//     scripted-window modal      the same, but during the status tip, once that is on the screen
#include "Classes/MainInterface.h"
#include "Classes/MyMainWindow.h"
#include "Classes/TipWindow.h"
#include "Classes/UtilityController.h"
#include "Platform/Dispatch/Queues/Semaphore.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/Interface/NSApplication.h"
#include "Platform/Interface/NSTableView.h"
#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Manager/ScriptedTransport.h"

#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <QWindow>

#include <cstdio>

namespace {

std::atomic<bool> reading = false;

void blockForEver(const std::string &call) {
    if (!call.starts_with("read"))
        return;
    reading = true;
    dispatch::Semaphore never(0);
    never.wait();
}

void attachLaser() {
    auto &transport = *new ScriptedTransport;
    transport.attachLaser();
    transport.onCall = blockForEver;
}

class Script : public QObject {
public:
    Script(MyMainWindow &window, const QString &name) : window_(window), name_(name) {
        if (name == QLatin1String("words"))
            QTimer::singleShot(0, this, [this] { sayWords(); });
        else
            startTimer(0);
    }

private:
    void sayWords() {
        std::printf("%s\n%s\n", qUtf8Printable(window_.windowTitle()),
                    qUtf8Printable(outlet<QLabel>(window_, "tips")->text()));
        window_.close();
    }

    void timerEvent(QTimerEvent *event) override {
        auto &table = *outlet<NSTableView>(window_, "scanResultsView");
        auto &tip = *outlet<TipWindow>(window_, "tipWindow");
        if (table.model()->rowCount() == 0 || (tip.isVisible() && !reading))
            return;
        if (reading && name_ == QLatin1String("modal")) {
            if (!tip.isVisible() || tip.windowHandle()->isExposed())
                close(event->timerId(), tip.isVisible() ? "modal" : "not modal");
            return;
        }
        if (reading && !tip.isVisible())
            return close(event->timerId(), "reading");
        if (reading) {
            clock_.advance(std::chrono::seconds(3)); // ends the status tip
            NSRunLoop::mainRunLoop()->wakeUp();
        } else if (table.selectedRow() == -1) {
            QMetaObject::invokeMethod(
                &table, [&table] { table.selectRow(0); }, Qt::QueuedConnection);
        }
    }

    void close(int timer, const char *state) {
        killTimer(timer);
        std::printf("%s\n", state);
        window_.close();
    }

    MyMainWindow &window_;
    const QString name_;
    dispatch::ManualClock clock_;
    const dispatch::ClockScope scope_{clock_};
};

} // namespace

void NSLoadMainInterface(NSApplication &application) {
    attachLaser();
    auto &interface = *new MainInterface(application);
    UtilityController::shareInstance()->printerNameArray()->addObject(queueEntry("Laser", sampleUri));
    interface.window->show();
    new Script(*interface.window, QCoreApplication::arguments().value(1));
}

int main(int argc, char **argv) {
    return NSApplicationMain(argc, argv);
}
