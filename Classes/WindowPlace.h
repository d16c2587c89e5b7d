// Remembers where a window was when it was closed.
//
// Threads: the main thread.
#pragma once

#include <QList>
#include <QRect>

class QWidget;

namespace WindowPlace {

/// Where to put a window: at the remembered place if that lies within one of the areas; otherwise in the
/// middle of the first area, with the remembered size or else the wished one, cut to the area. An empty
/// `remembered` stands for none. Without areas, the wished size at the origin.
QRect fitting(const QRect &remembered, QSize wished, const QList<QRect> &areas);

/// Gives the window its remembered size and place, or ones that fit the screen. Without a remembered place
/// the window manager places it.
void restore(QWidget &window);
/// Stores size, position and whether the window is maximised in the user's settings.
void save(const QWidget &window);

} // namespace WindowPlace
