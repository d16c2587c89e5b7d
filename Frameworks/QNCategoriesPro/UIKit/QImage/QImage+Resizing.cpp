#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Resizing.h"

#include "Frameworks/QNCategoriesPro/UIKit/QImage/ImageCanvas.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

using qn::ContentMode;

QSizeF sizeIn(const QSizeF &content, const QSizeF &bounds, ContentMode mode) {
    switch (mode) {
    case ContentMode::scaleToFill:
        return bounds;
    case ContentMode::aspectFit:
        return content.scaled(bounds, Qt::KeepAspectRatio);
    case ContentMode::aspectFill:
        return content.scaled(bounds, Qt::KeepAspectRatioByExpanding);
    default:
        return content;
    }
}

/// The shares of the free room that lie left of the content and above it.
QPointF sharesOfRoom(ContentMode mode) {
    switch (mode) {
    case ContentMode::top:
        return {0.5, 0};
    case ContentMode::bottom:
        return {0.5, 1};
    case ContentMode::left:
        return {0, 0.5};
    case ContentMode::right:
        return {1, 0.5};
    case ContentMode::topLeft:
        return {0, 0};
    case ContentMode::topRight:
        return {1, 0};
    case ContentMode::bottomLeft:
        return {0, 1};
    case ContentMode::bottomRight:
        return {1, 1};
    default:
        return {0.5, 0.5};
    }
}

QRect roundedEdges(const QRectF &place) {
    const QPoint topLeft = place.topLeft().toPoint(), bottomRight = place.bottomRight().toPoint();
    return {topLeft,
            QSize(std::max(1, bottomRight.x() - topLeft.x()), std::max(1, bottomRight.y() - topLeft.y()))};
}

/// Draws what can be seen of the pixels, which lie at that place of the canvas. The rest is not scaled, since
/// it can be far larger than the canvas.
void drawInto(QImage &canvas, const QImage &pixels, const QRectF &place) {
    const QRectF seen = place & QRectF(canvas.rect());
    const double across = place.width() / pixels.width(), down = place.height() / pixels.height();
    const QRectF part((seen.left() - place.left()) / across, (seen.top() - place.top()) / down,
                      seen.width() / across, seen.height() / down);
    QPainter painter(&canvas);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (across >= 1 && down >= 1)
        return painter.drawImage(QRectF(roundedEdges(seen)), pixels, part);
    // A painter would leave pixels out.
    const QRect whole = part.toAlignedRect() & pixels.rect();
    const QRect target = roundedEdges({place.left() + whole.left() * across, place.top() + whole.top() * down,
                                       whole.width() * across, whole.height() * down});
    painter.drawImage(target.topLeft(), pixels.copy(whole).scaled(target.size(), Qt::IgnoreAspectRatio,
                                                                  Qt::SmoothTransformation));
}

bool isFinite(const QRectF &rectangle) {
    return std::isfinite(rectangle.left()) && std::isfinite(rectangle.top()) &&
           std::isfinite(rectangle.right()) && std::isfinite(rectangle.bottom());
}

} // namespace

QRectF qn::placeOf(const QSizeF &content, const QRectF &bounds, ContentMode mode) {
    if (content.isEmpty())
        return {};
    const QSizeF size = sizeIn(content, bounds.size(), mode);
    const QPointF shares = sharesOfRoom(mode);
    return {QPointF(bounds.left() + (bounds.width() - size.width()) * shares.x(),
                    bounds.top() + (bounds.height() - size.height()) * shares.y()),
            size};
}

QImage qn::resized(const QImage &image, const QSizeF &size, ContentMode mode) {
    if (!isUsable(image))
        return {};
    const QSize target = pixelSize(size, image.devicePixelRatio());
    if (!canBeMade(target))
        return {};
    const QImage pixels = pixelsOf(image);
    if (mode == ContentMode::scaleToFill)
        return likeOriginal(pixels.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation), image);
    QImage made = blankPixels(target);
    QRectF place = placeOf(pixels.size(), QRectF(QPointF(), target), mode);
    place.moveTopLeft(place.topLeft().toPoint()); // what is not scaled stays sharp
    if (!made.isNull())
        drawInto(made, pixels, place);
    return likeOriginal(std::move(made), image);
}

QImage qn::cropped(const QImage &image, const QRectF &part) {
    if (!isUsable(image) || !isFinite(part))
        return {};
    const double ratio = image.devicePixelRatio();
    const QRectF pixels(part.topLeft() * ratio, part.size() * ratio);
    const QRectF inside = pixels.normalized() & QRectF(image.rect());
    const QRect rounded(inside.topLeft().toPoint(), inside.bottomRight().toPoint() - QPoint(1, 1));
    return rounded.isEmpty() ? QImage() : image.copy(rounded);
}
