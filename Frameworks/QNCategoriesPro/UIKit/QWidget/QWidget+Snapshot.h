// Pictures of widgets as they would be painted now, shown or not, with all that is in them.
//
//     qn::snapshot(window).save("window.png");
//
// `part` is in logical pixels of the widget; a null rectangle stands for the whole widget, and what is
// outside the widget is left out. Nothing is painted where the widget is transparent. A widget that was never
// shown gets the size that it would be shown with. Threads: the main thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <QImage>
#include <QRect>

#include <optional>

#pragma GCC visibility push(default)

class NSData;
class QWidget;

namespace qn {

/// The greatest number of a picture's pixels to a logical pixel, in each direction.
inline constexpr qreal finestSnapshot = 16;

/// With that many pixels to a logical pixel, which is also the picture's own ratio: by default as many as the
/// screen has. A null picture for an empty part, for a ratio that is not above 0 and up to `finestSnapshot`,
/// and when there is not enough memory.
QImage snapshot(QWidget &widget, const QRect &part = {}, std::optional<qreal> pixelRatio = std::nullopt);

/// The same as a PNG file; none instead of a null picture.
Ref<NSData> snapshotPNG(QWidget &widget, const QRect &part = {},
                        std::optional<qreal> pixelRatio = std::nullopt);

/// The same as a PDF file with one page of that size. Texts and lines stay sharp at every scale; what has an
/// effect (`Decoration`, a fade) is a picture. None for an empty part.
Ref<NSData> snapshotPDF(QWidget &widget, const QRect &part = {});

} // namespace qn

#pragma GCC visibility pop
