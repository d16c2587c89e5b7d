// Where a window was when it was closed, kept for the next time.
//
// Threads: the main thread.
#pragma once

#include <QList>
#include <QRect>

class QWidget;

namespace WindowPlace {

/// Where to put a window: the remembered place where all of it lies on one of the areas; else the wished size
/// in the middle of the first area, neither larger than that area. An empty `remembered` stands for none.
/// Without areas, the wished size at the origin.
QRect fitting(const QRect &remembered, QSize wished, const QList<QRect> &areas);

/// Puts the window where it was, or where it fits the screen.
void restore(QWidget &window);
/// Keeps size and position. The state of a maximised window is kept, too.
void save(const QWidget &window);

} // namespace WindowPlace
