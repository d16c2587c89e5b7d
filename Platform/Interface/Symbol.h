// Small pictures that say in one look what a text says at length: those of the desktop's icon theme, or our
// own, which are drawn: sharp at every scale, and in the colour of the text beside them.
//
// Threads: the main thread.
#pragma once

#include <QColor>
#include <QRectF>
#include <QWidget>

#include <optional>

class QPainter;

enum class Symbol {
    printer,        ///< a printer on its cable
    missingPrinter, ///< its outline, crossed out
    networkPrinter, ///< a printer in a network
    failingPrinter, ///< a printer that is not ready
    success,
    warning,
    failure,
};

/// Draws the symbol into the square, whose sides are 8 logical pixels or more.
void drawSymbol(QPainter &painter, Symbol symbol, const QRectF &square, const QColor &color);

/// A view of one symbol, or of none; 24 × 24 logical pixels, in the palette's colour of texts.
class SymbolView final : public QWidget {
    Q_OBJECT
public:
    explicit SymbolView(QWidget *parent = nullptr);

    std::optional<Symbol> symbol() const { return symbol_; }
    /// Without a symbol the view is hidden.
    void setSymbol(std::optional<Symbol> symbol);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::optional<Symbol> symbol_;
};
