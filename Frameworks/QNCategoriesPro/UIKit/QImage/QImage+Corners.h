// Images with rounded corners and borders. What sizes and results are is said in QImage+Resizing.h.
//
//     const QImage face = qn::circular(photo, {2, Qt::white});
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSBezierPath/NSBezierPath+Shapes.h"

#include <QColor>
#include <QImage>

#pragma GCC visibility push(default)

namespace qn {

/// A line along the edges of an image, within it. None when the width is not positive or the colour invalid.
struct ImageBorder {
    double width = 0;
    QColor color = {};
};

/// With those corners cut off, smoothly. Radii that are too large become smaller, as in `roundedRectangle`.
QImage rounded(const QImage &image, const CornerRadii &radii, const ImageBorder &border = {});

/// The largest circle in the centre of the image.
QImage circular(const QImage &image, const ImageBorder &border = {});

/// With square corners.
QImage bordered(const QImage &image, const ImageBorder &border);

} // namespace qn

#pragma GCC visibility pop
