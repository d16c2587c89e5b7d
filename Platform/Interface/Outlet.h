// Outlets: objects of an interface description, found by their name; and the waking of all objects once they
// are in place.
#pragma once

#include <QObject>
#include <QWidget>

/// An object of an interface description that wants to know when all of them are loaded and their outlets can
/// be found. Nobody may rely on the order in which objects wake.
class NSNibAwaking {
public:
    virtual ~NSNibAwaking() = default;
    virtual void awakeFromNib() = 0;
};

/// The object of that name and type below `root`. A description that lacks it is broken, which ends the
/// program with a message that names the outlet.
template <class T>
T *outlet(const QObject &root, const char *name) {
    T *object = root.findChild<T *>(QString::fromLatin1(name));
    if (!object)
        qFatal("The interface description has no \"%s\" of type %s.", name, T::staticMetaObject.className());
    return object;
}

/// Wakes `root` and every object below it that wants to know.
void wakeObjects(QObject &root);

/// Replaces every text of the description below `root` by its translation: captions of labels and buttons,
/// tool tips, place-holders and what screen readers say. Menus translate themselves.
void localizeInterface(QWidget &root);
