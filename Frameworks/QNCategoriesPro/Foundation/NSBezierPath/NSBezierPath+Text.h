// Bezier paths of texts: the outlines of their glyphs, to be filled, stroked or measured.
//
// The text is shaped and put in its directions as a painter does it. Characters whose glyphs are pictures,
// such as coloured emoji, have no outline. Holes stay open by the paths' fill rule, `Qt::WindingFill`.
//
// Threads: the main thread, or any other after a `QGuiApplication` has been made.
#pragma once

#include <QFont>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>

#pragma GCC visibility push(default)

namespace qn {

/// One line of text, from the left end of its baseline. Empty for the empty text, and when a coordinate is no
/// number (NaN or infinite).
QPainterPath textPath(const QString &text, const QFont &font, const QPointF &baseline = {});

/// Lines of text, separated by "\n", as a block in the rectangle. They are neither wrapped nor cut off, and
/// `Qt::AlignJustify` counts as left.
QPainterPath textPath(const QString &text, const QFont &font, const QRectF &rectangle,
                      Qt::Alignment alignment);

} // namespace qn

#pragma GCC visibility pop
