// Small pictures of image files, of all formats that Qt has plug-ins for.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSizeF>
#include <QString>

#pragma GCC visibility push(default)

namespace qn {

/// The image in the file, as large as fits into a size in logical pixels, and never larger than it is in the
/// file, but for drawings without pixels, such as SVG. It is turned as the file says, and the first one of
/// several. Formats that can, JPEG among them, decode no more than they need for the size.
///
/// Null when the file cannot be read or decoded, when the size or the pixel ratio is not positive, and for an
/// image that would take more than `QImageReader::allocationLimit` while it is decoded.
QImage thumbnailOfFile(const QString &path, const QSizeF &size, double devicePixelRatio = 1);

/// The same of the contents of a file.
QImage thumbnailOfData(const QByteArray &data, const QSizeF &size, double devicePixelRatio = 1);

} // namespace qn

#pragma GCC visibility pop
