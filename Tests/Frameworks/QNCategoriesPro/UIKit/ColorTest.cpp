// Colours: texts, models, mixing and contrast, beside Qt's own conversions and published figures.
#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Contrast.h"
#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Mixing.h"
#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Models.h"
#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Text.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

#include <limits>

namespace {

using qn::AlphaDigits;
using qn::MixingSpace;

constexpr double none = std::numeric_limits<double>::quiet_NaN();

QColor anyColor(Random &random) {
    return QColor::fromRgba(static_cast<QRgb>(random()));
}

QString rewritten(const char *text, AlphaDigits alpha = AlphaDigits::last) {
    return qn::hexText(qn::colorWithText(QString::fromUtf8(text), alpha).value_or(QColor()));
}

} // namespace

TEST(Color, isReadFromDigitsAndNames) {
    EXPECT_EQ(rewritten("F80"), "#ff8800");
    EXPECT_EQ(rewritten("#f80c"), "#ff8800cc");
    EXPECT_EQ(rewritten("ff8800"), "#ff8800");
    EXPECT_EQ(rewritten("#80Ff8800"), "#80ff8800");
    EXPECT_EQ(rewritten("#80Ff8800", AlphaDigits::first), "#ff880080");
    EXPECT_EQ(rewritten("8f80", AlphaDigits::first), "#ff880088");
    EXPECT_EQ(rewritten("DarkOrange"), "#ff8c00");
    EXPECT_EQ(rewritten("transparent"), "#00000000");
    for (const char *bad : {"", "#", "f8", "#f8", "12345", "#1234567", "123456789", "#gg0000", " red", "red ",
                            "#red", "light blue", "##123", "0x1", "-12", "+ab", "１２３", "ＦＦＦ", "none"})
        EXPECT_FALSE(qn::colorWithText(QString::fromUtf8(bad))) << bad;
    EXPECT_FALSE(qn::colorWithText(QString(1 << 20, u'a')));
}

TEST(Color, isWrittenAsItIsRead) {
    Random random(1);
    for (int round = 0; round < 1000; ++round) {
        const QColor color = anyColor(random);
        for (const auto alpha : {AlphaDigits::last, AlphaDigits::first}) {
            EXPECT_EQ(qn::colorWithText(qn::hexText(color, alpha), alpha), color);
            EXPECT_EQ(qn::colorWithText(qn::shortHexText(color, alpha), alpha), color);
        }
    }
    EXPECT_EQ(qn::shortHexText(QColor(0x22, 0xAA, 0x66)), "#2a6");
    EXPECT_EQ(qn::shortHexText(QColor(0x22, 0xAA, 0x66, 0x88), AlphaDigits::first), "#82a6");
    EXPECT_EQ(qn::shortHexText(QColor(0x22, 0xAA, 0x67)), "#22aa67");
    for (const QString &name : QColor::colorNames()) {
        const auto color = qn::colorWithText(name);
        EXPECT_EQ(color, QColor(name));
        EXPECT_LE(qn::colorName(*color), name);
        EXPECT_EQ(qn::colorWithText(qn::colorName(*color)), color);
    }
    EXPECT_EQ(qn::colorName(Qt::cyan), "aqua");
    EXPECT_EQ(qn::colorName(QColor(1, 2, 3)) + qn::hexText(QColor()) + qn::shortHexText(QColor()), "");
}

