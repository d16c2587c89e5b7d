// Shortcuts for widgets, by what is seen of them. docs/interface-widgets.md quotes from here.
#include "Frameworks/QNCategoriesPro/UIKit/NSString/NSString+TextMetrics.h"
#include "Frameworks/QNCategoriesPro/UIKit/QAbstractButton/QAbstractButton+Blocks.h"
#include "Frameworks/QNCategoriesPro/UIKit/QLineEdit/QLineEdit+Limits.h"
#include "Frameworks/QNCategoriesPro/UIKit/QLineEdit/QLineEdit+Text.h"
#include "Frameworks/QNCategoriesPro/UIKit/QPushButton/QPushButton+Arrangement.h"
#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Ancestry.h"
#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Decoration.h"
#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Fading.h"
#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Geometry.h"
#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Snapshot.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/QtTesting.h"
#include "Tests/Support/Raised.h"

#include <QAnimationDriver>
#include <QBoxLayout>
#include <QDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QValidator>

namespace {

/// Animation time, moved by hand.
struct ManualDriver final : QAnimationDriver {
    ManualDriver() { install(); }
    qint64 elapsed() const override { return now; }
    void pass(qint64 milliseconds) {
        QtTesting::settle(); // which starts animations
        now += milliseconds;
        advance();
    }
    qint64 now = 0;
};

class WidgetsTest : public testing::Test {
protected:
    WidgetsTest() {
        window.resize(200, 120);
        window.setPalette(QPalette(Qt::white));
        card.setGeometry(50, 30, 100, 60);
        card.setAutoFillBackground(true);
        card.setPalette(QPalette(Qt::red));
    }
    /// What is seen at that place of the window.
    QColor seen(int x, int y) { return qn::snapshot(window, {}, 1).pixelColor(x, y); }

    const QtTesting qt;
    ManualDriver driver;
    QWidget window;
    QWidget card{&window};
    QPushButton button{&window};
    QLineEdit field{&window};
};

/// The rectangle around all pixels of that colour.
QRect placeOf(const QColor &color, const QImage &image) {
    QRect place;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == color)
                place |= QRect(x, y, 1, 1);
    return place;
}

} // namespace

TEST_F(WidgetsTest, areWhereTheyAreSaidToBe) {
    QRectF layer = card.geometry();
    const auto check = [](auto &view) {
        EXPECT_EQ(QPointF(qn::right(view), qn::bottom(view)), QPointF(150, 90)) << "left + width";
        qn::setRight(view, 200);
        qn::setBottom(view, 100);
        qn::setWidth(view, 80);
        qn::setHeight(view, 50);
        EXPECT_EQ(qn::frame(view), QRectF(100, 40, 80, 50));
        qn::setCenterX(view, 50);
        qn::setCenterY(view, 30);
        EXPECT_EQ(qn::origin(view), QPointF(10, 5));
        qn::setLeft(view, 3);
        qn::setTop(view, -4);
        qn::setSize(view, QSizeF(9, 8));
        EXPECT_EQ(QRectF(qn::left(view), qn::top(view), qn::width(view), qn::height(view)),
                  QRectF(3, -4, 9, 8));
        EXPECT_EQ(qn::center(view), QPointF(qn::centerX(view), qn::centerY(view)));
        qn::setCenter(view, QPointF(5.5, 6));
        EXPECT_EQ(qn::frame(view), QRectF(1, 2, 9, 8));
    };
    check(card);
    check(layer);
    qn::setOrigin(card, QPointF(16, 16));
    qn::setCenterY(button, qn::centerY(card));
    qn::setLeft(button, qn::right(card) + 8);
    EXPECT_EQ(qn::left(button), 33);
    qn::setFrame(card, QRectF(std::nan(""), -1e300, -5, 1e300));
    EXPECT_EQ(qn::frame(card), QRectF(0, -QWIDGETSIZE_MAX, 0, QWIDGETSIZE_MAX));
}

