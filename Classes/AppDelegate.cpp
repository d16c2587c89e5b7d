#include "Classes/AppDelegate.h"

#include "Classes/MyMainWindow.h"
#include "Platform/Foundation/System/Localization.h"
#include "Platform/Interface/QtText.h"
#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(AppDelegate) {}

AppDelegate *AppDelegate::current() {
    NSApplication *application = NSApplication::sharedApplication();
    return application ? dynamic_cast<AppDelegate *>(application->delegate()) : nullptr;
}

void AppDelegate::awakeFromNib() {
    if (MyMainWindow *mainWindow = window())
        mainWindow->setWindowTitle(
            toQString(NSLocalizedStringFromTable(u"CFBundleDisplayName"_ns, nullptr, "InfoPlist")));
}
