// What texts measure, in many scripts and fonts: each operation held against the others, and against what
// Qt's own layout and painters do.
#include "Platform/Interface/TextMetrics.h"

#include "Platform/Interface/TextClusters.h"
#include "Tests/Support/QtTesting.h"
#include "Tests/Support/Random.h"

#include <QFontMetricsF>
#include <QTextLayout>

namespace {

/// Texts in many scripts.
const char *const texts =
    "| |The printer at the window, third floor (left)|AVAVA fi ffi Donaudampfschifffahrt|"
    "الطابعة عند النافذة، الطابق الثالث (يسار)|המדפסת ZK-200 ליד החלון 3|लेज़र प्रिंटर क्षत्रिय खिड़की|"
    "窗边的打印机，三楼（左）|e\u0301\u0323o\u0302\u0308 "
    "i\u0307\u0301|👨‍👩‍👧‍👦👍🏽❤️‍🔥 "
    "🇩🇪🇫🇷🇯🇵 "
    "1️⃣|"
    "a\u200B\u200Bc\u00ADd\u2060e\u2068ש(\u2069)";
const QString dots = QStringLiteral("…");

struct TextMetricsTest : testing::Test {
    const QtTesting qt;
};

/// Every text in every font, at widths from nothing to more than enough.
template <class Check>
void forAll(const Check &check) {
    for (const char *family : {"DejaVu Sans", "DejaVu Serif", "WenQuanYi Micro Hei"})
        for (const int pixels : {9, 16, 37})
            for (const QString &text : QString::fromUtf8(texts).split(u'|'))
                for (const int tenths : {0, 3, 10, 31, 77, 200, 9999}) {
                    QFont font{QString::fromLatin1(family)};
                    font.setPixelSize(pixels);
                    font.setItalic(pixels == 16);
                    const testing::ScopedTrace trace(__FILE__, __LINE__, family + text.toStdString());
                    check(TextMetrics(font), QFontMetricsF(font), text, tenths * pixels / 10);
                }
}

} // namespace

TEST_F(TextMetricsTest, whatIsCutToFitDoesFitAndNoMoreWould) {
    forAll([](const TextMetrics &metrics, const auto &, const QString &text, int width) {
        const auto boundaries = clusterBoundaries(text);
        const auto after = [&](qsizetype place) { return *std::ranges::upper_bound(boundaries, place); };
        const auto isBoundary = [&](qsizetype place) { return std::ranges::count(boundaries, place) == 1; };
        const qsizetype length = metrics.fittingLength(text, width);
        EXPECT_TRUE(isBoundary(length) && metrics.fits(text.first(length), width));
        if (length == text.size())
            return;
        EXPECT_FALSE(metrics.fits(text.first(after(length)), width));

        for (const auto mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight}) {
            const QString elided = metrics.elided(text, width, mode);
            EXPECT_TRUE(metrics.fits(elided, width));
            const qsizetype begin = elided.indexOf(dots), end = elided.size() - begin - 1;
            EXPECT_EQ(begin < 0, !metrics.fits(dots, width));
            if (begin < 0)
                continue;
            EXPECT_TRUE(isBoundary(begin) && isBoundary(text.size() - end));
            EXPECT_EQ(elided, text.first(begin) + dots + text.last(end));
            if (mode == Qt::ElideRight)
                EXPECT_TRUE(end == 0 && !metrics.fits(text.first(after(begin)) + dots, width));
            if (mode == Qt::ElideLeft)
                EXPECT_EQ(begin, 0);
            if (const auto more = numberOfClusters(text.first(begin)) - numberOfClusters(text.last(end));
                mode == Qt::ElideMiddle)
                EXPECT_TRUE(more == 0 || more == 1);
        }
    });
}

