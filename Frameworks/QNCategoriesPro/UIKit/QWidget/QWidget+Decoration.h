// What is drawn around a widget and its contents: rounded corners, border, shadow; and how opaque all of it
// is.
//
//     qn::setDecoration(card, {.cornerRadius = 8, .border = qn::Border{}, .shadow = qn::Shadow{}});
//
// A decorated or translucent widget is painted into a picture first, which costs as much memory as the widget
// has pixels, and about twice the time. All others cost nothing. It has a QGraphicsEffect for that, and one
// that it had of another kind is deleted.
//
// Lengths are logical pixels. What is no number counts as 0. Threads: the main thread.
#pragma once

#include <QColor>
#include <QPointF>

#include <optional>

#pragma GCC visibility push(default)

class QWidget;

namespace qn {

/// A line along the edge of a widget, within it.
struct Border {
    QColor color = Qt::gray;
    qreal width = 1; ///< 0 or less draws nothing

    bool operator==(const Border &) const = default;
};

/// What a widget casts on what is beneath it. It does not shine through the widget, and is cut off where the
/// parent ends.
struct Shadow {
    QColor color = QColor(0, 0, 0, 96);
    qreal blur = 12;                ///< how far it takes from full to none, half of it outside; from 0 to 64
    QPointF offset = QPointF(0, 3); ///< to the right, and down

    bool operator==(const Shadow &) const = default;
};

struct Decoration {
    qreal cornerRadius = 0; ///< as much as half the shorter side at most
    std::optional<Border> border = std::nullopt;
    std::optional<Shadow> shadow = std::nullopt;

    bool operator==(const Decoration &) const = default;
};

Decoration decoration(const QWidget &widget);
/// In place of an earlier one; `{}` removes it. Raises NSInvalidArgumentException for a window, which the
/// window manager decorates.
void setDecoration(QWidget &widget, const Decoration &decoration);

/// From 0, transparent, to 1; also of a window, as far as the desktop supports it.
qreal opacity(const QWidget &widget);
void setOpacity(QWidget &widget, qreal opacity);

} // namespace qn

#pragma GCC visibility pop
