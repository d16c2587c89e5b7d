#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Geometry.h"

#include <algorithm>
#include <cmath>

namespace {

int wholePixels(qreal length) {
    constexpr qreal most = QWIDGETSIZE_MAX;
    return std::isnan(length) ? 0 : qRound(std::clamp(length, -most, most));
}

} // namespace

QRectF qn::frame(const QWidget &widget) {
    return widget.geometry();
}

// Size and origin each by themselves: a widget that is moved keeps its size.
void qn::setFrame(QWidget &widget, const QRectF &frame) {
    widget.setGeometry(wholePixels(frame.x()), wholePixels(frame.y()),
                       std::max(wholePixels(frame.width()), 0), std::max(wholePixels(frame.height()), 0));
}
