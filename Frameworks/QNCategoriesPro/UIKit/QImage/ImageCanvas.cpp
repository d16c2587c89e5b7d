#include "Frameworks/QNCategoriesPro/UIKit/QImage/ImageCanvas.h"

#include <QColorSpace>

#include <cmath>

namespace {

constexpr int longestSide = 32767;
constexpr qint64 mostPixels = qint64{1} << 26;

int roundedSide(double side) {
    return side >= 0 && side <= longestSide ? qRound(side) : 0; // 0 for NaN, too
}

} // namespace

bool qn::canBeMade(const QSize &size) {
    return !size.isEmpty() && size.width() <= longestSide && size.height() <= longestSide &&
           qint64{size.width()} * size.height() <= mostPixels;
}

QImage qn::blankPixels(const QSize &size) {
    if (!canBeMade(size))
        return {};
    QImage made(size, QImage::Format_ARGB32_Premultiplied);
    if (!made.isNull()) // there may be no memory
        made.fill(Qt::transparent);
    return made;
}

QImage qn::pixelsOf(const QImage &image) {
    QImage pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    pixels.setDevicePixelRatio(1);
    return pixels;
}

bool qn::isUsable(const QImage &image) {
    const double ratio = image.devicePixelRatio();
    return !image.isNull() && std::isfinite(ratio) && ratio > 0;
}

QImage qn::likeOriginal(QImage made, const QImage &original) {
    made.setDevicePixelRatio(original.devicePixelRatio());
    if (original.colorSpace().isValid())
        made.setColorSpace(original.colorSpace());
    return made;
}

QSize qn::pixelSize(const QSizeF &logicalSize, double devicePixelRatio) {
    return {roundedSide(logicalSize.width() * devicePixelRatio),
            roundedSide(logicalSize.height() * devicePixelRatio)};
}
