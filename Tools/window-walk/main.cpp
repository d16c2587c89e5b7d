// window-walk: drives the real window without a display and writes a picture of every step.
//
//     CUPS_SERVER=… ZKCOMTL_PRINTERS=… window-walk FOLDER [--dark]
//
// The pictures show the window as it starts, a printer being read, its threshold, another one chosen,
// confirmed and set, a printer that does not answer while an earlier one is bound, and a printer in the
// network. Time is moved by hand, so that tips end at once. With --dark the colours are those of a dark
// desktop, and the pictures' names end with "-dark". Exit status 1 when a step fails.
#include "Classes/AppDelegate.h"
#include "Classes/MainInterface.h"
#include "Classes/MyMainWindow.h"
#include "Classes/TipWindow.h"
#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Snapshot.h"
#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/Foundation/System/Localization.h"
#include "Platform/Interface/NSTableView.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QPainter>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <functional>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr qint64 patience_ms = 20000;
constexpr auto longerThanAnyTip = 4s;

class Walk {
public:
    Walk(dispatch::ManualClock &clock, MyMainWindow &window, TipWindow &tip, QString folder, QString suffix)
        : clock_(clock), window_(window), tip_(tip), folder_(std::move(folder)), suffix_(std::move(suffix)),
          table_(*outlet<NSTableView>(window, "scanResultsView")),
          choices_(*outlet<QComboBox>(window, "popUpBtns")),
          confirm_(*outlet<QPushButton>(window, "cofirmBtn")) {}

    void run() {
        waitUntil("the table to fill", [this] { return table_.model()->rowCount() > 0; });
        picture("1-start");
        duringTip("2-reading", [this] { return choices_.currentIndex() > 0; });
        select("Sample Laser at the desk");
        picture("3-threshold");
        choices_.setCurrentIndex(4);
        picture("4-chosen");
        duringTip("5-confirmed", [this] { return tip_.isVisible(); });
        confirm_.click();
        waitUntil("the outcome of the confirm button", [this] { return stepsLeft_ == 0; });
        picture("6-set");
        duringTip("7-not-ready", [this] { return tip_.isVisible(); });
        select("Büro — 打印机");
        picture("8-other-printer");
        select("Third floor");
        picture("9-network");
    }

private:
    void select(const char *name) {
        for (int row = 0; row < table_.model()->rowCount(); ++row)
            if (table_.textAt(row) == QString::fromUtf8(name)) {
                table_.selectRow(row);
                return waitUntil(name,
                                 [this] { return stepsLeft_ == 0 && !dispatch::mainQueue().hasWork(); });
            }
        fail("there is no queue \"" + std::string(name) + "\"");
    }

    /// Takes a picture during the next tip, once `ready`, and then ends the tip.
    void duringTip(const char *name, std::function<bool()> ready) {
        ++stepsLeft_;
        auto *poll = new QTimer(&window_);
        QObject::connect(poll, &QTimer::timeout, poll, [=, this, ready = std::move(ready)] {
            if (!tip_.isVisible() || !ready())
                return giveUpInTime(name);
            poll->deleteLater();
            poll->stop();
            picture(name);
            --stepsLeft_;
            clock_.advance(longerThanAnyTip);
            NSRunLoop::mainRunLoop()->wakeUp();
        });
        waiting_.start();
        poll->start(5);
    }

    void waitUntil(const char *what, const std::function<bool()> &ready) {
        waiting_.start();
        while (!ready() || tip_.isVisible()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
            giveUpInTime(what);
        }
    }

    void giveUpInTime(const char *what) const {
        if (waiting_.elapsed() > patience_ms)
            fail("waited in vain for " + std::string(what));
    }

    [[noreturn]] static void fail(const std::string &reason) {
        std::fprintf(stderr, "window-walk: %s\n", reason.c_str());
        std::fflush(nullptr);
        _exit(1);
    }

    void picture(const char *name) {
        QCoreApplication::processEvents();
        QImage picture = qn::snapshot(window_);
        if (tip_.isVisible())
            QPainter(&picture).drawImage(tip_.pos() - window_.pos(), qn::snapshot(tip_));
        const QString file = folder_ + "/" + name + suffix_ + ".png";
        if (!picture.save(file))
            fail("cannot write " + file.toStdString());
        std::printf("%s\n", qPrintable(file));
    }

    dispatch::ManualClock &clock_;
    MyMainWindow &window_;
    TipWindow &tip_;
    const QString folder_;
    const QString suffix_;
    NSTableView &table_;
    QComboBox &choices_;
    QPushButton &confirm_;
    QElapsedTimer waiting_;
    int stepsLeft_ = 0;
};

QPalette darkPalette() {
    QPalette colors(QColor(0x32, 0x32, 0x32)); // Qt derives the others from this
    colors.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
    colors.setColor(QPalette::Highlight, QColor(0x2A, 0x62, 0x9A));
    return colors;
}

} // namespace

int main(int argc, char **argv) {
    const bool dark = argc == 3 && argv[2] == std::string("--dark");
    if (argc < 2 || (argc > 2 && !dark) || !QFileInfo(QString::fromLocal8Bit(argv[1])).isDir()) {
        std::fputs("Usage: window-walk FOLDER [--dark]\n", stderr);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    NSLocalizationPrepare();
    dispatch::ManualClock clock;
    const dispatch::ClockScope scope(clock);
    const QApplication qtApplication(argc, argv);
    if (dark)
        QApplication::setPalette(darkPalette());
    NSApplication application;
    const MainInterface interface(application);
    interface.window->show();
    Walk(clock, *interface.window, *dynamic_cast<TipWindow *>(interface.delegate->tipWindow()),
         QString::fromLocal8Bit(argv[1]), QLatin1String(dark ? "-dark" : ""))
        .run();
    std::fflush(nullptr);
    _exit(0); // like the application, without waiting for other threads
}
