// Images of one colour or a gradient, other colours for images, and the colour of images. What sizes and
// results are is said in QImage+Resizing.h.
#pragma once

#include <QColor>
#include <QGradient>
#include <QImage>
#include <QSizeF>

#include <optional>

#pragma GCC visibility push(default)

namespace qn {

/// An image of one colour. Null for an invalid colour, or a pixel ratio that is not positive.
QImage filledImage(const QSizeF &size, const QColor &color, double devicePixelRatio = 1);

/// A straight gradient of colours at places from 0 to 1. It runs at that angle, in degrees, clockwise from
/// left to right (90: downwards), and ends in the corners, as on web pages. Null without colours.
QImage linearGradientImage(const QSizeF &size, const QGradientStops &colors, double angle = 0,
                           double devicePixelRatio = 1);

/// A round gradient, from the centre of the image to its corners. Null without colours.
QImage radialGradientImage(const QSizeF &size, const QGradientStops &colors, double devicePixelRatio = 1);

enum class Tint {
    silhouette, ///< every pixel has the colour, and its own opacity times that of the colour: for symbols
    shades, ///< components are multiplied: white becomes the colour, black stays, and so does opacity; the
            ///< less opaque the colour, the less is changed
};

/// The image in that colour. Null for an invalid colour.
QImage tinted(const QImage &image, const QColor &color, Tint tint = Tint::silhouette);

/// The mean of all pixels, of their stored components; opaque pixels count for more than translucent ones.
/// None for a null image.
std::optional<QColor> averageColor(const QImage &image);

} // namespace qn

#pragma GCC visibility pop
