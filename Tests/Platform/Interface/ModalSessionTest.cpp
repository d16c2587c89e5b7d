// Modal runs: their order, whom they keep input from, and how they end.
#include "Platform/Interface/ModalSession.h"

#include "Platform/Interface/NSApplication.h"
#include "Tests/Support/QtTesting.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

namespace {

/// A window with a button, an action with a shortcut, and a line to type in that has a mnemonic.
class Desk : public QWidget {
public:
    Desk() {
        auto *layout = new QVBoxLayout(this);
        for (QWidget *widget :
             {static_cast<QWidget *>(&button), static_cast<QWidget *>(&label), static_cast<QWidget *>(&line)})
            layout->addWidget(widget);
        label.setBuddy(&line);
        action.setShortcut(Qt::CTRL | Qt::Key_K);
        addAction(&action);
        connect(&button, &QPushButton::clicked, [this] { used += "button "; });
        connect(&action, &QAction::triggered, [this] { used += "action "; });
        show();
    }

    /// Which of the ways to use it work.
    std::string usable() {
        activateWindow();
        line.clear();
        used.clear();
        QTest::mouseClick(windowHandle(), Qt::LeftButton, {}, button.geometry().center());
        QTest::keyClick(windowHandle(), Qt::Key_K, Qt::ControlModifier);
        QTest::keyClick(windowHandle(), Qt::Key_L, Qt::AltModifier);
        used += focusWidget() == &line ? "mnemonic " : "";
        line.setFocus();
        QTest::keyClick(windowHandle(), Qt::Key_A);
        button.setFocus();
        return used + line.text().toStdString();
    }

    QPushButton button{QStringLiteral("OK")};
    QLabel label{QStringLiteral("&Line")};
    QLineEdit line;
    QAction action;
    std::string used;
};

class CenteredDialog : public QDialog, public NSCenteredWindow {
public:
    using QDialog::QDialog;
    void center() override {
        EXPECT_FALSE(isVisible() && centered == 0);
        ++centered;
    }
    int centered = 0;
};

class ModalSessionTest : public testing::Test {
protected:
    ModalSessionTest() : main(new Desk), other(new Desk) { QtTesting::settle(); }

    /// Does it inside the run that starts next.
    static void inside(const std::function<void()> &step) { QTimer::singleShot(0, qApp, step); }

    QtTesting qt;
    NSApplication application;
    const std::unique_ptr<Desk> main, other;
    std::vector<std::string> events;
};

} // namespace

TEST_F(ModalSessionTest, nestsAndEndsTheInnermost) {
    CenteredDialog outer(main.get()), inner(main.get());
    application.stopModal(); // no run: nothing
    EXPECT_EQ(application.runLoopMode(), NSDefaultRunLoopMode);
    inside([&] {
        EXPECT_EQ(application.runLoopMode(), NSModalPanelRunLoopMode);
        EXPECT_TRUE(outer.isVisible());
        inside([&] {
            inside([&] {
                events.push_back("same window again");
                application.stopModal();
            });
            application.runModalForWindow(outer);
            events.push_back("stop inner");
            EXPECT_TRUE(application.isRunningModal());
            application.stopModal();
            EXPECT_TRUE(application.isRunningModal()) << "the outer run";
        });
        application.runModalForWindow(inner);
        events.push_back("inner returned");
        EXPECT_TRUE(application.isRunningModal());
        EXPECT_TRUE(inner.isVisible()) << "to hide a window is its own business";
        EXPECT_EQ(main->usable(), "") << "until the outer run ends as well";
        application.stopModal();
        EXPECT_FALSE(application.isRunningModal());
    });
    application.runModalForWindow(outer);
    events.push_back("outer returned");
    EXPECT_EQ(events, (std::vector<std::string>{"same window again", "stop inner", "inner returned",
                                                "outer returned"}));
    EXPECT_EQ(application.runLoopMode(), NSDefaultRunLoopMode);
    EXPECT_EQ(outer.centered, 2);
    EXPECT_EQ(inner.centered, 1);
}

TEST_F(ModalSessionTest, keepsInputFromEveryOtherWindow) {
    const std::string allWays = "button action mnemonic a";
    EXPECT_EQ(main->usable(), allWays);
    QDialog tip(main.get());
    QPushButton ok(&tip);
    int pressed = 0;
    QObject::connect(&ok, &QPushButton::clicked, [&] { ++pressed; });
    inside([&] {
        EXPECT_EQ(main->usable(), "");
        EXPECT_EQ(other->usable(), "");
        tip.activateWindow();
        QTest::mouseClick(tip.windowHandle(), Qt::LeftButton, {}, ok.geometry().center());
        EXPECT_EQ(pressed, 1) << "the window that is run gets its input";
        tip.hide();
        EXPECT_EQ(main->usable(), "") << "nobody gets it while the window is hidden";
        EXPECT_EQ(other->usable(), "");
        application.stopModal();
    });
    application.runModalForWindow(tip);
    EXPECT_EQ(main->usable(), allWays);
    EXPECT_EQ(other->usable(), allWays);
}

TEST_F(ModalSessionTest, endsWithTheApplication) {
    QDialog tip(main.get());
    inside([&] {
        inside([&] {
            inside([] { QCoreApplication::exit(3); });
            application.runModalForWindow(tip);
            application.runModalForWindow(tip); // returns at once
            events.push_back("inner");
        });
        application.runModalForWindow(tip);
        events.push_back("outer");
        EXPECT_FALSE(application.isRunningModal());
    });
    EXPECT_EQ(application.run(), 3);
    EXPECT_EQ(events, (std::vector<std::string>{"inner", "outer"}));
}
