// What operations on images share: the pixels they work on, and the limits of what they make.
#pragma once

#include <QImage>
#include <QSizeF>

namespace qn {

/// Whether an image may have that size in pixels: there are some, no side has more than 32,767 of them, which
/// is as far as a painter reaches, and there are at most 2^26 in all, 256 MB.
bool canBeMade(const QSize &size);

/// A transparent image of that size in pixels; null when it cannot be made.
QImage blankPixels(const QSize &size);

/// The image in the format that operations work on, with a pixel ratio of 1.
QImage pixelsOf(const QImage &image);

/// Whether there are pixels, and the ratio to logical pixels is a positive number.
bool isUsable(const QImage &image);

/// The result with the pixel ratio and the colour space of the image it was made from.
QImage likeOriginal(QImage made, const QImage &original);

/// A size in pixels from one in logical pixels, rounded; (0, 0) from numbers that cannot be one.
QSize pixelSize(const QSizeF &logicalSize, double devicePixelRatio);

} // namespace qn
