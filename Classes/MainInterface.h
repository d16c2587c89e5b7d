// The objects of the main interface description (Resources/interface/MainInterface.ui), connected, translated
// and awake.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <memory>

class AppDelegate;
class MyMainWindow;
class NSApplication;

struct MainInterface {
    /// Makes them, and sets the application's delegate.
    explicit MainInterface(NSApplication &application);
    ~MainInterface();

    Ref<AppDelegate> delegate;
    std::unique_ptr<MyMainWindow> window;
};
