// Pictures beside the tests, made once and looked at, and compared with what is drawn now.
#pragma once

#include "Tests/Support/Testing.h"

#include <QColor>
#include <QDir>
#include <QImage>

/// The part of the pixels that have a component which is further from the other image's than the tolerance, 0
/// to 255; 1 for images of different sizes.
inline double differingShare(const QImage &one, const QImage &other, int tolerance) {
    if (one.size() != other.size() || one.isNull())
        return 1;
    int differing = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y), b = other.pixel(x, y);
            differing +=
                std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                          std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))}) > tolerance;
        }
    return static_cast<double>(differing) / (one.width() * one.height());
}

/// Rasterizers may differ at the edges of shapes. What was drawn is left in the working folder when it
/// differs.
inline void expectPicture(const QImage &drawn, const QString &name) {
    const QImage expected(QStringLiteral(PICTURES "/") + name);
    if (differingShare(drawn, expected, 12) <= 0.002)
        return;
    drawn.save(name);
    ADD_FAILURE() << "not as in " << name.toStdString() << ": see "
                  << QDir().absoluteFilePath(name).toStdString();
}
