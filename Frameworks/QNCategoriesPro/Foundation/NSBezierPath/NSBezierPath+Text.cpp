#include "Frameworks/QNCategoriesPro/Foundation/NSBezierPath/NSBezierPath+Text.h"

#include <QFontMetricsF>
#include <QStringList>

#include <cmath>

namespace {

/// How much of the free room lies before what is aligned.
double roomBefore(double room, bool isAtEnd, bool isCentered) {
    return isAtEnd ? room : isCentered ? room / 2 : 0;
}

} // namespace

QPainterPath qn::textPath(const QString &text, const QFont &font, const QPointF &baseline) {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill); // glyphs, and parts of them, may lie upon each other
    if (std::isfinite(baseline.x()) && std::isfinite(baseline.y()))
        path.addText(baseline, font, text);
    return path;
}

QPainterPath qn::textPath(const QString &text, const QFont &font, const QRectF &rectangle,
                          Qt::Alignment alignment) {
    const QFontMetricsF metrics(font);
    const QStringList lines = text.split(u'\n');
    const double height = metrics.height() + static_cast<double>(lines.size() - 1) * metrics.lineSpacing();
    double y =
        rectangle.top() + metrics.ascent() +
        roomBefore(rectangle.height() - height, alignment & Qt::AlignBottom, alignment & Qt::AlignVCenter);
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (const QString &line : lines) {
        const double room = rectangle.width() - metrics.horizontalAdvance(line);
        const double x =
            rectangle.left() + roomBefore(room, alignment & Qt::AlignRight, alignment & Qt::AlignHCenter);
        path.addPath(textPath(line, font, {x, y}));
        y += metrics.lineSpacing();
    }
    return path;
}
