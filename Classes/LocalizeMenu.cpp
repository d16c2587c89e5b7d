#include "Classes/LocalizeMenu.h"

#include "Platform/Foundation/System/Localization.h"
#include "Platform/Interface/QtText.h"

#include <QAction>
#include <QMenu>

namespace {

QString translated(const QString &title) {
    return toQString(NSLocalizedString(toNSString(title)));
}

} // namespace

void localizeMenu(QWidget *menu) {
    if (!menu)
        return;
    if (auto *titled = qobject_cast<QMenu *>(menu))
        titled->setTitle(translated(titled->title()));
    else
        menu->setWindowTitle(translated(menu->windowTitle()));
    for (QAction *item : menu->actions())
        if (item->menu())
            localizeMenu(item->menu());
        else
            item->setText(translated(item->text()));
}