TEST_F(WidgetsTest, knowWhatTheyAreIn) {
    const QPointer<QDialog> dialog = new QDialog(&card);
    const QWidget inner(dialog);
    EXPECT_EQ(qn::owningWindow(inner), dialog);
    EXPECT_EQ(qn::owningWindow(*dialog), &window);
    EXPECT_EQ(qn::owningWindow(window), nullptr);
    EXPECT_EQ(qn::nearestAncestor<QDialog>(inner), dialog);
    EXPECT_EQ(qn::nearestAncestor<QDialog>(*dialog), nullptr);

    auto *const rows = new QVBoxLayout(&card);
    const QPointer<QPushButton> remover = new QPushButton;
    rows->addWidget(remover);
    qn::onClick(*remover, [&] { qn::removeAllChildren(card); });
    remover->click();
    EXPECT_EQ(rows->count(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(!remover && dialog) << "the dialog is a window of its own";
}

TEST_F(WidgetsTest, arePicturedShownOrHidden) {
    for (const bool isShown : {false, true}) {
        window.setVisible(isShown);
        EXPECT_EQ(placeOf(Qt::red, qn::snapshot(window, {}, 2)), QRect(100, 60, 200, 120));
    }
    EXPECT_EQ(placeOf(Qt::red, qn::snapshot(window, QRect(140, 80, 500, 500), 1)), QRect(0, 0, 10, 10));
    for (const qreal ratio : {0.0, -1.0, 17.0, std::nan("")})
        EXPECT_TRUE(qn::snapshot(window, {}, ratio).isNull()) << ratio;
    EXPECT_EQ(qn::snapshotPNG(window, QRect(300, 0, 5, 5)), nullptr);
    EXPECT_EQ(qn::snapshotPDF(window, QRect(300, 0, 5, 5)), nullptr);

    QWidget never;
    (new QVBoxLayout(&never))->addWidget(new QPushButton(QStringLiteral("Never shown")));
    EXPECT_EQ(qn::snapshot(never, {}, 1).size(), never.sizeHint());

    const QImage picture = qn::snapshot(card, QRect(0, 0, 50, 50), 2);
    const Ref<NSData> page = qn::snapshotPDF(*qn::owningWindow(card));
    EXPECT_EQ(picture.size(), QSize(100, 100));
    EXPECT_THAT(contents(page), HasSubstr("/MediaBox [0 0 150.000000 90.000000]"))
        << "points, of 96 pixels an inch";
    const auto png = contents(qn::snapshotPNG(window, {}, 2));
    EXPECT_EQ(placeOf(Qt::red, QImage::fromData(QByteArray::fromStdString(png))), QRect(100, 60, 200, 120));
}

TEST_F(WidgetsTest, haveCornersBordersAndShadows) {
    const QColor red = seen(50, 30), white = seen(10, 100), blue = Qt::blue;
    qn::setDecoration(card, {.cornerRadius = 20, .border = qn::Border{blue, 4}});
    EXPECT_TRUE(seen(50, 30) == white && seen(149, 89) == white) << "round";
    EXPECT_TRUE(seen(100, 31) == blue && seen(51, 60) == blue && seen(57, 37) == blue);
    EXPECT_EQ(seen(100, 35), red);

    qn::setDecoration(card, {.shadow = qn::Shadow{Qt::black, 10, QPointF(0, 5)}});
    EXPECT_EQ(seen(51, 31), red) << "none within the widget";
    EXPECT_EQ(seen(100, 101), white) << "90 + 5 + 10 / 2";
    for (int y = 91; y < 100; ++y)
        EXPECT_LE(seen(100, y - 1).blue(), seen(100, y).blue()) << "fades outwards";
    EXPECT_NEAR(seen(100, 95).blue(), 127, 30);

    qn::setDecoration(card, {});
    EXPECT_EQ(card.graphicsEffect(), nullptr);
    qn::setOpacity(card, 0.5);
    qn::setDecoration(
        card, {std::nan(""), qn::Border{blue, -1}, qn::Shadow{blue, -3, QPointF(std::nan(""), 1e300)}});
    EXPECT_NEAR(seen(100, 60).green(), 127, 2);
    EXPECT_EQ(raised([&] { qn::setDecoration(window, {}); }), NSInvalidArgumentException);
}

TEST_F(WidgetsTest, fade) {
    window.show();
    int done = 0;
    qn::fadeOut(card, 200ms, [&] { ++done; });
    driver.pass(100);
    EXPECT_NEAR(qn::opacity(card), 0.5, 0.1);
    qn::fadeIn(card, 200ms, [&] { done += 10; });
    EXPECT_NEAR(qn::opacity(card), 0.5, 0.1) << "goes on from there";
    driver.pass(250);
    EXPECT_EQ(done, 10) << "the first fade was given up";
    EXPECT_EQ(card.graphicsEffect(), nullptr) << "none is left behind";
    qn::fadeOut(card, 200ms, [&] { qn::fadeIn(card, 0ms, [&] { ++done; }); });
    driver.pass(199);
    EXPECT_TRUE(card.isVisible() && qn::opacity(card) < 0.1);
    driver.pass(1);
    EXPECT_TRUE(card.isVisible() && qn::opacity(card) == 1 && done == 11);

    qn::setDecoration(card, {.cornerRadius = 8, .border = qn::Border{}, .shadow = qn::Shadow{}});
    qn::fadeOut(window, 250ms, [&] { qn::fadeIn(card); });
    driver.pass(125);
    EXPECT_NEAR(window.windowOpacity(), 0.5, 0.1);
    driver.pass(125);
    EXPECT_TRUE(window.isHidden() && window.windowOpacity() == 1);
}

TEST_F(WidgetsTest, buttonsCallTheirBlocks) {
    std::string calls;
    const auto held = std::make_shared<int>();
    qn::setArrangement(button, {.image = qn::ImagePlace::above, .spacing = 8});
    const auto printing = qn::onClick(button, [&, held] { calls += 'p'; });
    button.click();
    QObject::disconnect(printing);
    EXPECT_EQ(held.use_count(), 1) << "a block that is removed is gone";
    button.setCheckable(true);
    qn::onToggle(button, [&](bool isChecked) { calls += isChecked ? '1' : '0'; });
    qn::onClick(button, [&, held] { qn::removeBlocks(button); });
    qn::onClick(button, [&] { calls += 'x'; });
    button.click();
    button.click();
    EXPECT_EQ(calls, "p1") << "nor are those called that come behind";
    qn::onClick(*std::make_unique<QPushButton>(), [held] {});
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(raised([&] { return qn::onClick(button, nullptr); }), NSInvalidArgumentException);
}

TEST_F(WidgetsTest, buttonsArrangeImageAndTitle) {
    QPixmap picture(20, 10);
    picture.fill(Qt::blue);
    button.setIcon(picture);
    button.setIconSize(picture.size());
    button.setText(QStringLiteral("\u2588\u2588")); // blocks that fill their place
    QPalette colors;
    colors.setColor(QPalette::ButtonText, Qt::green);
    button.setPalette(colors);
    const auto places = [&](qn::ImagePlace place) {
        qn::setArrangement(button, {place, 7});
        button.resize(button.sizeHint());
        const QImage image = qn::snapshot(button, {}, 1);
        return std::pair(placeOf(Qt::blue, image), placeOf(Qt::green, image));
    };
    const auto [leading, behind] = places(qn::ImagePlace::leading);
    EXPECT_NEAR(qn::left(QRectF(behind)) - qn::right(QRectF(leading)), 7, 1);
    EXPECT_NEAR(leading.center().y(), button.rect().center().y(), 1);
    const auto [trailing, before] = places(qn::ImagePlace::trailing);
    EXPECT_GT(trailing.left(), before.right());
    const auto [above, under] = places(qn::ImagePlace::above);
    EXPECT_TRUE(above.size() == picture.size() && above.bottom() + 6 < under.top());
    EXPECT_NEAR(above.center().x(), under.center().x(), 1);
    const auto [below, over] = places(qn::ImagePlace::below);
    EXPECT_TRUE(below.size() == picture.size() && over.bottom() + 6 < below.top());
    button.setLayoutDirection(Qt::RightToLeft);
    const auto [mirrored, text] = places(qn::ImagePlace::leading);
    EXPECT_GT(mirrored.left(), text.right());
    qn::setArrangement(button, {qn::ImagePlace::trailing, -3});
    EXPECT_EQ(qn::arrangement(button).spacing, 0);
}

TEST_F(WidgetsTest, fieldsKeepTheirLimits) {
    field.setText(QStringLiteral("e\u0301🇩🇪👨‍👩‍👧‍👦xyz"));
    qn::setMaximumCharacters(field, 4);
    EXPECT_EQ(field.text(), QStringLiteral("e\u0301🇩🇪👨‍👩‍👧‍👦x")) << "as people count";
    field.setSelection(2, 4);
    field.insert(QStringLiteral("🇫🇷b"));
    EXPECT_EQ(field.text(), QStringLiteral("e\u0301🇫🇷👨‍👩‍👧‍👦x"))
        << "what is inserted is cut, not what follows";
    EXPECT_EQ(field.cursorPosition(), 6);

    field.setText(QStringLiteral("你好"));
    QInputMethodEvent composing(QStringLiteral("da'yin'ji"), {}), commit;
    QCoreApplication::sendEvent(&field, &composing);
    EXPECT_EQ(field.text(), QStringLiteral("你好")) << "not while it is being composed";
    commit.setCommitString(QStringLiteral("打印机"));
    QCoreApplication::sendEvent(&field, &commit);
    EXPECT_EQ(field.text(), QStringLiteral("你好打印"));
    qn::setMaximumCharacters(field, -1);
    EXPECT_EQ(qn::maximumCharacters(field), 0);
    EXPECT_EQ(field.text(), QString());
}

TEST_F(WidgetsTest, fieldsTakeWhatIsAllowed) {
    QIntValidator years(0, 9999);
    field.setValidator(&years);
    qn::setMaximumCharacters(field, 4);
    qn::setAllowedCharacters(field, NSCharacterSet::characterSetWithCharactersInString(u"0123456789"));
    field.insert(QStringLiteral("20-26-11"));
    EXPECT_EQ(field.text(), QStringLiteral("2026"));
    qn::setMaximumCharacters(field, std::nullopt);
    field.insert(QStringLiteral("7"));
    EXPECT_EQ(field.text(), QStringLiteral("2026")) << "the field's own validator is asked as well";
    years.setTop(999999);
    field.insert(QStringLiteral("😀7٣8"));
    EXPECT_EQ(field.text(), QStringLiteral("202678"));
    qn::setCharacterTest(field, [](char32_t character) { return character > 0xFFFF; });
    EXPECT_EQ(field.text(), QString()) << "at once";
}

TEST_F(WidgetsTest, textsAreThoseOfThePlatform) {
    qn::setPlaceholder(field, u"Name"_ns);
    EXPECT_EQ(text(qn::placeholder(field)), "Name");
    qn::setText(field, u"ab👍🏽c"_ns);
    EXPECT_EQ(qn::selectedRange(field), NSMakeRange(7, 0));
    using Ranges = std::pair<NSRange, NSRange>; // the thumb has four units
    for (const auto &[set, got] :
         {Ranges({1, 2}, {1, 5}), Ranges({4, 0}, {2, 0}), Ranges({6, ~0ul}, {6, 1})}) {
        qn::setSelectedRange(field, set);
        EXPECT_EQ(qn::selectedRange(field), got);
    }

    const Ref<NSString> name = u"The printer at the window"_ns;
    qn::setText(field, qn::elidedText(name, field.font(), qn::width(card), Qt::ElideMiddle));
    const QSizeF size = qn::measuredSize(qn::text(field), field.font(), qn::width(card));
    EXPECT_LE(size.width(), qn::width(card));
    EXPECT_GT(qn::numberOfLines(name, field.font(), size.width() / 2), 2u);
    EXPECT_THAT(text(name), StartsWith(text(qn::fittingPrefix(name, field.font(), 50))));
    EXPECT_EQ(qn::elidedText(nullptr, field.font(), 50), nullptr);
}
