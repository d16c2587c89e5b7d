// The application: its entry, its delegate and its modal runs.
//
// Threads: the main thread.
#pragma once

#include "Platform/RunLoop/NSRunLoop.h"

#pragma GCC visibility push(default)

class ModalSession;
class QWidget;
class RunLoopBridge;

/// Called at stages of the application's life.
class NSApplicationDelegate {
public:
    virtual ~NSApplicationDelegate() = default;
    virtual void applicationDidFinishLaunching() = 0;
    virtual void applicationWillTerminate() = 0;
    virtual bool applicationShouldTerminateAfterLastWindowClosed() = 0;
};

class NSApplication {
public:
    /// Needs a QApplication. There is one at a time.
    NSApplication();
    NSApplication(const NSApplication &) = delete;
    NSApplication &operator=(const NSApplication &) = delete;
    ~NSApplication();

    /// The application, or null.
    static NSApplication *sharedApplication();

    NSApplicationDelegate *delegate() const { return delegate_; }
    /// Not owned.
    void setDelegate(NSApplicationDelegate *delegate) { delegate_ = delegate; }

    /// Shows the window, centred, and returns when `stopModal` ended its run.
    void runModalForWindow(QWidget &window);
    /// Ends the innermost modal run; does nothing without one.
    void stopModal();
    bool isRunningModal() const;

    /// The mode in which the main run loop is served: modal-panel during a modal run, otherwise default.
    NSRunLoopMode runLoopMode() const;

    /// Serves events until the application is to end; returns its exit status.
    int run();

private:
    NSApplicationDelegate *delegate_ = nullptr;
    std::unique_ptr<ModalSession> modal_;
    std::unique_ptr<RunLoopBridge> bridge_;
};

/// Defined by the program: makes the objects of the main interface description, sets the delegate and shows
/// the main window. Weak, so that programs that bring their windows up themselves can use the library, too.
[[gnu::weak]] void NSLoadMainInterface(NSApplication &application);

/// The entry of a program with windows: loads the main interface, runs it, and ends the process without
/// waiting for other threads, except for the transport to give its printers back. Never returns. Raises
/// NSGenericException in a program that defines no NSLoadMainInterface.
[[noreturn]] int NSApplicationMain(int argc, char **argv);

#pragma GCC visibility pop
