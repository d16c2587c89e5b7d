// Paints the decoration of a widget, and paints it translucent. One effect for both, since a widget can only
// have one.
#pragma once

#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Decoration.h"

#include <QGraphicsEffect>

class QPainterPath;

namespace qn {

class DecorationEffect final : public QGraphicsEffect {
public:
    const Decoration &decoration() const { return decoration_; }
    void setDecoration(const Decoration &decoration);

    qreal opacity() const { return opacity_; }
    /// From 0 to 1.
    void setOpacity(qreal opacity);

    /// Whether the widget looks as it would without the effect.
    bool isIdle() const { return opacity_ == 1 && decoration_ == Decoration(); }

    QRectF boundingRectFor(const QRectF &widget) const override;

protected:
    void draw(QPainter *painter) override;

private:
    void drawShadow(QPainter &painter, const QRectF &widget) const;
    void drawBorder(QPainter &painter, const QRectF &widget) const;

    Decoration decoration_;
    qreal opacity_ = 1;
};

} // namespace qn
