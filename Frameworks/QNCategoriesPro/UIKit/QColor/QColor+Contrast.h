// How well one colour is read upon another: contrast as the Web Content Accessibility Guidelines define it.
//
//     if (qn::contrastRatio(text, ground) < qn::readableContrast)
//
// An invalid colour counts as black. Any thread.
#pragma once

#include <QColor>

#pragma GCC visibility push(default)

namespace qn {

/// The least contrasts of levels AA and AAA (success criteria 1.4.3 and 1.4.6), for ordinary texts and for
/// large ones: of 18 points, or of 14 points in bold.
inline constexpr double readableContrast = 4.5;
inline constexpr double readableContrastOfLargeText = 3;
inline constexpr double enhancedContrast = 7;
inline constexpr double enhancedContrastOfLargeText = 4.5;

/// From 0, black, to 1, white, in proportion to the light. Opacity is left out.
double relativeLuminance(const QColor &color);

/// From 1, no difference, to 21, black and white. What shines through a translucent text is the ground, which
/// counts as opaque; of two opaque colours, either may come first.
double contrastRatio(const QColor &text, const QColor &ground);

/// That of two colours of which the contrast on the ground is greater; the first of them when it is the same.
QColor readableOn(const QColor &ground, const QColor &one = Qt::black, const QColor &other = Qt::white);

} // namespace qn

#pragma GCC visibility pop
