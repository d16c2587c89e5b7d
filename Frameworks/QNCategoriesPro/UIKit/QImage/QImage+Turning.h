// Images turned and mirrored. What sizes and results are is said in QImage+Resizing.h.
#pragma once

#include <QImage>

#pragma GCC visibility push(default)

namespace qn {

/// Rotated about its centre, by degrees, clockwise. The result is as large as holds all of it, and
/// transparent around it; by multiples of 90 degrees, every pixel stays as it is.
QImage rotated(const QImage &image, double degrees);

/// With left and right (horizontal) or top and bottom (vertical) exchanged, in the image's own format.
QImage flipped(const QImage &image, Qt::Orientation orientation);

} // namespace qn

#pragma GCC visibility pop
