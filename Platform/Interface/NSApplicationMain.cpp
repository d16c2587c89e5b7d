// In a file of its own, so that only programs with a main interface are linked to what it calls.
#include "Platform/Foundation/System/Localization.h"
#include "Platform/Foundation/System/TerminationSignals.h"
#include "Platform/Interface/NSApplication.h"
#include "Platform/Runtime/Object/NSException.h"

#include <QApplication>

#include <clocale>
#include <cstdio>
#include <string>
#include <syslog.h>

int NSApplicationMain(int argc, char **argv) {
    if (!NSLoadMainInterface)
        throw NSException(NSGenericException,
                          "NSApplicationMain: the program does not define NSLoadMainInterface");
    NSLocalizationPrepare();
    const std::string messages = std::setlocale(LC_MESSAGES, nullptr);
    QApplication qtApplication(argc, argv); // which takes the locale from the environment again
    std::setlocale(LC_MESSAGES, messages.c_str());
    openlog(nullptr, LOG_PID, LOG_USER); // under the name of the program
    NSApplication application;
    NSLoadMainInterface(application);
    const int status = application.run();
    std::fflush(nullptr);
    // Destroys nothing under a running thread, and lets a transport give back the printers it holds.
    dispatch::endProcess(status);
}
