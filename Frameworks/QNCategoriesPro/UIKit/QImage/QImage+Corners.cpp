#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Corners.h"

#include "Frameworks/QNCategoriesPro/UIKit/QImage/ImageCanvas.h"

#include <QPainter>

#include <algorithm>

namespace {

qn::CornerRadii shrunk(const qn::CornerRadii &radii, double by) {
    return {radii.topLeft - by, radii.topRight - by, radii.bottomRight - by, radii.bottomLeft - by};
}

/// The ring between the outline and one that is nowhere nearer to it than the width.
void drawBorder(QPainter &painter, const QRectF &bounds, const qn::CornerRadii &radii,
                const qn::ImageBorder &border) {
    const double width = std::min({border.width, bounds.width() / 2, bounds.height() / 2});
    const QRectF inside = bounds.adjusted(width, width, -width, -width);
    QPainterPath ring = qn::roundedRectangle(bounds, radii);
    ring.addPath(qn::roundedRectangle(inside, shrunk(radii, width)));
    ring.setFillRule(Qt::OddEvenFill);
    painter.fillPath(ring, border.color);
}

} // namespace

QImage qn::rounded(const QImage &image, const CornerRadii &radii, const ImageBorder &border) {
    if (!isUsable(image))
        return {};
    QImage made = likeOriginal(blankPixels(image.size()), image);
    if (made.isNull())
        return {};
    const QRectF bounds(QPointF(), made.deviceIndependentSize());
    QPainter painter(&made);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(roundedRectangle(bounds, radii), Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.drawImage(QPointF(), image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (border.width > 0 && border.color.isValid())
        drawBorder(painter, bounds, radii, border);
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
