#include "Platform/Interface/Outlet.h"

#include "Platform/Foundation/System/Localization.h"
#include "Platform/Interface/QtText.h"

#include <QMenu>
#include <QMenuBar>

void wakeObjects(QObject &root) {
    const auto wake = [](QObject *object) {
        if (auto *awaking = dynamic_cast<NSNibAwaking *>(object))
            awaking->awakeFromNib();
    };
    const QList<QObject *> below = root.findChildren<QObject *>(); // taken before any is woken
    wake(&root);
    for (QObject *object : below)
        wake(object);
}

void localizeInterface(QWidget &root) {
    static constexpr const char *texts[] = {"text", "toolTip", "accessibleName", "accessibleDescription",
                                            "placeholderText"};
    for (QWidget *widget : root.findChildren<QWidget *>()) {
        if (qobject_cast<QMenu *>(widget) || qobject_cast<QMenuBar *>(widget))
            continue;
        for (const char *name : texts) {
            const QString text = widget->property(name).toString();
            if (!text.isEmpty())
                widget->setProperty(name, toQString(NSLocalizedString(toNSString(text))));
        }
    }
}
