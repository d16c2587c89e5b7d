// Every language has room for its words, also in large letters and in the smallest window.
#include "Tests/Window/WindowTesting.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QMenuBar>

namespace {

/// A language, and how large the letters are to be.
using Reader = std::tuple<std::string, int>;

struct RightToLeftTest : InLanguage, WindowTest {
    RightToLeftTest() : InLanguage("ar") {}
};

class RoomTest : InLanguage, public WindowTest, public testing::WithParamInterface<Reader> {
protected:
    RoomTest() : InLanguage(std::get<0>(GetParam())) {
        QFont font = QApplication::font();
        font.setPointSizeF(font.pointSizeF() * scale());
        QApplication::setFont(font);
    }

    static int scale() { return std::get<1>(GetParam()); }

    void smallest() {
        QtTesting::settle();
        window->resize(1, 1);
        QtTesting::settle();
    }

    static bool showsText(const QWidget &widget) {
        return (qobject_cast<const QLabel *>(&widget) || qobject_cast<const QAbstractButton *>(&widget) ||
                qobject_cast<const QComboBox *>(&widget)) &&
               widget.objectName() != QLatin1String("mainBackgroundView");
    }

    static QSize needed(const QWidget &widget) {
        const auto *label = qobject_cast<const QLabel *>(&widget);
        if (!label || !label->wordWrap())
            return widget.sizeHint();
        return {label->minimumSizeHint().width(), label->heightForWidth(label->width())};
    }

    static void expectRoom(const QWidget &root) {
        QtTesting::settle();
        int seen = 0;
        for (const QWidget *widget : root.findChildren<QWidget *>()) {
            if (!showsText(*widget) || !widget->isVisible() || widget->window() != root.window())
                continue;
            ++seen;
            const std::string name = widget->objectName().toStdString();
            EXPECT_GE(widget->width(), needed(*widget).width()) << name;
            EXPECT_GE(widget->height(), needed(*widget).height()) << name;
            EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry())) << name;
        }
        EXPECT_GT(seen, 0) << root.objectName().toStdString();
    }
};

} // namespace

// Wherever the panel stands: beside the list or above it.
TEST_P(RoomTest, isBesideTheTipForTheLevel) {
    openWithLaser();
    addQueue("Away", l200Uri);
    choose(0);
    for (const int row : {0, 1}) { // in the second, the settings of the other printer are explained
        choose(row);
        for (const QSize size :
             {QSize(1, 1), QSize(720 * scale(), 480 * scale()), QSize(1000 * scale(), 1)}) {
            window->resize(size);
            QtTesting::settle();
            for (const char *key : {"Get Printer Status", "Printer Status Tip"}) {
                tip->setParentFrame(window->frameGeometry());
                tip->setMsgText(NSLocalizedString(textOf(key)));
                tip->setProIndicator(false);
                tip->setSymbol(Symbol::warning);
                tip->center();
                const QRect level(popUp->mapToGlobal(QPoint()), popUp->size());
                EXPECT_FALSE(QRect(tip->pos(), tip->sizeHint()).intersects(level))
                    << key << " at " << window->width() << " × " << window->height();
            }
        }
    }
}

TEST_P(RoomTest, isEnough) {
    open();
    smallest();
    expectRoom(*window);
    const QSize screen = scale() == 1 ? QSize(800, 600) : QSize(1280, 900);
    EXPECT_LE(window->width(), screen.width());

    const int margin = table->fontMetrics().height();
    const QRect place = table->viewport()->rect().adjusted(margin, margin, -margin, -margin);
    const QRect placeholder = table->fontMetrics().boundingRect(place, Qt::AlignCenter | Qt::TextWordWrap,
                                                                table->placeholderText());
    EXPECT_TRUE(place.contains(placeholder)) << "what an empty table says";

    addQueue("Laser", laserUri);
    addQueue("Network", networkUri);
    const QHeaderView &header = *table->horizontalHeader();
    EXPECT_GE(header.sectionSize(0), header.sectionSizeHint(0));
    EXPECT_GE(table->rowHeight(0), table->fontMetrics().height());
    for (const int row : {1, 0}) {
        choose(row);
        smallest();
        expectRoom(*window);
        EXPECT_LE(window->height(), screen.height());
    }

    for (const char *key : tipKeys)
        for (const bool indicatorHidden : {true, false}) {
            tip->setMsgText(NSLocalizedString(textOf(key)));
            tip->setProIndicator(indicatorHidden);
            tip->center();
            tip->show();
            expectRoom(*tip);
            EXPECT_LE(tip->width(), TipWindow::widest(tip->font()));
            EXPECT_LE(tip->height(), TipWindow::highest(tip->font()));
            tip->hide();
        }
}

TEST_F(RightToLeftTest, everythingBeginsOnTheRight) {
    openWithLaser();
    choose(0);
    const auto place = [&](const char *name) {
        const auto *widget = part<QWidget>(name);
        return QRect(widget->mapTo(widget->window(), QPoint()), widget->size());
    };
    EXPECT_LT(place("panel").right(), place("scanResultsView").left());
    EXPECT_GT(part<QMenuBar>("mainMenu")->actionGeometry(part<QMenu>("fileMenu")->menuAction()).left(),
              part<QMenuBar>("mainMenu")->actionGeometry(part<QMenu>("helpMenu")->menuAction()).right());
    tip->setSymbol(Symbol::warning);
    tip->show();
    QtTesting::settle();
    EXPECT_GT(place("tipSymbol").left(), place("message").right());
    // The ink of a row is on its right, though its name is Latin.
    const QImage row = table->viewport()->grab({0, 0, table->columnWidth(0), table->rowHeight(0)}).toImage();
    const auto inked = [&](int from, int to) {
        QSet<QRgb> colors;
        for (int x = from; x < to; ++x)
            for (int y = 4; y < row.height() - 4; ++y)
                colors += row.pixel(x, y);
        return colors.size() > 1;
    };
    EXPECT_TRUE(inked(row.width() / 2, row.width() - 4));
    EXPECT_FALSE(inked(4, row.width() / 4));
}

TEST_F(RightToLeftTest, foreignTextsKeepTheirDirectionAndTurnNothingAround) {
    plug("1-2.", "L200 A.");
    open();
    addQueue("L200", "usb://Zelkor/L200%20A.?serial=1-2.");
    choose(0);
    EXPECT_EQ(part<QLabel>("printerTitle")->text(), QStringLiteral(u"\u2068L200 A.\u2069"));
    EXPECT_TRUE(part<QLabel>("serialNumber")->text().endsWith(QStringLiteral(u" \u20681-2.\u2069")));
    EXPECT_EQ(isolated(QStringLiteral(u"a\u2069\u202Eb\u2067")), QStringLiteral(u"\u2068ab\u2069"))
        << "whatever they hold";
}

INSTANTIATE_TEST_SUITE_P(Languages, RoomTest,
                         testing::Combine(testing::Values("ar", "de", "en", "es", "fr", "ja", "zh_CN",
                                                          "zh_TW"),
                                          testing::Values(1, 2)),
                         [](const auto &reader) {
                             return std::get<0>(reader.param) +
                                    (std::get<1>(reader.param) == 1 ? "" : "InLargeLetters");
                         });
