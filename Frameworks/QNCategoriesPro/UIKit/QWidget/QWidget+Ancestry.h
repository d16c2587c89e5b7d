// What a widget is in, and what is in it. Threads: the main thread.
#pragma once

#include <QWidget>

#pragma GCC visibility push(default)

namespace qn {

/// The window that the widget is in or, for a window, the one that it belongs to: a dialog's owner. Null if
/// there is none.
inline QWidget *owningWindow(const QWidget &widget) {
    const QWidget *parent = widget.parentWidget();
    return parent ? parent->window() : nullptr;
}

/// The innermost widget of that type around the widget, in other windows as well; null if there is none.
template <class Type>
Type *nearestAncestor(const QWidget &widget) {
    QWidget *ancestor = widget.parentWidget();
    while (ancestor && !dynamic_cast<Type *>(ancestor))
        ancestor = ancestor->parentWidget();
    return dynamic_cast<Type *>(ancestor);
}

/// Removes all widgets in the widget, but not the windows that belong to it. They leave it, and its layout,
/// at once, and are deleted once the event being processed is over, so that a button may remove itself.
void removeAllChildren(QWidget &widget);

} // namespace qn

#pragma GCC visibility pop
