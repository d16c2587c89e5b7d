// Blurred images. What sizes and results are is said in QImage+Resizing.h.
#pragma once

#include <QImage>

#pragma GCC visibility push(default)

namespace qn {

/// What lies beyond the edges of the image while it is blurred.
enum class BlurEdges {
    extended, ///< their pixels once more: the image keeps its size, and what was opaque stays so
    fading, ///< nothing: the image becomes larger on all sides, by one and a half times the radius rounded up
            ///< to device pixels, and fades out there
};

/// Blurred as if by a Gaussian function with half the radius as its standard deviation, as shadows of web
/// pages are. Up to a radius of 4 device pixels it is that function; for larger ones it is three box blurs,
/// which come close to it, and the time does not depend on the radius. A radius that is not positive leaves
/// the image as it is.
QImage blurred(const QImage &image, double radius, BlurEdges edges = BlurEdges::extended);

} // namespace qn

#pragma GCC visibility pop
