#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Color.h"

#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Mixing.h"
#include "Frameworks/QNCategoriesPro/UIKit/QImage/ImageCanvas.h"

#include <QBrush>
#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>

#include <cmath>
#include <numbers>

namespace {

/// Filled by a painter that counts in device pixels.
QImage filledBy(const QBrush &brush, const QSize &size, double ratio) {
    QImage made = qn::blankPixels(size);
    if (made.isNull())
        return made;
    QPainter painter(&made);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(made.rect(), brush);
    painter.end();
    made.setDevicePixelRatio(ratio);
    return made;
}

/// A painter's mode of that name would also colour what is transparent.
void multiply(QImage &pixels, const QColor &color) {
    const QColor paint = qn::laidOver(color, Qt::white);
    const auto times = [](int part, int factor) { return (part * factor + 127) / 255; };
    for (int y = 0; y < pixels.height(); ++y) {
        auto *const row = reinterpret_cast<QRgb *>(pixels.scanLine(y));
        for (int x = 0; x < pixels.width(); ++x)
            row[x] = qRgba(times(qRed(row[x]), paint.red()), times(qGreen(row[x]), paint.green()),
                           times(qBlue(row[x]), paint.blue()), qAlpha(row[x]));
    }
}

} // namespace

QImage qn::filledImage(const QSizeF &size, const QColor &color, double devicePixelRatio) {
    return color.isValid() ? filledBy(color, pixelSize(size, devicePixelRatio), devicePixelRatio) : QImage();
}

QImage qn::linearGradientImage(const QSizeF &size, const QGradientStops &colors, double angle,
                               double devicePixelRatio) {
    if (colors.isEmpty() || !std::isfinite(angle))
        return {};
    const QSize pixels = pixelSize(size, devicePixelRatio);
    const double turn = std::fmod(angle, 360) * std::numbers::pi / 180;
    const QPointF direction(std::cos(turn), std::sin(turn));
    const double reach = std::abs(pixels.width() * direction.x()) + std::abs(pixels.height() * direction.y());
    const QPointF center(pixels.width() / 2.0, pixels.height() / 2.0);
    QLinearGradient gradient(center - direction * reach / 2, center + direction * reach / 2);
    gradient.setStops(colors);
    return filledBy(gradient, pixels, devicePixelRatio);
}

QImage qn::radialGradientImage(const QSizeF &size, const QGradientStops &colors, double devicePixelRatio) {
    if (colors.isEmpty())
        return {};
    const QSize pixels = pixelSize(size, devicePixelRatio);
    const QPointF center(pixels.width() / 2.0, pixels.height() / 2.0);
    QRadialGradient gradient(center, std::hypot(center.x(), center.y()));
    gradient.setStops(colors);
    return filledBy(gradient, pixels, devicePixelRatio);
}

QImage qn::tinted(const QImage &image, const QColor &color, Tint tint) {
    if (!isUsable(image) || !color.isValid())
        return {};
    QImage made = pixelsOf(image);
    if (tint == Tint::shades) {
        multiply(made, color);
    } else {
        QPainter painter(&made);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(made.rect(), color);
    }
    return likeOriginal(std::move(made), image);
}

std::optional<QColor> qn::averageColor(const QImage &image) {
    if (image.isNull())
        return std::nullopt;
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    quint64 red = 0, green = 0, blue = 0, alpha = 0;
    for (int y = 0; y < pixels.height(); ++y) {
        const auto *const row = reinterpret_cast<const QRgb *>(pixels.constScanLine(y));
        for (int x = 0; x < pixels.width(); ++x) {
            red += static_cast<quint64>(qRed(row[x]));
            green += static_cast<quint64>(qGreen(row[x]));
            blue += static_cast<quint64>(qBlue(row[x]));
            alpha += static_cast<quint64>(qAlpha(row[x]));
        }
    }
    if (alpha == 0)
        return QColor(Qt::transparent);
    // Stored components are already multiplied by their opacity.
    const auto part = [&](quint64 sum) { return static_cast<float>(sum) / static_cast<float>(alpha); };
    const double full = 255.0 * pixels.width() * pixels.height();
    return QColor::fromRgbF(part(red), part(green), part(blue),
                            static_cast<float>(static_cast<double>(alpha) / full));
}
