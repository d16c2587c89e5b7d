#include "Platform/Interface/Ink.h"

#include <QColor>
#include <QFontMetricsF>

#include <cmath>

namespace {

constexpr double readable = 4.5;
constexpr double wished = 0.35; // share of the background, where that is readable
constexpr double step = 0.05;

double luminance(const QColor &color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &one, const QColor &other) {
    const double a = luminance(one) + 0.05, b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

QColor mixed(const QColor &one, const QColor &other, double share) {
    const auto part = [share](float from, float to) {
        return static_cast<float>(from + (to - from) * share);
    };
    return QColor::fromRgbF(part(one.redF(), other.redF()), part(one.greenF(), other.greenF()),
                            part(one.blueF(), other.blueF()));
}

QFont scaled(QFont font, double factor) {
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else
        font.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * factor)));
    return font;
}

} // namespace

QColor mutedInk(const QColor &text, const QColor &ground) {
    for (double share = wished; share > 0; share -= step)
        if (const QColor color = mixed(text, ground, share).toRgb(); contrast(color, ground) >= readable)
            return color;
    return text;
}

QPalette readableColors(const QPalette &desktop) {
    QPalette colors;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor text = desktop.color(group, QPalette::HighlightedText);
        QColor ground = desktop.color(group, QPalette::Highlight);
        const QColor away = luminance(text) > luminance(ground) ? Qt::black : Qt::white;
        for (double share = step; contrast(text, ground) < readable && share <= 1; share += step)
            ground = mixed(desktop.color(group, QPalette::Highlight), away, share).toRgb();
        colors.setColor(group, QPalette::Highlight, ground);
        colors.setColor(group, QPalette::PlaceholderText,
                        mutedInk(desktop.color(group, QPalette::Text), desktop.color(group, QPalette::Base)));
    }
    return colors;
}

QFont titleFont(QFont base) {
    base = scaled(base, 1.25);
    base.setWeight(QFont::DemiBold);
    return base;
}

QFont noteFont(const QFont &base) {
    return scaled(base, 0.9);
}

int measure(const QFont &font, int pixels) {
    constexpr double usualHeight = 16;
    return static_cast<int>(std::lround(pixels * std::max(1.0, QFontMetricsF(font).height() / usualHeight)));
}
