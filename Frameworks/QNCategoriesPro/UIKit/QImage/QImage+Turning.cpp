#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Turning.h"

#include "Frameworks/QNCategoriesPro/UIKit/QImage/ImageCanvas.h"

#include <QPainter>
#include <QTransform>

#include <cmath>

namespace {

constexpr double almostNothing = 1e-6; // of a pixel: an error of calculation

QImage turned(const QImage &pixels, const QTransform &turn) {
    const QRectF bounds = turn.mapRect(QRectF(pixels.rect()));
    const QSizeF size(std::ceil(bounds.width() - almostNothing), std::ceil(bounds.height() - almostNothing));
    QImage made = qn::blankPixels(qn::pixelSize(size, 1));
    if (made.isNull())
        return made;
    QPainter painter(&made);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(made.width() / 2.0, made.height() / 2.0);
    painter.setTransform(turn, true);
    painter.drawImage(QPointF(-pixels.width() / 2.0, -pixels.height() / 2.0), pixels);
    return made;
}

} // namespace

QImage qn::rotated(const QImage &image, double degrees) {
    if (!isUsable(image) || !std::isfinite(degrees))
        return {};
    const double angle = std::fmod(degrees, 360);
    const QTransform turn = QTransform().rotate(angle);
    const QImage pixels = pixelsOf(image);
    if (std::fmod(angle, 90) == 0)
        return likeOriginal(pixels.transformed(turn), image);
    return likeOriginal(turned(pixels, turn), image);
}

QImage qn::flipped(const QImage &image, Qt::Orientation orientation) {
    return isUsable(image) ? image.mirrored(orientation == Qt::Horizontal, orientation == Qt::Vertical)
                           : QImage();
}
