#include "Frameworks/QNCategoriesPro/UIKit/QImage/QImage+Files.h"

#include "Frameworks/QNCategoriesPro/UIKit/QImage/ImageCanvas.h"

#include <QBuffer>
#include <QImageReader>

namespace {

QSize fitting(const QSize &content, const QSize &bounds, bool canGrow) {
    if (!canGrow && content.width() <= bounds.width() && content.height() <= bounds.height())
        return content;
    return QSizeF(content).scaled(bounds, Qt::KeepAspectRatio).toSize().expandedTo({1, 1});
}

QImage thumbnail(QImageReader &reader, const QSizeF &size, double ratio) {
    const QSize bounds = qn::pixelSize(size, ratio);
    if (bounds.isEmpty())
        return {};
    reader.setAutoTransform(true);
    const bool turns = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const bool isDrawing = reader.format().startsWith("svg");
    if (const QSize content = reader.size(); !content.isEmpty()) // it is scaled before it is turned
        reader.setScaledSize(fitting(content, turns ? bounds.transposed() : bounds, isDrawing));
    QImage made = reader.read();
    if (made.width() > bounds.width() ||
        made.height() > bounds.height()) // of a format that does not tell sizes
        made = made.scaled(bounds, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    made.setDevicePixelRatio(ratio);
    return made;
}

} // namespace

QImage qn::thumbnailOfFile(const QString &path, const QSizeF &size, double devicePixelRatio) {
    QImageReader reader(path);
    return thumbnail(reader, size, devicePixelRatio);
}

QImage qn::thumbnailOfData(const QByteArray &data, const QSizeF &size, double devicePixelRatio) {
    QBuffer buffer;
    buffer.setData(data);
    QImageReader reader(&buffer);
    return thumbnail(reader, size, devicePixelRatio);
}
