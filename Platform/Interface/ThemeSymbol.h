// Symbols as the desktop's icon theme has them, by their standard names.
//
// Those that are seen side by side are of one style: all of them are symbolic pictures of the theme, which
// get the colour of the text; or all are its coloured ones; or it lacks some, and all are ours.
//
// Threads: the main thread.
#pragma once

#include "Platform/Interface/Symbol.h"

/// Draws the theme's picture for the symbol into the square; false, and nothing drawn, when ours is to be
/// drawn. A missing printer is drawn like one that is there, with room for a stroke across it.
bool drawThemeSymbol(QPainter &painter, Symbol symbol, const QRectF &square, const QColor &color);
