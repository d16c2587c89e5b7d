#include "Platform/Interface/ModalSession.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QEventLoop>
#include <QWidget>
#include <QWindow>

namespace {

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

bool belongsTo(const QObject *target, const QWidget &window) {
    if (const auto *widget = qobject_cast<const QWidget *>(target))
        return widget->window() == &window;
    return target == window.windowHandle();
}

} // namespace

ModalSession::ModalSession() {
    qApp->installEventFilter(this);
}

ModalSession::~ModalSession() = default;

void ModalSession::run(QWidget &window) {
    QEventLoop loop;
    runs_.push_back({&window, &loop});
    emit modeChanged();
    window.setWindowModality(Qt::ApplicationModal);
    if (auto *centered = dynamic_cast<NSCenteredWindow *>(&window))
        centered->center();
    window.show();
    window.raise();
    window.activateWindow();
    QAccessibleEvent alert(&window, QAccessible::Alert); // makes screen readers read it out
    QAccessible::updateAccessibility(&alert);
    loop.exec();
    std::erase_if(runs_, [&](const Run &run) { return run.loop == &loop; });
    emit modeChanged();
}

void ModalSession::stop() {
    if (runs_.empty())
        return;
    // From here on the run counts as ended, although its loop returns only after the events it is processing.
    QEventLoop *loop = runs_.back().loop;
    runs_.pop_back();
    loop->quit();
    emit modeChanged();
}

bool ModalSession::eventFilter(QObject *target, QEvent *event) {
    if (runs_.empty() || !isInput(event->type()))
        return false;
    const bool receivesInput = target->isWidgetType() || target->isWindowType() ||
                               event->type() == QEvent::Shortcut; // of a menu item
    return receivesInput && !belongsTo(target, *runs_.back().window);
}
