#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Contrast.h"

#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Mixing.h"
#include "Frameworks/QNCategoriesPro/UIKit/QColor/SRGB.h"

#include <utility>

double qn::relativeLuminance(const QColor &color) {
    const QColor rgb = color.toRgb();
    return 0.2126 * linearFromSRGB(rgb.redF()) + 0.7152 * linearFromSRGB(rgb.greenF()) +
           0.0722 * linearFromSRGB(rgb.blueF());
}

double qn::contrastRatio(const QColor &text, const QColor &ground) {
    double lighter = relativeLuminance(text.alpha() == 255 ? text : laidOver(text, ground));
    double darker = relativeLuminance(ground);
    if (lighter < darker)
        std::swap(lighter, darker);
    return (lighter + 0.05) / (darker + 0.05);
}

QColor qn::readableOn(const QColor &ground, const QColor &one, const QColor &other) {
    return contrastRatio(other, ground) > contrastRatio(one, ground) ? other : one;
}
