// Images in other sizes, and parts of images.
//
//     const QImage cover = qn::resized(picture, {160, 90}, qn::ContentMode::aspectFill);
//
// Here and in all operations on images: sizes, points and radii are in logical pixels; the result keeps the
// image's device pixel ratio and colour space, and is a 32-bit image (`Format_ARGB32_Premultiplied`), unless
// said otherwise. A result is null when the image is, when a size is not positive or a number is none (NaN or
// infinite), and when it would have a side of more than 32,767 device pixels or more than 2^26 of them. Any
// thread.
#pragma once

#include <QImage>
#include <QRectF>
#include <QSizeF>

#pragma GCC visibility push(default)

namespace qn {

/// How content is put into bounds of another size.
enum class ContentMode {
    scaleToFill, ///< fills them, and is distorted
    aspectFit,   ///< as large as they can hold, in their centre
    aspectFill,  ///< as small as covers them, in their centre; what stands out is cut off
    center,      ///< as large as it is, in their centre, and the same at their edges:
    top,
    bottom,
    left,
    right,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
};

/// Where content of that size lies; an empty rectangle for empty content.
QRectF placeOf(const QSizeF &content, const QRectF &bounds, ContentMode mode);

/// An image of exactly that size with the image in it; what the mode leaves free is transparent.
QImage resized(const QImage &image, const QSizeF &size, ContentMode mode = ContentMode::scaleToFill);

/// The part of the image within a rectangle, whose edges are rounded to device pixels, in the image's own
/// format; null when it lies outside.
QImage cropped(const QImage &image, const QRectF &part);

} // namespace qn

#pragma GCC visibility pop
