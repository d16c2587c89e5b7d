#include "Classes/TipWindow.h"

#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Interface/Ink.h"
#include "Platform/Interface/NSApplication.h"
#include "Platform/Interface/QtText.h"

#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QProgressBar>

namespace {

QAccessibleInterface *accessibleTip(const QString &, QObject *object) {
    auto *tip = qobject_cast<TipWindow *>(object);
    return tip ? new QAccessibleWidget(tip, QAccessible::AlertMessage) : nullptr;
}

/// Where programs cannot place their windows, they still can those that belong to another one.
Qt::WindowType placeableKind() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) ? Qt::ToolTip : Qt::Dialog;
}

} // namespace

TipWindow::TipWindow(QWidget *parent) : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {
    QAccessible::installFactory(accessibleTip); // once, however often it is installed
}

void TipWindow::awakeFromNib() {
    message = outlet<QLabel>(*this, "message");
    progress = outlet<QProgressBar>(*this, "tipProgress");
    symbolView = outlet<SymbolView>(*this, "tipSymbol");
}

void TipWindow::setStopModalState() {
    NSLog("---------setStopModalState");
    hide();
    if (NSApplication *application = NSApplication::sharedApplication())
        application->stopModal();
}

void TipWindow::setMsgText(const Ref<NSString> &text) {
    message->setText(toQString(text));
    setAccessibleName(message->text());
}

void TipWindow::setProIndicator(bool hidden) {
    progress->setVisible(!hidden);
    if (!hidden)
        progress->setRange(0, 0);
}

void TipWindow::setSymbol(std::optional<Symbol> symbol) {
    symbolView->setSymbol(symbol);
}

int TipWindow::widest(const QFont &font) {
    return measure(font, 240);
}

int TipWindow::highest(const QFont &font) {
    return measure(font, 96);
}

// As narrow as it can be without needing another line: so no line is left with a single character or word.
void TipWindow::wrapMessage() {
    const QMargins edge = outlet<QLayout>(*this, "tipRows")->contentsMargins();
    const int frame = 2 * outlet<QFrame>(*this, "tipFrame")->frameWidth();
    const int symbol =
        symbolView->isHidden() ? 0 : symbolView->width() + outlet<QLayout>(*this, "tipLine")->spacing();
    message->setMinimumWidth(0);
    message->setMaximumWidth(QWIDGETSIZE_MAX);
    int fits = std::max(widest(font()) - edge.left() - edge.right() - frame - symbol,
                        message->minimumSizeHint().width());
    const int height = message->heightForWidth(fits);
    int narrow = message->minimumSizeHint().width() - 1;
    while (fits - narrow > 1) {
        const int middle = (narrow + fits) / 2;
        (message->heightForWidth(middle) > height ? narrow : fits) = middle;
    }
    message->setFixedWidth(fits);
}

void TipWindow::center() {
    if (const QWidget *owner = parentWidget())
        setWindowTitle(owner->window()->windowTitle());
    wrapMessage();
    // The layouts of a hidden window would keep what they last knew.
    auto *const frame = outlet<QFrame>(*this, "tipFrame");
    frame->layout()->activate();
    frame->updateGeometry();
    layout()->activate();
    adjustSize();
    const NSRect parent = parentFrame();
    move(qRound(parent.x + (parent.width - width()) * 0.5),
         qRound(parent.y + (parent.height - height()) * 0.5));
}

NSRect TipWindow::parentFrame() const {
    const std::scoped_lock guard(frameLock_);
    return _parentFrame;
}

void TipWindow::setParentFrame(const NSRect &frame) {
    const std::scoped_lock guard(frameLock_);
    _parentFrame = frame;
}

// Only the timer ends a tip, or the end of the window it is over: neither Escape nor the window manager
// closes it.
void TipWindow::keyPressEvent(QKeyEvent *event) {
    event->accept();
}

void TipWindow::closeEvent(QCloseEvent *event) {
    event->setAccepted(parentWidget() && !parentWidget()->window()->isVisible());
}