TEST(Color, goesIntoEveryModelAndBack) {
    Random random(2);
    for (int round = 0; round < 2000; ++round) {
        const QColor color = round < 256 ? QColor(round, round, round) : anyColor(random);
        const auto hsl = qn::hsl(color);
        const auto hsb = qn::hsb(color);
        const auto cmyk = qn::cmyk(color);
        EXPECT_EQ(qn::colorWith(hsl).rgba(), color.rgba());
        EXPECT_EQ(qn::colorWith(hsb).rgba(), color.rgba());
        EXPECT_EQ(qn::colorWith(cmyk).rgba(), color.rgba());
        EXPECT_NEAR(hsl.hue, std::max(0.F, color.hslHueF()) * 360, 0.02);
        EXPECT_NEAR(hsl.lightness, color.lightnessF(), 1e-4);
        EXPECT_NEAR(hsb.saturation, color.hsvSaturationF(), 1e-4);
        EXPECT_NEAR(cmyk.magenta, color.magentaF(), 1e-4);
    }
    EXPECT_EQ(qn::colorWith(qn::HSL{-240 - 720, 7, 0.5}), QColor(Qt::green));
    EXPECT_EQ(qn::colorWith(qn::HSB{1e300, -1, 2, 9}), QColor(Qt::white));
    EXPECT_FALSE(qn::colorWith(qn::HSL{none, 0, 0}).isValid());
    EXPECT_FALSE(qn::colorWith(qn::CMYK{0, 0, 0, 0, 1 / 0.0}).isValid());
}

TEST(Color, isMixedInItsSpace) {
    EXPECT_EQ(qn::hexText(qn::mixed(Qt::black, Qt::white, 0.5)), "#808080");
    EXPECT_EQ(qn::hexText(qn::mixed(Qt::black, Qt::white, 0.5, MixingSpace::linear)), "#bcbcbc");
    EXPECT_EQ(qn::hexText(qn::mixed(Qt::black, Qt::white, 0.5, MixingSpace::oklab)), "#636363");
    EXPECT_EQ(qn::hexText(qn::mixed(Qt::red, Qt::transparent, 0.5)), "#ff000080")
        << "its black has no weight";
    Random random(3);
    for (const auto space : {MixingSpace::sRGB, MixingSpace::linear, MixingSpace::oklab})
        for (int round = 0; round < 300; ++round) {
            const QColor one = anyColor(random), other = anyColor(random);
            EXPECT_EQ(qn::hexText(qn::mixed(one, other, -1, space)), qn::hexText(one));
            EXPECT_EQ(qn::hexText(qn::mixed(one, other, 1e9, space)), qn::hexText(other));
            EXPECT_EQ(qn::hexText(qn::mixed(one, other, 0.25, space)),
                      qn::hexText(qn::mixed(other, one, 0.75, space)));
        }
    EXPECT_FALSE(qn::mixed(Qt::red, Qt::blue, none).isValid() ||
                 qn::mixed(QColor(), Qt::blue, 0.5).isValid());
    EXPECT_EQ(qn::hexText(qn::lighter(QColor(0x80, 0, 0), 0.2)), "#e60000");
    EXPECT_EQ(qn::darker(Qt::red, 7), QColor(Qt::black));
    EXPECT_FALSE(qn::lighter(QColor(), 0.1).isValid() || qn::withAlpha(Qt::red, none).isValid());
}

// https://www.w3.org/TR/WCAG21/#dfn-contrast-ratio, and the pairs of its explanations.
TEST(Color, hasThePublishedContrasts) {
    EXPECT_NEAR(qn::contrastRatio(Qt::black, Qt::white), 21, 1e-6);
    EXPECT_EQ(qn::contrastRatio(Qt::red, Qt::red), 1);
    EXPECT_NEAR(qn::contrastRatio(QColor("#777777"), Qt::white), 4.478, 1e-3);
    EXPECT_NEAR(qn::contrastRatio(Qt::white, QColor("#767676")), 4.542, 1e-3);
    EXPECT_NEAR(qn::contrastRatio(Qt::red, Qt::white), 3.998, 1e-3);
    EXPECT_NEAR(qn::contrastRatio(Qt::blue, Qt::white), 8.592, 1e-3);
    EXPECT_NEAR(qn::relativeLuminance(Qt::green), 0.7152, 1e-6);
    const QColor faint(0, 0, 0, 0x40);
    EXPECT_NEAR(qn::contrastRatio(faint, Qt::white), qn::contrastRatio(QColor("#bfbfbf"), Qt::white), 0.01);
    EXPECT_EQ(qn::readableOn(QColor("#767676")), QColor(Qt::black));
    EXPECT_EQ(qn::readableOn(QColor("#757575")), QColor(Qt::white));
    EXPECT_EQ(qn::readableOn(Qt::yellow, Qt::white, Qt::blue), QColor(Qt::blue));
}
