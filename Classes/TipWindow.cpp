#include "Classes/TipWindow.h"

#include "Platform/Foundation/NSLog.h"
#include "Platform/Interface/NSApplication.h"
#include "Platform/Interface/QtText.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>

TipWindow::TipWindow(QWidget *parent) : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {}

void TipWindow::awakeFromNib() {
    message = outlet<QLabel>(*this, "message");
    progress = outlet<QProgressBar>(*this, "tipProgress");
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

void TipWindow::center() {
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

// Only the timer ends a tip: neither Escape nor the window manager closes it.
void TipWindow::keyPressEvent(QKeyEvent *event) {
    event->accept();
}

void TipWindow::closeEvent(QCloseEvent *event) {
    event->ignore();
}
