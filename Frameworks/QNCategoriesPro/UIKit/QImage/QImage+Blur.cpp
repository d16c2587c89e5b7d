#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Blur.h"

#include "Frameworks/QNCategoriesPro/UIKit/QImage/GaussianBlur.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/ImageCanvas.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

/// Wider blurs are made of a smaller image, of which nobody sees that it was small.
QImage blurredPixels(const QImage &pixels, double deviation) {
    if (deviation <= qn::widestBlur)
        return qn::gaussianBlurred(pixels, deviation);
    const double factor = qn::widestBlur / deviation;
    const auto smaller = [factor](int side) { return std::max(1, qRound(side * factor)); };
    const QImage small = pixels.scaled(smaller(pixels.width()), smaller(pixels.height()),
                                       Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return qn::gaussianBlurred(small, qn::widestBlur)
        .scaled(pixels.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage withMargin(const QImage &pixels, double margin) {
    QImage made = qn::blankPixels(qn::pixelSize(QSizeF(pixels.size()) + QSizeF(2 * margin, 2 * margin), 1));
    if (!made.isNull())
        QPainter(&made).drawImage(QPointF(margin, margin), pixels);
    return made;
}

} // namespace

QImage qn::blurred(const QImage &image, double radius, BlurEdges edges) {
    if (!isUsable(image))
        return {};
    QImage pixels = pixelsOf(image);
    const double deviation = radius * image.devicePixelRatio() / 2;
    if (!(deviation > 0)) // nor NaN
        return likeOriginal(std::move(pixels), image);
    if (edges == BlurEdges::fading)
        pixels = withMargin(pixels, std::ceil(3 * deviation));
    if (!pixels.isNull())
        pixels = blurredPixels(pixels, deviation);
    return likeOriginal(std::move(pixels), image);
}
