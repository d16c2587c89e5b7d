#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Models.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace {

/// Red, green and blue, and what the models have in common.
struct Components {
    explicit Components(const QColor &color) : Components(color.toRgb(), 0) {}

    double red, green, blue, alpha, most, least;

    double range() const { return most - least; }
    /// The corner of the hexagon of pure colours, and how far it is to the next one.
    double hue() const {
        if (range() <= 0)
            return 0;
        const double sixths = most == red     ? (green - blue) / range()
                              : most == green ? (blue - red) / range() + 2
                                              : (red - green) / range() + 4;
        return 60 * (sixths < 0 ? sixths + 6 : sixths);
    }

private:
    Components(const QColor &rgb, int)
        : red(rgb.redF()), green(rgb.greenF()), blue(rgb.blueF()), alpha(rgb.alphaF()),
          most(std::max({red, green, blue})), least(std::min({red, green, blue})) {}
};

bool areNumbers(std::initializer_list<double> parts) {
    return std::all_of(parts.begin(), parts.end(), [](double part) { return std::isfinite(part); });
}

double share(double part) {
    return std::clamp(part, 0.0, 1.0);
}

/// The colour of this hue, between a darkest and a brightest component.
QColor colorBetween(double least, double most, double hue, double alpha) {
    double sixths = std::fmod(hue / 60, 6);
    if (sixths < 0)
        sixths += 6;
    // Each component stays at its most for two sixths around its own place.
    const auto component = [=](double place) {
        const double away = std::abs(sixths - place);
        return static_cast<float>(share(least + (most - least) * share(2 - std::min(away, 6 - away))));
    };
    return QColor::fromRgbF(component(0), component(2), component(4), static_cast<float>(share(alpha)));
}

} // namespace

qn::HSL qn::hsl(const QColor &color) {
    const Components from(color);
    const double lightness = (from.most + from.least) / 2;
    const double room = 1 - std::abs(2 * lightness - 1);
    return {from.hue(), from.range() > 0 ? share(from.range() / room) : 0, lightness, from.alpha};
}

qn::HSB qn::hsb(const QColor &color) {
    const Components from(color);
    return {from.hue(), from.most > 0 ? from.range() / from.most : 0, from.most, from.alpha};
}

qn::CMYK qn::cmyk(const QColor &color) {
    const Components from(color);
    if (from.most <= 0)
        return {0, 0, 0, 1, from.alpha};
    const auto ink = [&](double light) { return 1 - light / from.most; };
    return {ink(from.red), ink(from.green), ink(from.blue), 1 - from.most, from.alpha};
}

QColor qn::colorWith(const HSL &parts) {
    if (!areNumbers({parts.hue, parts.saturation, parts.lightness, parts.alpha}))
        return {};
    const double lightness = share(parts.lightness);
    const double half = share(parts.saturation) * (1 - std::abs(2 * lightness - 1)) / 2;
    return colorBetween(lightness - half, lightness + half, parts.hue, parts.alpha);
}

QColor qn::colorWith(const HSB &parts) {
    if (!areNumbers({parts.hue, parts.saturation, parts.brightness, parts.alpha}))
        return {};
    const double most = share(parts.brightness);
    return colorBetween(most * (1 - share(parts.saturation)), most, parts.hue, parts.alpha);
}

QColor qn::colorWith(const CMYK &parts) {
    if (!areNumbers({parts.cyan, parts.magenta, parts.yellow, parts.black, parts.alpha}))
        return {};
    const auto light = [&](double ink) {
        return static_cast<float>((1 - share(ink)) * (1 - share(parts.black)));
    };
    return QColor::fromRgbF(light(parts.cyan), light(parts.magenta), light(parts.yellow),
                            static_cast<float>(share(parts.alpha)));
}
