// The application's delegate: knows the main window and the one tip window.
//
// Threads: the main thread; `tipWindow` may be read from any.
#pragma once

#include "Platform/Interface/NSApplication.h"
#include "Platform/Interface/Outlet.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <atomic>

class MyMainWindow;
class TipWindow;

class AppDelegate : public NSObject, public NSApplicationDelegate, public NSNibAwaking {
    NS_CLASS(AppDelegate, NSObject)
public:
    /// The delegate of the running application, or null.
    static AppDelegate *current();

    /// Neither window is owned.
    MyMainWindow *window() const { return window_; }
    void setWindow(MyMainWindow *window) { window_ = window; }
    QWidget *tipWindow() const { return tipWindow_; }
    void setTipWindow(QWidget *window) { tipWindow_ = window; }

    /// Titles the window in the user's language.
    void awakeFromNib() override;

    void applicationDidFinishLaunching() override {}
    void applicationWillTerminate() override {}
    bool applicationShouldTerminateAfterLastWindowClosed() override { return true; }

private:
    std::atomic<MyMainWindow *> window_ = nullptr;
    std::atomic<QWidget *> tipWindow_ = nullptr;
};
