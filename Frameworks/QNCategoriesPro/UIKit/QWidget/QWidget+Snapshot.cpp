#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Snapshot.h"

#include "Platform/Foundation/Data/NSData.h"

#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QWidget>

namespace {

QImage transparent(QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The part that there is.
QRect usablePart(QWidget &widget, const QRect &part) {
    if (!widget.isVisible()) { // painting it anywhere gives it the size that it would be shown with
        QImage scratch = transparent(QSize(1, 1));
        widget.render(&scratch, QPoint(), QRect(0, 0, 1, 1));
    }
    return part.isNull() ? widget.rect() : part & widget.rect();
}

/// The data of a file that `write` writes; none when it does not.
template <class Write>
Ref<NSData> fileFrom(const Write &write) {
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    if (!write(file))
        return nullptr;
    return NSData::dataWithBytes(file.data().constData(), static_cast<NSUInteger>(file.size()));
}

} // namespace

QImage qn::snapshot(QWidget &widget, const QRect &part, std::optional<qreal> pixelRatio) {
    const QRect place = usablePart(widget, part);
    const qreal ratio = pixelRatio.value_or(widget.devicePixelRatioF());
    if (place.isEmpty() || !(ratio > 0 && ratio <= finestSnapshot))
        return {};
    QImage image = transparent((QSizeF(place.size()) * ratio).toSize().expandedTo(QSize(1, 1)));
    if (image.isNull())
        return {};
    image.setDevicePixelRatio(ratio);
    widget.render(&image, QPoint(), place);
    return image;
}

Ref<NSData> qn::snapshotPNG(QWidget &widget, const QRect &part, std::optional<qreal> pixelRatio) {
    const QImage image = snapshot(widget, part, pixelRatio);
    return fileFrom([&](QBuffer &file) { return image.save(&file, "PNG"); });
}

Ref<NSData> qn::snapshotPDF(QWidget &widget, const QRect &part) {
    const QRect place = usablePart(widget, part);
    if (place.isEmpty())
        return nullptr;
    return fileFrom([&](QBuffer &file) {
        constexpr qreal pointsPerInch = 72;
        const int pixelsPerInch = widget.logicalDpiX();
        QPdfWriter writer(&file);
        writer.setResolution(pixelsPerInch);
        writer.setPageSize(QPageSize(QSizeF(place.size()) * pointsPerInch / pixelsPerInch, QPageSize::Point,
                                     QString(), QPageSize::ExactMatch));
        writer.setPageMargins(QMarginsF());
        QPainter painter(&writer);
        widget.render(&painter, QPoint(), place);
        return painter.end();
    });
}
