#include "Platform/Interface/TextLabel.h"

#include "Platform/Interface/Ink.h"

#include <QEvent>

TextLabel::TextLabel(QWidget *parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

void TextLabel::setRole(Role role) {
    role_ = role;
    dress();
}

void TextLabel::showText(const QString &text) {
    if (text != this->text())
        setText(text);
    setVisible(!text.isEmpty());
}

void TextLabel::changeEvent(QEvent *event) {
    QLabel::changeEvent(event);
    switch (event->type()) {
    case QEvent::ParentChange:
    case QEvent::FontChange:
    case QEvent::PaletteChange:
        return dress();
    default:
        return;
    }
}

// Setting font and palette calls this again; setting the same values changes nothing, which ends that.
void TextLabel::dress() {
    const QWidget *parent = parentWidget();
    if (!parent || role_ == Role::body)
        return;
    const QFont base = parent->font();
    setFont(role_ == Role::title ? titleFont(base) : noteFont(base));
    if (role_ != Role::note)
        return;
    QPalette colors;
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        for (const auto role :
             {QPalette::WindowText, QPalette::Text}) // the latter on the background of lists
            colors.setColor(group, role,
                            mutedInk(parent->palette().color(group, role),
                                     parent->palette().color(group, parent->backgroundRole())));
    }
    setPalette(colors);
}
