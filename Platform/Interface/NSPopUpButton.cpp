#include "Platform/Interface/NSPopUpButton.h"

#include "Platform/Interface/AccessibleView.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>

namespace {

/// Qt's own description gives the choice as the name, and the label only as a relation.
class AccessiblePopUp final : public QAccessibleWidget {
public:
    explicit AccessiblePopUp(NSPopUpButton *popUp) : QAccessibleWidget(popUp, QAccessible::ComboBox) {}

    QString text(QAccessible::Text kind) const override {
        QString own = QAccessibleWidget::text(kind);
        switch (kind) {
        case QAccessible::Value:
            return popUp().currentText();
        case QAccessible::Description:
            return own.isEmpty() ? popUp().currentText()
                                 : QStringLiteral("%1 · %2").arg(popUp().currentText(), own);
        default:
            return own;
        }
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = state.expandable = true;
        state.expanded = popUp().view()->isVisible();
        return state;
    }

    /// The list of choices, shown or not.
    int childCount() const override { return 1; }
    QAccessibleInterface *child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(popUp().view()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        return child && child->object() == popUp().view() ? 0 : -1;
    }

    QStringList actionNames() const override { return {showMenuAction()}; }
    void doAction(const QString &name) override {
        if (name != showMenuAction())
            return;
        if (popUp().view()->isVisible())
            popUp().hidePopup();
        else
            popUp().showPopup();
    }

private:
    QComboBox &popUp() const { return static_cast<QComboBox &>(*widget()); }
};

} // namespace

NSPopUpButton::NSPopUpButton(QWidget *parent) : QComboBox(parent) {
    tellScreenReadersBy<NSPopUpButton, AccessiblePopUp>();
    connect(this, &QComboBox::currentTextChanged, this, [this] {
        QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&changed);
    });
}
