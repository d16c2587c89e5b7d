// The window for those who do not see it or do not use a mouse.
#include "Tests/Window/WindowTesting.h"

#include <QAccessible>
#include <QRegularExpression>
#include <QTest>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace {

std::vector<std::pair<QObject *, QString>> alerts;

void noteAlert(QAccessibleEvent *event) {
    if (event->type() == QAccessible::Alert)
        alerts.emplace_back(event->object(), event->accessibleInterface()->text(QAccessible::Name));
}

QAccessibleInterface &spoken(QWidget *widget) {
    return *QAccessible::queryAccessibleInterface(widget);
}

QString withoutMnemonic(QString text) {
    text.remove(QRegularExpression(QStringLiteral("\\(&.\\)|&")));
    return text;
}

} // namespace

TEST_F(WindowTest, isSpoken) {
    open();
    const struct {
        QWidget *widget;
        QAccessible::Role role;
        QString name, description;
    } rows[] = {
        {table, QAccessible::Table, words("Printer List"), words("No Print Service")},
        {popUp, QAccessible::ComboBox, withoutMnemonic(words("Consumable Reminder")), words("Close")},
        {confirm, QAccessible::Button, withoutMnemonic(words("Confirm")), words("Confirm Description")},
        {part<QWidget>("tips"), QAccessible::StaticText, words("Consumable Prompt Settings"), {}},
        {part<QWidget>("explanation"), QAccessible::StaticText, words("Reminder Explanation"), {}},
        {part<QWidget>("tips1"), QAccessible::StaticText, withoutMnemonic(words("Consumable Reminder")), {}},
        {part<QWidget>("errorTips"), QAccessible::StaticText, words("Warning Message"), {}},
        {part<QWidget>("tipProgress"), QAccessible::ProgressBar, words("Progress"), {}},
    };
    for (const auto &[widget, role, name, description] : rows) {
        SCOPED_TRACE(widget->objectName().toStdString());
        EXPECT_EQ(spoken(widget).role(), role);
        EXPECT_EQ(spoken(widget).text(QAccessible::Name), name);
        EXPECT_EQ(spoken(widget).text(QAccessible::Description), description);
    }
    EXPECT_EQ(spoken(popUp).text(QAccessible::Value), words("Close"));
    popUp->setAccessibleDescription(QStringLiteral("of a printer"));
    popUp->setCurrentIndex(1);
    EXPECT_EQ(spoken(popUp).text(QAccessible::Description),
              words("Two Percent") + QStringLiteral(" · of a printer"));
    ASSERT_EQ(spoken(popUp).childCount(), 1);
    EXPECT_EQ(spoken(popUp).indexOfChild(spoken(popUp).child(0)), 0);
    EXPECT_EQ(spoken(popUp).child(0)->parent()->object(), popUp) << "its choices";
    EXPECT_EQ(spoken(popUp).child(0)->childCount(), 10);
    for (const bool open : {true, false}) {
        spoken(popUp).actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
        EXPECT_EQ(spoken(popUp).state().expanded, open);
    }
    addQueue("Sample Laser", networkUri);
    EXPECT_EQ(spoken(table).tableInterface()->cellAt(0, 0)->text(QAccessible::Name),
              QStringLiteral("Sample Laser, ") + words("Network"));
}

TEST_F(WindowTest, theTipIsSaidAtOnce) {
    openWithLaser(fault("wrong_echo"));
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(
        true); // as a screen reader does
    QAccessible::installUpdateHandler(noteAlert);
    choose(0);
    QAccessible::installUpdateHandler(nullptr);
    EXPECT_EQ(spoken(tip).role(), QAccessible::AlertMessage);
    EXPECT_EQ(alerts, (std::vector<std::pair<QObject *, QString>>{{tip, words("Get Printer Status")},
                                                                  {tip, words("Get Printer Toner")}}));
}

TEST_F(WindowTest, isWorkedByTheKeyboardAlone) {
    openWithLaser(R"("threshold": 3)");
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        window->activateWindow(); // as a window manager does when a tip has gone
        QTest::keyClick(window->windowHandle(), key, modifiers);
    };
    EXPECT_EQ(window->focusWidget(), table) << "where one starts";
    EXPECT_EQ(tipsDuring([&] {
                  press(Qt::Key_Down);
                  qt.elapse(NSTableView::keyRest);
              }),
              Tips{reading});
    EXPECT_EQ(table->selectedRow(), 0);
    EXPECT_EQ(popUp->currentIndex(), 2);
    press(Qt::Key_Tab);
    EXPECT_EQ(window->focusWidget(), popUp);
    press(Qt::Key_End);
    EXPECT_EQ(popUp->currentIndex(), 9);
    press(Qt::Key_Tab);
    EXPECT_EQ(window->focusWidget(), confirm);
    EXPECT_EQ(tipsDuring([&] { press(Qt::Key_Space); }), Tips{success});
    EXPECT_EQ(thresholdOf("SN0001"), 10);
    EXPECT_EQ(window->focusWidget(), confirm) << "a tip leaves the focus where it was";

    press(Qt::Key_Tab, Qt::ShiftModifier);
    press(Qt::Key_Up);
    press(Qt::Key_Tab);
    EXPECT_EQ(tipsDuring([&] { press(Qt::Key_Return); }), Tips{success});
    EXPECT_EQ(thresholdOf("SN0001"), 9);

    const auto mnemonic = [&](const QString &text) {
        press(Qt::Key(QKeySequence::mnemonic(text)[0].key()), Qt::AltModifier);
    };
    mnemonic(part<QLabel>("tips1")->text());
    EXPECT_EQ(window->focusWidget(), popUp);
    press(Qt::Key_Home);
    EXPECT_EQ(tipsDuring([&] {
                  mnemonic(confirm->text());
                  EXPECT_TRUE(QtTesting::eventually([&] { return logged("set honer success") == 3; }));
              }),
              Tips{success});
    EXPECT_EQ(thresholdOf("SN0001"), 0);
}
