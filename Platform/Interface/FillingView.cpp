#include "Platform/Interface/FillingView.h"

#include <QChildEvent>
#include <QGridLayout>

FillingView::FillingView(QWidget *parent) : QWidget(parent) {
    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

void FillingView::childEvent(QChildEvent *event) {
    QWidget::childEvent(event);
    auto *view = qobject_cast<QWidget *>(event->child());
    // All of them in the one cell; a view that leaves its parent leaves the layout by itself.
    if (event->polished() && view && !view->isWindow() && layout()->indexOf(view) < 0)
        static_cast<QGridLayout *>(layout())->addWidget(view, 0, 0);
}
