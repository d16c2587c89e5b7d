// What screen readers know of a view, where Qt's own knowledge of its kind does not do.
//
// Threads: the main thread.
#pragma once

#include <QAccessible>

/// Has every `View` told by an `Accessible`, which is made with the view. May be said as often as one likes.
template <class View, class Accessible>
void tellScreenReadersBy() {
    QAccessible::installFactory([](const QString &, QObject *object) -> QAccessibleInterface * {
        auto *const view = qobject_cast<View *>(object);
        return view ? new Accessible(view) : nullptr;
    });
}
