// Small pictures for states of printers and outcomes: those of the desktop's icon theme, or our own, which
// are drawn, so that they are sharp at every scale and have the colour of the text beside them.
//
// Threads: the main thread.
#pragma once

#include <QColor>
#include <QRectF>
#include <QWidget>

#include <optional>

#pragma GCC visibility push(default)

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

/// Draws the symbol into the square, which should have sides of at least 8 logical pixels.
void drawSymbol(QPainter &painter, Symbol symbol, const QRectF &square, const QColor &color);

/// A view of one symbol, 24 × 24 logical pixels, in the palette's text colour; hidden without a symbol.
class SymbolView final : public QWidget {
    Q_OBJECT
public:
    explicit SymbolView(QWidget *parent = nullptr);

    std::optional<Symbol> symbol() const { return symbol_; }
    /// Shows the symbol, or hides the view without one.
    void setSymbol(std::optional<Symbol> symbol);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::optional<Symbol> symbol_;
};

#pragma GCC visibility pop
