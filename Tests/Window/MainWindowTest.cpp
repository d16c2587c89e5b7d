// The main window: its menu, its one content view, and its colours.
#include "Classes/LocalizeMenu.h"
#include "Classes/WindowPlace.h"
#include "Classes/ZKView.h"
#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Contrast.h"
#include "Platform/Interface/Ink.h"
#include "Tests/Window/WindowTesting.h"

#include <QAbstractItemView>
#include <QIcon>
#include <QImage>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>

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

class PaletteTest : public WindowTest, public testing::WithParamInterface<std::string> {};

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
              QStringLiteral(" [%1 %2 %3  %4] [%5 %6  %7]")
                  .arg(words("File"), words("Read Again"), words("Print Settings"), words("Quit"),
                       words("Help"), words("Copy Diagnostics"), words("About")));
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
    const bool startsDark = GetParam() == "dark";
    QApplication::setPalette(palette(startsDark));
    openWithLaser();
    EXPECT_EQ(choose(0), Tips{reading});
    for (const bool dark : {startsDark, !startsDark}) { // also when the desktop changes meanwhile
        QApplication::setPalette(palette(dark));
        QtTesting::settle();
        const auto expectReadable = [](const QWidget &widget, QPalette::ColorRole text,
                                       QPalette::ColorRole ground) {
            for (const auto group : {QPalette::Active, QPalette::Inactive})
                EXPECT_GE(qn::contrastRatio(widget.palette().color(group, text),
                                            widget.palette().color(group, ground)),
                          4.5)
                    << widget.objectName().toStdString() << " group " << group << ": role " << text
                    << " upon " << ground;
        };
        int checked = 0;
        for (const QLabel *label : part<QWidget>("panel")->findChildren<QLabel *>()) {
            expectReadable(*label, label->foregroundRole(), label->backgroundRole());
            EXPECT_EQ(label->backgroundRole(), QPalette::Base) << "the panel's ground";
            ++checked;
        }
        EXPECT_GE(checked, 8);
        expectReadable(*part<QWidget>("message"), QPalette::WindowText, QPalette::Window);
        expectReadable(*table, QPalette::Text, QPalette::Base);
        expectReadable(*table, QPalette::PlaceholderText, QPalette::Base);
        expectReadable(*table, QPalette::HighlightedText, QPalette::Highlight);
        expectReadable(*popUp->view(), QPalette::Text, QPalette::Base);
        for (const auto &[text, ground] : {std::pair(QPalette::Text, QPalette::Base),
                                           std::pair(QPalette::HighlightedText, QPalette::Highlight)}) {
            const QColor under = table->palette().color(ground);
            EXPECT_GE(qn::contrastRatio(mutedInk(table->palette().color(text), under), under), 4.5);
        }
        for (const QWidget *widget :
             {static_cast<QWidget *>(table), static_cast<QWidget *>(tip), part<QWidget>("panel"),
              part<QWidget>("mainBackgroundView"), static_cast<QWidget *>(popUp->view())})
            for (const auto role : {QPalette::Window, QPalette::Base})
                EXPECT_EQ(widget->palette().color(role), QApplication::palette().color(role))
                    << "one scheme: " << widget->objectName().toStdString();
    }
}

TEST(WindowPlaceTest, isOnAScreen) {
    const QRect screen(0, 0, 1920, 1040), small(1920, 0, 800, 600);
    const QSize wished(720, 480);
    const struct {
        QRect remembered;
        QList<QRect> areas;
        QRect place;
    } rows[] = {
        {{}, {screen}, {600, 280, 720, 480}},
        {{}, {{0, 0, 640, 400}}, {0, 0, 640, 400}},
        {{100, 50, 800, 500}, {screen, small}, {100, 50, 800, 500}},
        {{1950, 50, 600, 500}, {screen, small}, {1950, 50, 600, 500}},
        {{1950, 50, 600, 500}, {screen}, {660, 270, 600, 500}},
        {{-20, 50, 600, 500}, {screen}, {660, 270, 600, 500}},
        {{0, 0, 3000, 500}, {screen}, {0, 270, 1920, 500}},
        {{100, 50, 800, 500}, {}, {QPoint(), wished}},
    };
    for (const auto &[remembered, areas, place] : rows)
        EXPECT_EQ(WindowPlace::fitting(remembered, wished, areas), place) << remembered.x();
}

