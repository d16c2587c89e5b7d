#include "Platform/Interface/NSApplication.h"

#include "Platform/Interface/ModalSession.h"
#include "Platform/Interface/RunLoopBridge.h"

#include <QApplication>

namespace {
NSApplication *theApplication = nullptr;
} // namespace

NSApplication::NSApplication()
    : modal_(std::make_unique<ModalSession>()),
      bridge_(std::make_unique<RunLoopBridge>([this] { return runLoopMode(); })) {
    Q_ASSERT(!theApplication);
    theApplication = this;
    QObject::connect(modal_.get(), &ModalSession::modeChanged, bridge_.get(), [this] { bridge_->wake(); });
}

NSApplication::~NSApplication() {
    theApplication = nullptr;
}

NSApplication *NSApplication::sharedApplication() {
    return theApplication;
}

void NSApplication::runModalForWindow(QWidget &window) {
    modal_->run(window);
}

void NSApplication::stopModal() {
    modal_->stop();
}

bool NSApplication::isRunningModal() const {
    return modal_->isRunning();
}

NSRunLoopMode NSApplication::runLoopMode() const {
    return isRunningModal() ? NSModalPanelRunLoopMode : NSDefaultRunLoopMode;
}

int NSApplication::run() {
    if (delegate_) {
        delegate_->applicationDidFinishLaunching();
        QApplication::setQuitOnLastWindowClosed(delegate_->applicationShouldTerminateAfterLastWindowClosed());
    }
    const int status = QApplication::exec();
    if (delegate_)
        delegate_->applicationWillTerminate();
    return status;
}
