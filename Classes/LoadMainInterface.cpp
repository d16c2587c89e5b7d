// The function that NSApplicationMain calls for the main interface. Linked into the program itself, not the
// library.
#include "Classes/MainInterface.h"
#include "Classes/MyMainWindow.h"
#include "Classes/WindowPlace.h"
#include "Platform/Interface/NSApplication.h"

#include <QApplication>
#include <QIcon>

void NSLoadMainInterface(NSApplication &application) {
    QApplication::setApplicationName(QStringLiteral("zkutility"));
    QApplication::setDesktopFileName(QStringLiteral("zkutility"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/zkutility.png")));
    static auto &interface = *new MainInterface(application); // lives as long as the process
    WindowPlace::restore(*interface.window);
    interface.window->show();
}
