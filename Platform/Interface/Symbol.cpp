#include "Platform/Interface/Symbol.h"

#include "Platform/Interface/ThemeSymbol.h"

#include <QPainter>
#include <QPolygonF>

namespace {

// Every symbol is drawn on a field of 24 by 24 units, in lines of 1.5.
constexpr qreal field = 24;
constexpr qreal line = 1.5;

void drawPrinter(QPainter &painter) {
    painter.drawPolyline(QPolygonF{{7, 9}, {7, 3.5}, {17, 3.5}, {17, 9}}); // paper that goes in
    painter.drawPolyline(
        QPolygonF{{7, 17.5}, {3, 17.5}, {3, 9}, {21, 9}, {21, 17.5}, {17, 17.5}}); // the case
    painter.drawRect(QRectF(7, 14, 10, 6.5));                                      // paper that comes out
    painter.drawLine(QPointF(17.5, 11.75), QPointF(18, 11.75));                    // its lamp
}

void drawFailingPrinter(QPainter &painter) {
    painter.save();
    painter.scale(0.8, 0.8);
    drawPrinter(painter);
    painter.restore();
    painter.drawLine(QPointF(21, 12.5), QPointF(21, 17.5));
    painter.drawLine(QPointF(21, 20.5), QPointF(21, 20.6));
}

void drawStroke(QPainter &painter) {
    painter.drawLine(QPointF(3.5, 3.5), QPointF(20.5, 20.5));
}

void drawNetwork(QPainter &painter) {
    painter.drawRect(QRectF(8, 2.5, 8, 3.5));
    painter.drawRoundedRect(QRectF(5, 6, 14, 7), 1.2, 1.2);
    painter.drawLine(QPointF(15.5, 8.5), QPointF(16.2, 8.5));
    painter.drawLine(QPointF(12, 13), QPointF(12, 18));
    painter.drawLine(QPointF(4, 18), QPointF(20, 18));
    painter.drawLine(QPointF(4, 18), QPointF(4, 21));
    painter.drawLine(QPointF(12, 18), QPointF(12, 21));
    painter.drawLine(QPointF(20, 18), QPointF(20, 21));
}

void drawMark(QPainter &painter) {
    painter.drawLine(QPointF(12, 9.5), QPointF(12, 14));
    painter.drawLine(QPointF(12, 17), QPointF(12, 17.1));
}

void drawSuccess(QPainter &painter) {
    painter.drawEllipse(QRectF(2.5, 2.5, 19, 19));
    painter.drawPolyline(QPolygonF{{7.5, 12.5}, {10.75, 15.75}, {16.75, 8.75}});
}

void drawWarning(QPainter &painter) {
    painter.drawPolygon(QPolygonF{{12, 3}, {22, 20.5}, {2, 20.5}});
    drawMark(painter);
}

void drawFailure(QPainter &painter) {
    painter.drawEllipse(QRectF(2.5, 2.5, 19, 19));
    painter.drawLine(QPointF(8.5, 8.5), QPointF(15.5, 15.5));
    painter.drawLine(QPointF(15.5, 8.5), QPointF(8.5, 15.5));
}

void drawOurs(QPainter &painter, Symbol symbol) {
    switch (symbol) {
    case Symbol::printer:
    case Symbol::missingPrinter:
        return drawPrinter(painter);
    case Symbol::networkPrinter:
        return drawNetwork(painter);
    case Symbol::failingPrinter:
        return drawFailingPrinter(painter);
    case Symbol::success:
        return drawSuccess(painter);
    case Symbol::warning:
        return drawWarning(painter);
    case Symbol::failure:
        return drawFailure(painter);
    }
}

} // namespace

void drawSymbol(QPainter &painter, Symbol symbol, const QRectF &square, const QColor &color) {
    const bool isOfTheme = drawThemeSymbol(painter, symbol, square, color);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / field, square.height() / field);
    painter.setPen(QPen(color, line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (!isOfTheme)
        drawOurs(painter, symbol);
    if (symbol == Symbol::missingPrinter)
        drawStroke(painter);
    painter.restore();
}

SymbolView::SymbolView(QWidget *parent) : QWidget(parent) {
    setFixedSize(24, 24);
    setSymbol(std::nullopt);
}

void SymbolView::setSymbol(std::optional<Symbol> symbol) {
    symbol_ = symbol;
    setVisible(symbol.has_value());
    update();
}

void SymbolView::paintEvent(QPaintEvent *) {
    if (!symbol_)
        return;
    QPainter painter(this);
    drawSymbol(painter, *symbol_, rect(), palette().color(foregroundRole()));
}
