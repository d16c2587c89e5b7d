// Colours and letters by their role. Every colour is of the palette, or mixed from its colours.
//
// A text is readable upon its ground when the two have a contrast of at least 4.5, by the rule for texts upon
// web pages.
#pragma once

#include <QFont>
#include <QPalette>

/// `text` as far towards `ground` as leaves it readable, at most a third; `text` itself when it is not
/// readable at all.
QColor mutedInk(const QColor &text, const QColor &ground);

/// The colour of a line that parts two areas of that ground.
QColor lineInk(const QColor &text, const QColor &ground);

/// The colours that have to differ from the desktop's for texts to be readable, and no others: selections and
/// place-holders.
QPalette readableColors(const QPalette &desktop);

/// The letters of titles (1.25 of the base size, semibold) and of notes (0.9 of it).
QFont titleFont(QFont base);
QFont noteFont(const QFont &base);

/// So many logical pixels where letters have their usual size; more where they are larger.
int measure(const QFont &font, int pixels);
