// Colours as hue, saturation and lightness or brightness, and as printing inks.
//
//     qn::HSL parts = qn::hsl(color);
//     parts.hue += 180;
//     const QColor complement = qn::colorWith(parts);
//
// Hues are in degrees: 0 red, 120 green, 240 blue, any multiple of 360 more or less. All other parts are from
// 0 to 1, and what lies out of this range counts as its nearer end. With a number that is none (NaN or
// infinite) the colour is invalid. Colours come back exactly, at 8 bits a component. An invalid colour counts
// as black. Any thread.
#pragma once

#include <QColor>

#pragma GCC visibility push(default)

namespace qn {

/// Hue, saturation, lightness: lightness 0 is black, 1 is white, and 0.5 has the purest colours.
struct HSL {
    double hue = 0; ///< from 0 up to 360; 0 for greys
    double saturation = 0;
    double lightness = 0;
    double alpha = 1;
};

/// Hue, saturation, brightness, also called HSV: brightness 0 is black, 1 has the purest colours, and white.
struct HSB {
    double hue = 0; ///< from 0 up to 360; 0 for greys
    double saturation = 0;
    double brightness = 0;
    double alpha = 1;
};

/// Amounts of ink by the plain formula, with as much black as there is in all three; no ink profile.
struct CMYK {
    double cyan = 0, magenta = 0, yellow = 0, black = 0;
    double alpha = 1;
};

HSL hsl(const QColor &color);
HSB hsb(const QColor &color);
CMYK cmyk(const QColor &color);

QColor colorWith(const HSL &parts);
QColor colorWith(const HSB &parts);
QColor colorWith(const CMYK &parts);

} // namespace qn

#pragma GCC visibility pop
