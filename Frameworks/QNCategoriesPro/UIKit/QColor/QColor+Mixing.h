// Colours made of others.
//
//     const QColor muted = qn::mixed(text, ground, 0.35);
//
// Results are RGB colours. Of an invalid colour, or with a number that is none (NaN), they are invalid; other
// numbers out of their range count as its nearer end. Any thread.
#pragma once

#include <QColor>

#pragma GCC visibility push(default)

namespace qn {

/// Where the straight line lies along which one colour becomes another.
enum class MixingSpace {
    sRGB,   ///< between the stored components, as painters and gradients mix
    linear, ///< between amounts of light, as lamps mix
    oklab,  ///< in Oklab, in steps that look even: without greys between colours, or dark bands
};

/// From one colour, at share 0, to the other, at share 1. The less opaque colour has less influence
/// on the result.
QColor mixed(const QColor &one, const QColor &other, double share, MixingSpace space = MixingSpace::sRGB);

/// What is seen of a translucent colour on a ground, which counts as opaque; opaque.
QColor laidOver(const QColor &color, const QColor &ground);

/// Lightness, as in HSL, plus or minus an amount from 0 to 1; hue, saturation and opacity stay. Every colour
/// becomes white or black with 1.
QColor lighter(const QColor &color, double amount);
QColor darker(const QColor &color, double amount);
/// The colour with another lightness, from 0 to 1.
QColor withLightness(const QColor &color, double lightness);

/// The colour with another opacity, from 0, transparent, to 1.
QColor withAlpha(const QColor &color, double alpha);

} // namespace qn

#pragma GCC visibility pop
