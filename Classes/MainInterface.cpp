#include "Classes/MainInterface.h"

#include "Classes/AppDelegate.h"
#include "Classes/MyMainWindow.h"
#include "Classes/TipWindow.h"
#include "Platform/Interface/NSApplication.h"
#include "ui_MainInterface.h"

/// Pictures linked into a library are registered by hand, outside any name space.
static void registerPictures() {
    Q_INIT_RESOURCE(zkutility);
}

MainInterface::MainInterface(NSApplication &application)
    : delegate(make<AppDelegate>()), window(std::make_unique<MyMainWindow>()) {
    registerPictures();
    Ui::MainInterface().setupUi(window.get());
    localizeInterface(*window);
    delegate->setWindow(window.get());
    delegate->setTipWindow(outlet<TipWindow>(*window, "tipWindow"));
    application.setDelegate(delegate.get());
    wakeObjects(*window);
    delegate->awakeFromNib();
}

MainInterface::~MainInterface() = default;