TEST_F(TextMetricsTest, linesAndSizesAgreeWithEachOtherAndWithPainters) {
    forAll([](const TextMetrics &metrics, const auto &painters, const QString &text, int width) {
        for (const auto wrap : {QTextOption::NoWrap, QTextOption::WordWrap, QTextOption::WrapAnywhere}) {
            const QSizeF size = metrics.size(text, width, wrap);
            const qsizetype lines = metrics.numberOfLines(text, width, wrap);
            if (size.width() <= width)
                EXPECT_EQ(metrics.numberOfLines(text, size.width(), wrap), lines);
            EXPECT_EQ(metrics.size(text + u'\n' + text, width, wrap).width(), size.width());
            EXPECT_EQ(metrics.numberOfLines(text + QStringLiteral("\r\n") + text, width, wrap), 2 * lines);
            if (wrap == QTextOption::NoWrap)
                EXPECT_EQ(metrics.fits(text, width), size.width() <= width);
        }
        const QSizeF size = metrics.size(text, width);
        const QRectF painted = painters.boundingRect(QRectF(0, 0, width, 1e5), Qt::TextWordWrap, text);
        EXPECT_NEAR(size.width(), painted.width(), 1 + painters.height() / 4) << "or with what overhangs";
        EXPECT_NEAR(size.height(), painted.height(), 1);

        const int balanced = metrics.balancedWidth(text, width);
        const int word = static_cast<int>(std::ceil(metrics.size(text, 0).width()));
        EXPECT_TRUE(balanced >= word && balanced <= std::max(width, word));
        if (width >= word)
            EXPECT_EQ(metrics.numberOfLines(text, balanced), metrics.numberOfLines(text, width));
        if (balanced > word)
            EXPECT_GT(metrics.numberOfLines(text, balanced - 1), metrics.numberOfLines(text, width));
    });
}

TEST_F(TextMetricsTest, longTextsHaveTheLinesThatQtGivesThem) {
    Random random(7);
    const QFont font(QStringLiteral("DejaVu Sans"));
    for (const std::u16string pieces : {u"a b", u"aب ", u"字a,"})
        for (const qreal width : {40.0, 333.0, 90'000.0}) {
            const auto text = QString::fromStdU16String(random.text<std::u16string>(pieces, 60'000));
            QTextLayout layout(text, font);
            layout.beginLayout();
            for (QTextLine line; (line = layout.createLine()).isValid();)
                line.setLineWidth(width);
            EXPECT_EQ(TextMetrics(font).numberOfLines(text, width), layout.lineCount()) << width;
        }
}

TEST_F(TextMetricsTest, hostileTextsAreMeasuredToo) {
    const TextMetrics metrics{QFont(QStringLiteral("DejaVu Sans"))};
    constexpr qsizetype many = 100'000;
    for (const int unit : {0x0, 0x9, 0x20, 0x28, 0x301, 0xE33, 0x200B, 0x202E, 0x2068, 0xD83D, 0xDE00}) {
        const QString text(many, QChar(unit));
        const QSizeF size = metrics.size(text, 100, QTextOption::WrapAnywhere);
        EXPECT_TRUE(size.width() >= 0 && size.height() > 0) << unit;
        EXPECT_GE(metrics.size(text).width(), size.width()) << unit;
        for (const auto mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight, Qt::ElideNone})
            EXPECT_TRUE(metrics.fits(metrics.elided(text, 100, mode), 100)) << unit;
    }
    constexpr qsizetype beyondQt = 40 * many; // more pixels than a QFixed holds
    const qreal letter = metrics.size(QStringLiteral("aa")).width() / 2;
    EXPECT_NEAR(metrics.size(QString(beyondQt, u'a')).width(), beyondQt * letter, 1e-4 * beyondQt * letter);
    EXPECT_EQ(metrics.numberOfLines(QString(many, u'a'), 3 * letter, QTextOption::WrapAnywhere),
              many / 3 + 1);
    EXPECT_EQ(metrics.numberOfLines(QString(many, u'\n'), 100), many + 1);
    for (const qreal width : {-1.0, std::nan("")}) {
        EXPECT_EQ(metrics.elided(QStringLiteral("a b"), width, Qt::ElideMiddle), QString());
        EXPECT_EQ(metrics.numberOfLines(QStringLiteral("a b"), width), 2);
    }
    const qreal room = metrics.size(QStringLiteral("a  ")).width() - 1;
    EXPECT_EQ(metrics.fittingLength(QStringLiteral("a\r\nb"), room), 1) << "CR LF is one character";
    EXPECT_EQ(metrics.elided(QStringLiteral("a\tb\r\n"), TextMetrics::unlimited, Qt::ElideLeft),
              QStringLiteral("a b  "));
}
