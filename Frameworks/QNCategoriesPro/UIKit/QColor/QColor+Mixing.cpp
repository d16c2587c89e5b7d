#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Mixing.h"

#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Models.h"
#include "Frameworks/QNCategoriesPro/UIKit/QColor/SRGB.h"

#include <algorithm>
#include <array>

namespace {

using qn::MixingSpace;
using Parts = std::array<double, 3>;
using Matrix = std::array<Parts, 3>;

Parts operator*(const Matrix &matrix, const Parts &parts) {
    Parts made{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            made[row] += matrix[row][column] * parts[column];
    return made;
}

Parts each(Parts parts, double (*function)(double)) {
    for (double &part : parts)
        part = function(part);
    return parts;
}

// As published with Oklab: amounts of light, responses of the eye's cones, their cube roots, and back.
constexpr Matrix conesOfLight = {{{0.4122214708, 0.5363325363, 0.0514459929},
                                  {0.2119034982, 0.6806995451, 0.1073969566},
                                  {0.0883024619, 0.2817188376, 0.6299787005}}};
constexpr Matrix oklabOfCones = {{{0.2104542553, 0.7936177850, -0.0040720468},
                                  {1.9779984951, -2.4285922050, 0.4505937099},
                                  {0.0259040371, 0.7827717662, -0.8086757660}}};
constexpr Matrix conesOfOklab = {
    {{1, 0.3963377774, 0.2158037573}, {1, -0.1055613458, -0.0638541728}, {1, -0.0894841775, -1.2914855480}}};
constexpr Matrix lightOfCones = {{{4.0767416621, -3.3077115913, 0.2309699292},
                                  {-1.2684380046, 2.6097574011, -0.3413193965},
                                  {-0.0041960863, -0.7034186147, 1.7076147010}}};

Parts partsOf(const QColor &color, MixingSpace space) {
    const Parts stored = {color.redF(), color.greenF(), color.blueF()};
    if (space == MixingSpace::sRGB)
        return stored;
    const Parts light = each(stored, qn::linearFromSRGB);
    return space == MixingSpace::linear ? light : oklabOfCones * each(conesOfLight * light, std::cbrt);
}

QColor colorOf(Parts parts, MixingSpace space, double alpha) {
    if (space == MixingSpace::oklab)
        parts = lightOfCones * each(conesOfOklab * parts, [](double root) { return root * root * root; });
    if (space != MixingSpace::sRGB)
        parts = each(parts, qn::srgbFromLinear);
    const auto inRange = [](double part) { return static_cast<float>(std::clamp(part, 0.0, 1.0)); };
    return QColor::fromRgbF(inRange(parts[0]), inRange(parts[1]), inRange(parts[2]), inRange(alpha));
}

} // namespace

QColor qn::mixed(const QColor &one, const QColor &other, double share, MixingSpace space) {
    if (!one.isValid() || !other.isValid() || std::isnan(share))
        return {};
    share = std::clamp(share, 0.0, 1.0);
    const QColor from = one.toRgb(), to = other.toRgb();
    const double fromWeight = (1 - share) * from.alphaF(), toWeight = share * to.alphaF();
    const double alpha = fromWeight + toWeight;
    // Of two transparent colours neither is seen, but the one may be taken out of its transparency
    // afterwards.
    const double part = alpha > 0 ? toWeight / alpha : share;
    Parts parts = partsOf(from, space);
    const Parts target = partsOf(to, space);
    for (std::size_t at = 0; at < 3; ++at)
        parts[at] += (target[at] - parts[at]) * part;
    return colorOf(parts, space, alpha);
}

QColor qn::laidOver(const QColor &color, const QColor &ground) {
    return mixed(withAlpha(ground, 1), withAlpha(color, 1), color.alphaF());
}

QColor qn::lighter(const QColor &color, double amount) {
    return withLightness(color, hsl(color).lightness + amount);
}

QColor qn::darker(const QColor &color, double amount) {
    return lighter(color, -amount);
}

QColor qn::withLightness(const QColor &color, double lightness) {
    HSL parts = hsl(color);
    parts.lightness = std::clamp(lightness, 0.0, 1.0);
    return color.isValid() ? colorWith(parts) : QColor();
}

QColor qn::withAlpha(const QColor &color, double alpha) {
    if (!color.isValid() || std::isnan(alpha))
        return {};
    QColor made = color.toRgb();
    made.setAlphaF(static_cast<float>(std::clamp(alpha, 0.0, 1.0)));
    return made;
}
