// zkutility: the entry of the program with the window.
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/System/TerminationSignals.h"
#include "Platform/Interface/NSApplication.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

constexpr const char *help = R"(Shows and sets the low-toner reminder of Zelkor USB printers.
Usage: zkutility [OPTIONS]

Options:
  -h,--help     Print this help message and exit
  -v,--verbose  Print diagnostics on standard error
  --version     Display program version information and exit

"zkprinter" does the same on the command line.
)";

/// Prints the text and ends the program; with failure when standard output does not take it.
[[noreturn]] void answer(const char *text) {
    const bool written = std::fputs(text, stdout) >= 0 && std::fflush(stdout) == 0;
    if (!written)
        std::perror("zkutility: Standard output does not take the answer");
    std::exit(written ? EXIT_SUCCESS : EXIT_FAILURE);
}

QtMessageHandler usualHandler = nullptr;

/// Until there is a screen, Qt only reports why there is none, in many lines and with an abort. These lines
/// go to the system log, and the user gets one sentence.
void tellInOneSentence(QtMsgType type, const QMessageLogContext &context, const QString &message) {
    if (QGuiApplication::primaryScreen())
        return usualHandler(type, context, message);
    NSLogToSystemLogOnly(NSLogLevel::info, message.toStdString());
    if (type != QtFatalMsg)
        return;
    std::fputs(
        "zkutility: No display can be reached to show the window on; start it in a desktop session, or use "
        "zkprinter on the command line.\n",
        stderr);
    dispatch::endProcess(EXIT_FAILURE);
}

} // namespace

int main(int argc, char **argv) {
    dispatch::endOnSignals();
    const auto isGiven = [&](std::string_view option) {
        return std::find(argv + 1, argv + argc, option) != argv + argc;
    };
    if (isGiven("--help") || isGiven("-h"))
        answer(help);
    if (isGiven("--version"))
        answer("zkutility " ZK_VERSION "\n");
    if (isGiven("--verbose") || isGiven("-v"))
        NSLogSetSink(NSLogVerbosely);
    usualHandler = qInstallMessageHandler(tellInOneSentence);
    return NSApplicationMain(argc, argv);
}
