#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Corners.h"

#include "Frameworks/QNCategoriesPro/UIKit/QImage/ImageCanvas.h"

#include <QPainter>

#include <algorithm>

namespace {

qn::CornerRadii shrunk(const qn::CornerRadii &radii, double by) {
    return {radii.topLeft - by, radii.topRight - by, radii.bottomRight - by, radii.bottomLeft - by};
}

/// The image with everything painted over that is nearer to its edges than the width of the border; what lies
/// beyond its corners, too, so that none of the image is left where these are cut off smoothly.
QImage framed(const QImage &image, const qn::CornerRadii &radii, const qn::ImageBorder &border) {
    QImage made = qn::likeOriginal(qn::pixelsOf(image), image);
    const QRectF bounds(QPointF(), made.deviceIndependentSize());
    const double width = std::min({border.width, bounds.width() / 2, bounds.height() / 2});
    QPainterPath frame;
    frame.addRect(bounds);
    frame.addPath(qn::roundedRectangle(bounds.adjusted(width, width, -width, -width),
                                       shrunk(qn::fitted(radii, bounds.size()), width)));
    QPainter painter(&made);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(frame, border.color); // but for the hole
    painter.end();
    return made;
}

} // namespace

QImage qn::rounded(const QImage &image, const CornerRadii &radii, const ImageBorder &border) {
    if (!isUsable(image))
        return {};
    QImage made = likeOriginal(blankPixels(image.size()), image);
    if (made.isNull())
        return {};
    const bool hasBorder = border.width > 0 && border.color.isValid();
    QPainter painter(&made);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(roundedRectangle(QRectF(QPointF(), made.deviceIndependentSize()), radii), Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.drawImage(QPointF(), hasBorder ? framed(image, radii, border) : image);
    painter.end();
    return made;
}

QImage qn::circular(const QImage &image, const ImageBorder &border) {
    if (!isUsable(image))
        return {};
    const int side = std::min(image.width(), image.height());
    const QImage square = image.copy((image.width() - side) / 2, (image.height() - side) / 2, side, side);
    return rounded(square, side / image.devicePixelRatio() / 2, border);
}

QImage qn::bordered(const QImage &image, const ImageBorder &border) {
    return rounded(image, 0, border);
}
