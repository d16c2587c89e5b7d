#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Ancestry.h"

void qn::removeAllChildren(QWidget &widget) {
    for (auto *child : widget.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (!child->isWindow()) {
            child->hide();
            child->setParent(nullptr);
            child->deleteLater();
        }
}
