// Outlets: the objects of an interface description, found by their names, and waking them once all are
// loaded.
#pragma once

#include <QObject>
#include <QWidget>

#pragma GCC visibility push(default)

/// An object of an interface description that is woken when all of them are loaded and outlets can be found.
/// The order in which objects are woken is not defined.
class NSNibAwaking {
public:
    virtual ~NSNibAwaking() = default;
    virtual void awakeFromNib() = 0;
};

/// The object of that name and type below `root`. If it is missing, the program ends with a message that
/// names the outlet.
template <class T>
T *outlet(const QObject &root, const char *name) {
    T *object = root.findChild<T *>(QString::fromLatin1(name));
    if (!object)
        qFatal("The interface description has no \"%s\" of type %s.", name, T::staticMetaObject.className());
    return object;
}

/// Wakes `root`, then every object below it, if they are an NSNibAwaking.
void wakeObjects(QObject &root);

/// Replaces every text of the description below `root` by its translation: captions of labels and buttons,
/// tool tips, placeholders and texts for screen readers. For menus use `localizeMenu`.
void localizeInterface(QWidget &root);

#pragma GCC visibility pop
