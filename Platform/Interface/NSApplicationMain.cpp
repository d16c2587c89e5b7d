#include "Platform/Foundation/Localization.h"
#include "Platform/Interface/NSApplication.h"

#include <QApplication>

#include <cstdio>
#include <syslog.h>
#include <unistd.h>

int NSApplicationMain(int argc, char **argv) {
    NSLocalizationPrepare();
    QApplication qtApplication(argc, argv);
    openlog(QApplication::applicationName().toUtf8().constData(), LOG_PID, LOG_USER);
    NSApplication application;
    NSLoadMainInterface(application);
    const int status = application.run();
    std::fflush(nullptr);
    _exit(status);
}
