// Objects of our own that a widget keeps: its children that are no widgets.
#pragma once

#include <QWidget>

namespace qn {

/// That of a type, or null.
template <class Type>
Type *attachmentOf(const QWidget &widget) {
    for (QObject *child : widget.children())
        if (auto *attachment = dynamic_cast<Type *>(child))
            return attachment;
    return nullptr;
}

} // namespace qn
