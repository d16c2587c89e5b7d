#include "Frameworks/QNCategoriesPro/UIKit/QWidget/DecorationEffect.h"

#include <QPainter>
#include <QPainterPath>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace {

constexpr qreal widestBlur = 64;

QRectF grown(const QRectF &rect, qreal by) {
    return rect.adjusted(-by, -by, by, by);
}

/// The rectangle with corners as round as it has room for.
QPainterPath rounded(const QRectF &rect, qreal radius) {
    QPainterPath path;
    if (radius > 0 && !rect.isEmpty())
        path.addRoundedRect(rect, radius, radius);
    else
        path.addRect(rect);
    return path;
}

qreal positive(qreal length) {
    return length > 0 ? length : 0; // also of what is no number
}

qreal usableBlur(const qn::Shadow &shadow) {
    return std::min(positive(shadow.blur), widestBlur);
}

QPointF usableOffset(const qn::Shadow &shadow) {
    const auto usable = [](qreal length) {
        return std::isnan(length) ? 0 : std::clamp<qreal>(length, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    };
    return {usable(shadow.offset.x()), usable(shadow.offset.y())};
}

} // namespace

void qn::DecorationEffect::setDecoration(const Decoration &decoration) {
    decoration_ = decoration;
    updateBoundingRect();
    update();
}

void qn::DecorationEffect::setOpacity(qreal opacity) {
    opacity_ = opacity;
    update();
}

QRectF qn::DecorationEffect::boundingRectFor(const QRectF &widget) const {
    if (!decoration_.shadow)
        return widget;
    const Shadow &shadow = *decoration_.shadow;
    return widget | grown(widget.translated(usableOffset(shadow)), usableBlur(shadow) / 2);
}

// Border and corners are drawn into the picture of the widget, so that nothing shines through them when all
// of it is translucent.
void qn::DecorationEffect::draw(QPainter *painter) {
    const QRectF widget = sourceBoundingRect(Qt::LogicalCoordinates);
    QPixmap picture = sourcePixmap(Qt::LogicalCoordinates, nullptr, NoPad);
    if (QPainter inside(&picture); inside.isActive()) {
        inside.setRenderHint(QPainter::Antialiasing);
        inside.translate(-widget.topLeft());
        drawBorder(inside, widget);
        QPainterPath corners = rounded(widget, positive(decoration_.cornerRadius));
        corners.addRect(widget);
        inside.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        inside.fillPath(corners, Qt::black);
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setOpacity(painter->opacity() * opacity_);
    drawShadow(*painter, widget);
    painter->drawPixmap(widget.topLeft(), picture);
    painter->restore();
}

void qn::DecorationEffect::drawBorder(QPainter &painter, const QRectF &widget) const {
    const qreal width = decoration_.border ? positive(decoration_.border->width) : 0;
    if (width == 0)
        return;
    painter.setPen(QPen(decoration_.border->color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawPath(rounded(grown(widget, -width / 2), positive(decoration_.cornerRadius) - width / 2));
}

// In layers, one a pixel, from the outermost to the one that has the colour's full opacity: each adds to
// those beneath it what the curve wants there.
void qn::DecorationEffect::drawShadow(QPainter &painter, const QRectF &widget) const {
    if (!decoration_.shadow)
        return;
    const Shadow &shadow = *decoration_.shadow;
    const qreal blur = usableBlur(shadow), radius = positive(decoration_.cornerRadius);
    const QPainterPath shape = rounded(widget, radius);
    const QRectF cast = widget.translated(usableOffset(shadow));
    const int layers = std::max(static_cast<int>(std::ceil(blur)), 1);
    qreal before = 0;
    for (int layer = 1; layer <= layers; ++layer) {
        const qreal share = static_cast<qreal>(layer) / layers;
        const qreal growth = blur * (0.5 - (layer - 0.5) / layers);
        const qreal wanted = shadow.color.alphaF() * share * share * (3 - 2 * share);
        QColor color = shadow.color;
        color.setAlphaF(static_cast<float>(before < 1 ? 1 - (1 - wanted) / (1 - before) : 0));
        painter.fillPath(rounded(grown(cast, growth), std::max(radius, blur / 2) + growth).subtracted(shape),
                         color);
        before = wanted;
    }
}
