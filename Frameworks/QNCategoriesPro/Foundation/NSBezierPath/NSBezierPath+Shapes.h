// Bezier paths of common shapes. A path is Qt's `QPainterPath`.
//
//     painter.fillPath(qn::roundedRectangle(bounds, {8, 8, 0, 0}), ground);
//
// Lengths are in the units of the painter, angles in degrees, clockwise where y grows downwards. A path is
// empty when a size is not positive or a number is none (NaN or infinite), unless said otherwise. All paths
// are closed. Any thread.
#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#pragma GCC visibility push(default)

namespace qn {

/// The radius of each corner of a rectangle; one number is that of all four.
struct CornerRadii {
    CornerRadii(double all = 0) : CornerRadii(all, all, all, all) {}
    CornerRadii(double topLeftRadius, double topRightRadius, double bottomRightRadius,
                double bottomLeftRadius)
        : topLeft(topLeftRadius), topRight(topRightRadius), bottomRight(bottomRightRadius),
          bottomLeft(bottomLeftRadius) {}

    double topLeft, topRight, bottomRight, bottomLeft;
};

/// Where the radii along a side are longer than the side, all four become smaller by the same factor, as on
/// web pages. Radii that are negative or no numbers count as 0; infinite ones are larger than any other.
CornerRadii fitted(const CornerRadii &radii, const QSizeF &size);

/// With radii that fit, as above.
QPainterPath roundedRectangle(const QRectF &rectangle, const CornerRadii &radii);

/// A polygon of 3 to 10,000 equal sides, with its corners on a circle; empty for another number of them. Its
/// first corner is at the top, or at that angle from there.
QPainterPath regularPolygon(const QPointF &center, double radius, int sides, double angle = 0);

/// A star of 2 to 10,000 points, the first of which is at the top, or at that angle from there. The outer
/// radius is that of its points, the inner one that of the corners between them.
QPainterPath star(const QPointF &center, double outerRadius, double innerRadius, int points,
                  double angle = 0);

struct ArrowShape {
    double shaftWidth = 2;
    double headWidth = 8;
    double headLength = 8; ///< that of the whole arrow, if it is not as long
};

/// A straight arrow with a triangle as its head.
QPainterPath arrow(const QPointF &tail, const QPointF &tip, const ArrowShape &shape = {});

} // namespace qn

#pragma GCC visibility pop
