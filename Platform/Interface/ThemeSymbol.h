// The desktop's icons for symbols, by their standard names.
//
// Symbols that are seen side by side, those of printers and those of outcomes, have one style: all are the
// theme's symbolic icons, in the colour of the text; or all are its coloured icons; or, if it lacks some, all
// are our own.
//
// Threads: the main thread.
#pragma once

#include "Platform/Interface/Symbol.h"

#pragma GCC visibility push(default)

/// Draws the theme's icon for the symbol into the square; false, and nothing is drawn, when our own is to be
/// used. A missing printer is drawn like an attached one, with a gap for a stroke across it.
bool drawThemeSymbol(QPainter &painter, Symbol symbol, const QRectF &square, const QColor &color);

#pragma GCC visibility pop
