#include "Classes/TipWindow.h"

#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Mixing.h"
#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Ancestry.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Interface/AccessibleView.h"
#include "Platform/Interface/Ink.h"
#include "Platform/Interface/NSApplication.h"
#include "Platform/Interface/QtText.h"
#include "Platform/Interface/TextMetrics.h"

#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QPainter>
#include <QProgressBar>

namespace {

struct AccessibleTip final : QAccessibleWidget {
    explicit AccessibleTip(TipWindow *tip) : QAccessibleWidget(tip, QAccessible::AlertMessage) {}
};

/// Under Wayland programs cannot place windows, but they can place pop-ups of other windows.
Qt::WindowType placeableKind() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) ? Qt::ToolTip : Qt::Dialog;
}

} // namespace

TipWindow::TipWindow(QWidget *parent) : QDialog(parent, placeableKind() | Qt::FramelessWindowHint) {
    tellScreenReadersBy<TipWindow, AccessibleTip>();
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

// As narrow as possible without another line.
void TipWindow::wrapMessage() {
    const QMargins edge = outlet<QLayout>(*this, "tipRows")->contentsMargins();
    const QMargins frame = outlet<QLayout>(*this, "tipEdge")->contentsMargins();
    const int symbol =
        symbolView->isHidden() ? 0 : symbolView->width() + outlet<QLayout>(*this, "tipLine")->spacing();
    const int room = widest(font()) - edge.left() - edge.right() - frame.left() - frame.right() - symbol;
    message->setFixedWidth(TextMetrics(message->font()).balancedWidth(message->text(), room));
}

void TipWindow::center() {
    if (const QWidget *owner = qn::owningWindow(*this))
        setWindowTitle(owner->windowTitle());
    wrapMessage();
    // The layouts of a hidden window do not update by themselves.
    auto *const frame = outlet<QFrame>(*this, "tipFrame");
    frame->layout()->activate();
    frame->updateGeometry();
    layout()->activate();
    adjustSize();
    const QPointF centre = parentFrame().center();
    move(qRound(centre.x() - width() * 0.5), qRound(centre.y() - height() * 0.5));
}

QRectF TipWindow::parentFrame() const {
    const locking::MutexLock guard(frameLock_);
    return _parentFrame;
}

void TipWindow::setParentFrame(const QRectF &frame) {
    const locking::MutexLock guard(frameLock_);
    _parentFrame = frame;
}

// A line around the tip sets it off from the window beneath, also where both are dark and there is no shadow.
void TipWindow::paintEvent(QPaintEvent *event) {
    QDialog::paintEvent(event);
    QPainter painter(this);
    painter.setPen(qn::mixed(palette().color(foregroundRole()), palette().color(backgroundRole()), 0.5));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

// Only the timer ends a tip, or the closing of the window it is over; neither Escape nor the window manager
// does.
void TipWindow::keyPressEvent(QKeyEvent *event) {
    event->accept();
}

void TipWindow::closeEvent(QCloseEvent *event) {
    const QWidget *owner = qn::owningWindow(*this);
    event->setAccepted(owner && !owner->isVisible());
}
