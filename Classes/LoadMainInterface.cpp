// What the application's entry calls to get its main interface: linked into the program itself, not the
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
    static auto &interface = *new MainInterface(application); // as long as the process
    WindowPlace::restore(*interface.window);
    interface.window->show();
}
