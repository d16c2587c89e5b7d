// Colours and fonts by their role. Every colour is from the palette, or mixed from its colours.
//
// A text counts as readable on its background when their contrast, as the guidelines for web pages define it,
// is at least 4.5.
#pragma once

#include <QFont>
#include <QPalette>

#pragma GCC visibility push(default)

/// `text` mixed with as much of the background as leaves it readable, 35 % at most; `text` itself when no
/// mixture is readable.
QColor mutedInk(const QColor &text, const QColor &ground);

/// A palette with only the colours that are made readable, those of selections and placeholders; all others
/// are unset and stay the desktop's.
QPalette readableColors(const QPalette &desktop);

/// The fonts of titles (1.25 times the base size, semibold) and of notes (0.9 times).
QFont titleFont(QFont base);
QFont noteFont(const QFont &base);

/// That many logical pixels, scaled up where the font is larger than usual.
int measure(const QFont &font, int pixels);

#pragma GCC visibility pop
