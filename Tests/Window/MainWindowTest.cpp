// The main window: its menu, its one content view, and its colours.
#include "Classes/LocalizeMenu.h"
#include "Classes/ZKView.h"
#include "Tests/Window/WindowTesting.h"

#include <QImage>
#include <QMenuBar>

namespace {

/// Titles as they stand, submenus in brackets.
QString outline(const QWidget &menu) {
    const auto *titled = qobject_cast<const QMenu *>(&menu);
    QString text = titled ? titled->title() : menu.windowTitle();
    for (const QAction *item : menu.actions())
        text += QLatin1Char(' ') +
                (item->menu() ? QLatin1Char('[') + outline(*item->menu()) + QLatin1Char(']') : item->text());
    return text;
}

std::string subviews(const QWidget &container) {
    std::string names;
    for (const QWidget *view : container.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        names += view->objectName().toStdString() + " ";
    return names;
}

class PaletteTest : public WindowTest, public testing::WithParamInterface<const char *> {};

QPalette palette(bool dark) {
    QPalette made(dark ? QColor(0x35, 0x35, 0x35) : QColor(0xEF, 0xEF, 0xEF));
    made.setColor(QPalette::Base, dark ? QColor(0x1E, 0x1E, 0x1E) : Qt::white);
    made.setColor(QPalette::Text, dark ? Qt::white : Qt::black);
    return made;
}

} // namespace

TEST(LocalizeMenu, translatesTitlesOnly) {
    QtTesting qt;
    localizeMenu(nullptr);

    QMenuBar bar;
    bar.setWindowTitle(QStringLiteral("Close"));
    auto *const file = bar.addMenu(QStringLiteral("File"));
    auto *const quit = file->addAction(QStringLiteral("Quit"));
    quit->setShortcut(Qt::CTRL | Qt::Key_Q);
    quit->setToolTip(QStringLiteral("Quit"));
    file->addAction(QStringLiteral("Not a key"));
    file->addSeparator();
    file->addMenu(QStringLiteral("Progress"))->addMenu(QStringLiteral("Printer List"));
    localizeMenu(&bar);
    EXPECT_EQ(outline(bar), QStringLiteral("%1 [%2 %3 Not a key  [%4 [%5]]]")
                                .arg(words("Close"), words("File"), words("Quit"), words("Progress"),
                                     words("Printer List")));
    EXPECT_EQ(quit->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
    EXPECT_EQ(quit->toolTip(), QStringLiteral("Quit"));
}

TEST_F(WindowTest, hasAMenuAndOneContentView) {
    open();
    EXPECT_EQ(outline(*part<QMenuBar>("mainMenu")),
              QStringLiteral(" [%1 %2]").arg(words("File"), words("Quit")));
    EXPECT_TRUE(window->canBecomeKeyWindow());
    EXPECT_EQ(logged("awakeFromNib"), 1);
    EXPECT_TRUE(interface->delegate->applicationShouldTerminateAfterLastWindowClosed());

    auto &mainView = *part<QWidget>("mainView");
    QLabel other(QStringLiteral("Other"));
    other.setObjectName(QStringLiteral("other"));
    const auto expectOnly = [&](QWidget &content) {
        window->showView(&content);
        QtTesting::settle();
        EXPECT_EQ(subviews(mainView), "mainBackgroundView " + content.objectName().toStdString() + " ");
        EXPECT_TRUE(content.isVisible());
        EXPECT_EQ(content.geometry(), mainView.rect());
    };
    expectOnly(*view);
    expectOnly(*view);
    expectOnly(other);
    EXPECT_EQ(view->parent(), nullptr);
    EXPECT_FALSE(view->isVisible());
    expectOnly(*view);
    EXPECT_EQ(other.parent(), nullptr);
    EXPECT_FALSE(other.isVisible());
    addQueue("Network", networkUri);
    EXPECT_EQ(choose(0), Tips{});
    EXPECT_EQ(shown(), "tips errorTips") << "a view that came back works";
}

TEST_P(PaletteTest, textsAreReadable) {
    const bool startsDark = GetParam() == std::string("dark");
    QApplication::setPalette(palette(startsDark));
    open();
    auto &settings = *part<ZKView>("settingsView");
    for (const bool dark : {startsDark, !startsDark}) { // also when the desktop changes meanwhile
        QApplication::setPalette(palette(dark));
        QtTesting::settle();
        const QImage picture = settings.grab().toImage();
        EXPECT_EQ(picture.pixelColor(1, picture.height() / 2), QColor(Qt::white));
        const auto expectReadable = [](const QWidget &widget, QPalette::ColorRole text,
                                       QPalette::ColorRole ground) {
            for (const auto group : {QPalette::Active, QPalette::Inactive})
                EXPECT_GE(
                    contrast(widget.palette().color(group, text), widget.palette().color(group, ground)), 4.5)
                    << widget.objectName().toStdString() << " " << group;
        };
        int checked = 0;
        for (const QWidget *widget : settings.findChildren<QWidget *>()) {
            if (qobject_cast<const QLabel *>(widget)) {
                expectReadable(*widget, QPalette::WindowText, QPalette::Window);
                EXPECT_EQ(widget->palette().color(QPalette::Window), QColor(Qt::white));
            } else if (qobject_cast<const QPushButton *>(widget) || qobject_cast<const QComboBox *>(widget)) {
                expectReadable(*widget, QPalette::ButtonText, QPalette::Button);
                expectReadable(*widget, QPalette::Text, QPalette::Base);
            } else {
                continue;
            }
            ++checked;
        }
        EXPECT_GE(checked, 6);
        for (const QWidget *outside :
             {static_cast<QWidget *>(table), static_cast<QWidget *>(tip), part<QWidget>("message")})
            for (const auto role : {QPalette::Window, QPalette::WindowText, QPalette::Base, QPalette::Text})
                EXPECT_EQ(outside->palette().color(role), QApplication::palette().color(role))
                    << outside->objectName().toStdString();
        EXPECT_GE(contrast(table->palette().color(QPalette::PlaceholderText),
                           table->palette().color(QPalette::Base)),
                  4.5);
    }
}

INSTANTIATE_TEST_SUITE_P(Desktops, PaletteTest, testing::Values("light", "dark"),
                         [](const auto &desktop) { return std::string(desktop.param); });
