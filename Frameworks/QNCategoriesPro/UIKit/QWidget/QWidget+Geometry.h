// Where a widget is and how large: edges, centre, size, each to read and to set.
//
//     qn::setRight(button, qn::width(panel) - 16);
//     qn::setCenterY(button, qn::centerY(field));
//
// Works on widgets and on layers. A layer is a rectangle that a widget paints into: a QRectF in the widget's
// coordinates, as Qt has no lighter kind of view that would be worth its cost. Any other type will do for
// which its namespace has `frame` and `setFrame`.
//
// Lengths are logical pixels in the coordinates of the parent, or of the screen for a window, without what
// the window manager draws around it. y grows downwards. The right edge is left + width, where the next
// widget may begin, not the last pixel (as for QRect); so is the bottom.
//
// Setting an edge, a centre or the origin moves, and setting the width, the height or the size keeps the
// origin. Widgets are placed at whole pixels, the nearest ones, and keep within their least and greatest
// sizes. In a layout, the layout has the last word: what is set stays until it places its widgets again.
//
// What is no number counts as 0, a negative size of a widget, too. Threads: for widgets the main thread.
#pragma once

#include <QRectF>
#include <QWidget>

#include <concepts>

#pragma GCC visibility push(default)

namespace qn {

QRectF frame(const QWidget &widget);
void setFrame(QWidget &widget, const QRectF &frame);

inline QRectF frame(const QRectF &layer) {
    return layer;
}
inline void setFrame(QRectF &layer, const QRectF &frame) {
    layer = frame;
}

/// What has a place: widgets, layers.
template <class View>
concept Framed = requires(View &view, const QRectF &place) {
    { frame(view) } -> std::convertible_to<QRectF>;
    setFrame(view, place);
};

qreal left(const Framed auto &view) {
    return frame(view).left();
}
qreal top(const Framed auto &view) {
    return frame(view).top();
}
qreal right(const Framed auto &view) {
    return frame(view).right();
}
qreal bottom(const Framed auto &view) {
    return frame(view).bottom();
}
qreal width(const Framed auto &view) {
    return frame(view).width();
}
qreal height(const Framed auto &view) {
    return frame(view).height();
}
/// Of a widget with an odd width, between two pixels.
qreal centerX(const Framed auto &view) {
    return frame(view).center().x();
}
qreal centerY(const Framed auto &view) {
    return frame(view).center().y();
}
QPointF center(const Framed auto &view) {
    return frame(view).center();
}
QPointF origin(const Framed auto &view) {
    return frame(view).topLeft();
}
QSizeF size(const Framed auto &view) {
    return frame(view).size();
}

/// Has `change` change the frame of a view, which is set at once.
void changeFrame(Framed auto &view, const std::invocable<QRectF &> auto &change) {
    QRectF place = frame(view);
    change(place);
    setFrame(view, place);
}

void setLeft(Framed auto &view, qreal left) {
    changeFrame(view, [=](QRectF &place) { place.moveLeft(left); });
}
void setTop(Framed auto &view, qreal top) {
    changeFrame(view, [=](QRectF &place) { place.moveTop(top); });
}
void setRight(Framed auto &view, qreal right) {
    changeFrame(view, [=](QRectF &place) { place.moveRight(right); });
}
void setBottom(Framed auto &view, qreal bottom) {
    changeFrame(view, [=](QRectF &place) { place.moveBottom(bottom); });
}
void setWidth(Framed auto &view, qreal width) {
    changeFrame(view, [=](QRectF &place) { place.setWidth(width); });
}
void setHeight(Framed auto &view, qreal height) {
    changeFrame(view, [=](QRectF &place) { place.setHeight(height); });
}
void setCenterX(Framed auto &view, qreal x) {
    changeFrame(view, [=](QRectF &place) { place.moveLeft(x - place.width() / 2); });
}
void setCenterY(Framed auto &view, qreal y) {
    changeFrame(view, [=](QRectF &place) { place.moveTop(y - place.height() / 2); });
}
void setCenter(Framed auto &view, QPointF center) {
    changeFrame(view, [=](QRectF &place) { place.moveCenter(center); });
}
void setOrigin(Framed auto &view, QPointF origin) {
    changeFrame(view, [=](QRectF &place) { place.moveTopLeft(origin); });
}
void setSize(Framed auto &view, QSizeF size) {
    changeFrame(view, [=](QRectF &place) { place.setSize(size); });
}

} // namespace qn

#pragma GCC visibility pop
