#include "Platform/Interface/FillingView.h"

#include "Platform/Interface/AccessibleView.h"
#include "Platform/Interface/BackgroundView.h"

#include <QAccessibleWidget>
#include <QChildEvent>
#include <QGridLayout>

namespace {

/// Describes the subviews to screen readers, except backgrounds.
class AccessibleFilling final : public QAccessibleWidget {
public:
    explicit AccessibleFilling(FillingView *view) : QAccessibleWidget(view, QAccessible::Client) {}

    int childCount() const override { return static_cast<int>(views().size()); }
    QAccessibleInterface *child(int index) const override {
        QWidget *const view = views().value(index);
        return view ? QAccessible::queryAccessibleInterface(view) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        return child ? static_cast<int>(views().indexOf(qobject_cast<QWidget *>(child->object()))) : -1;
    }

private:
    QList<QWidget *> views() const {
        QList<QWidget *> views;
        for (QWidget *view : widget()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
            if (!view->isWindow() && !qobject_cast<BackgroundView *>(view))
                views += view;
        return views;
    }
};

} // namespace

FillingView::FillingView(QWidget *parent) : QWidget(parent) {
    tellScreenReadersBy<FillingView, AccessibleFilling>();
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