// Drawn into a picture: the theme's in the colour of the text, its coloured one as it is, or ours.
TEST(SymbolTest, isOfTheThemeWhenTheThemeHasAllOfItsKind) {
    QtTesting qt;
    const TemporaryFolder themes;
    const auto drawn = [](Symbol symbol) {
        QImage image(24, 24, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        drawSymbol(painter, symbol, image.rect(), Qt::blue);
        return image;
    };
    const auto colorsOf = [&](Symbol symbol) {
        const QImage image = drawn(symbol);
        QSet<QRgb> colors;
        for (int i = 0; i < image.width() * image.height(); ++i)
            if (const QColor color = image.pixelColor(i % 24, i / 24); color.alpha() == 255)
                colors += color.rgb();
        return colors;
    };
    int stage = 0; // each a theme of its own, since what was looked for once is remembered
    const auto use = [&](const std::vector<std::string> &names) {
        const std::string theme = "theme" + std::to_string(++stage);
        themes.put(theme + "/index.theme", "[Icon Theme]\nName=Some\nDirectories=24\n[24]\nSize=24\n");
        QImage image(24, 24, QImage::Format_ARGB32);
        image.fill(Qt::red);
        for (const std::string &name : names)
            EXPECT_TRUE(image.save(QString::fromStdString(themes.put(theme + "/24/" + name + ".png", ""))));
        QIcon::setThemeSearchPaths({QString::fromStdString(themes.path())});
        QIcon::setThemeName(QString::fromStdString(theme));
    };
    const QSet<QRgb> blue = {QColor(Qt::blue).rgb()}, red = {QColor(Qt::red).rgb()};
    use({"printer", "printer-network"});
    EXPECT_EQ(colorsOf(Symbol::printer), blue) << "the theme lacks one";
    use({"printer", "printer-network", "printer-error"});
    EXPECT_EQ(colorsOf(Symbol::printer), red);
    EXPECT_TRUE(colorsOf(Symbol::missingPrinter).contains(blue)) << "with our stroke";
    EXPECT_EQ(colorsOf(Symbol::warning), blue) << "of another kind";
    use({"printer", "printer-network", "printer-error", "printer-symbolic", "printer-network-symbolic",
         "printer-error-symbolic", "dialog-warning", "dialog-error", "emblem-ok"});
    for (const Symbol symbol : {Symbol::printer, Symbol::networkPrinter, Symbol::failingPrinter})
        EXPECT_EQ(drawn(symbol).pixelColor(0, 0), QColor(Qt::blue)) << "where ours is empty";
    for (const Symbol symbol : {Symbol::success, Symbol::warning, Symbol::failure})
        EXPECT_EQ(colorsOf(symbol), red);
}

TEST_F(WindowTest, comesBackWhereItWas) {
    open();
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    const QRect place(area.x() + 24, area.y() + 16, 720, 480);
    window->resize(place.size());
    window->move(place.topLeft());
    QtTesting::settle();
    window->close();
    QWidget next;
    WindowPlace::restore(next);
    EXPECT_EQ(next.geometry(), place);
}

TEST_F(WindowTest, aPlainGroundIsWhite) {
    ZKView ground;
    ground.resize(8, 8);
    ground.awakeFromNib();
    EXPECT_EQ(ground.grab().toImage().pixelColor(4, 4), QColor(Qt::white));
}

INSTANTIATE_TEST_SUITE_P(Desktops, PaletteTest, testing::Values("light", "dark"),
                         [](const auto &desktop) { return desktop.param; });
