// Own descriptions of views for screen readers, where Qt's do not suffice.
//
// Threads: the main thread.
#pragma once

#include <QAccessible>

#pragma GCC visibility push(default)

/// From now on every `View` is described by an `Accessible`, constructed with a pointer to it. May be called
/// repeatedly.
template <class View, class Accessible>
void tellScreenReadersBy() {
    QAccessible::installFactory([](const QString &, QObject *object) -> QAccessibleInterface * {
        auto *const view = qobject_cast<View *>(object);
        return view ? new Accessible(view) : nullptr;
    });
}

#pragma GCC visibility pop
