// zkprinter: the printers and their low-toner reminder from the command line.
#include "Manager/PrinterStatus.h"
#include "Platform/Foundation/NSLog.h"
#include "Platform/Foundation/Unicode.h"
#include "Tools/zkprinter/Commands.h"
#include "Tools/zkprinter/Json.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <syslog.h>
#include <unistd.h>

namespace {

const char *const exitStatuses = R"(Exit statuses:
  0  done                               7  printer answered, but refused
  1  printer not in a normal state      8  CUPS does not answer
  2  wrong usage                        9  this program is not completely installed
  3  no such queue                     10  no permission to open the printer
  4  queue does not print over USB     11  printer held by a job or another program
  5  printer not attached              12  printer unplugged meanwhile
  6  printer did not answer in time    13  transfer failed
                                       14  two printers go by what was asked for)";

/// What the command line asked for.
struct Request {
    bool json = false;
    bool verbose = false;
    bool watch = false;
    std::string queue;
    std::string threshold;
    std::function<ExitStatus(Format)> command;
};

void addQueue(CLI::App &command, Request &request) {
    command.add_option("QUEUE", request.queue, "Name of a print queue, or a device URI (usb://…)")
        ->required();
}

ExitStatus runReminder(const Request &request, Format format) {
    if (request.threshold.empty())
        return showReminder(request.queue, format);
    return setReminder(request.queue, *parseThreshold(request.threshold), format);
}

void addCommands(CLI::App &app, Request &request) {
    app.add_flag("--json", request.json, "Print JSON on standard output and nothing else");
    app.add_flag("-v,--verbose", request.verbose, "Print diagnostics on standard error");
    app.set_version_flag("--version", std::string("zkprinter ") + ZK_VERSION);
    app.require_subcommand(0, 1); // a missing one is noticed in run, after words that are none
    app.fallthrough();
    app.footer(exitStatuses);

    app.add_subcommand("list", "List the print queues of supported models")->callback([&] {
        request.command = listQueues;
    });
    auto *devices = app.add_subcommand("devices", "List the attached printers");
    devices->add_flag("--watch", request.watch, "Go on and report every printer that comes or goes");
    devices->callback([&] { request.command = request.watch ? watchDevices : listDevices; });

    auto *status = app.add_subcommand("status", "Say whether a printer is in a normal state");
    addQueue(*status, request);
    status->callback(
        [&] { request.command = [&](Format format) { return showStatus(request.queue, format); }; });

    auto *reminder = app.add_subcommand("reminder", "Show or set the toner level at which a printer reminds");
    addQueue(*reminder, request);
    reminder->add_option("THRESHOLD", request.threshold, "\"off\", or 2 to 10 percent")
        ->check([](const std::string &text) {
            return parseThreshold(text) ? std::string()
                                        : "give \"off\" or a whole number from 2 to 10, not \"" + text + "\"";
        });
    reminder->callback(
        [&] { request.command = [&](Format format) { return runReminder(request, format); }; });

    app.add_subcommand("diagnose", "Write a report for the support, with serial numbers shortened")
        ->callback([&] { request.command = diagnose; });
}

/// What the user typed need not be UTF-8, but a sentence that repeats it is.
std::string repaired(const std::string &bytes) {
    std::u16string units;
    unicode::appendUTF16(units, bytes);
    std::string text;
    unicode::appendUTF8(text, units);
    return text;
}

ExitStatus report(ExitStatus status, const std::string &message, bool json) {
    const std::string sentence = repaired(message);
    if (json)
        printJson([&](Json &document) {
            document.object("error", [&](Json &error) {
                error.field("code", static_cast<std::int64_t>(status))
                    .field("name", nameOf(status))
                    .field("message", sentence);
            });
        });
    std::fprintf(stderr, "zkprinter: %s\n", sentence.c_str());
    return status;
}

/// Wrong usage has a sentence too: CLI11's, with where to look.
ExitStatus reportUsage(const CLI::ParseError &error, int argc, char **argv) {
    const bool json = std::find(argv, argv + argc, std::string_view("--json")) != argv + argc;
    return report(ExitStatus::usage,
                  escapedControlCharacters(error.what()) + "; \"zkprinter --help\" shows what can be asked.",
                  json);
}

void directLog(bool verbose) {
    if (!verbose) // a failure has its sentence
        setStatusComplaintSink([](std::string_view) {});
    openlog("zkprinter", LOG_PID, LOG_USER);
    NSLogSetSink([verbose](std::string_view line) {
        NSLogToSystemLogOnly(line);
        if (verbose)
            std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
    });
}

ExitStatus run(int argc, char **argv) {
    CLI::App app("Shows and sets the low-toner reminder of Zelkor USB printers.", "zkprinter");
    Request request;
    addCommands(app, request);
    try {
        app.parse(argc, argv);
        if (!request.command)
            throw CLI::RequiredError("A subcommand");
    } catch (const CLI::Success &help) {
        app.exit(help);
        return ExitStatus::success;
    } catch (const CLI::ParseError &error) {
        return reportUsage(error, argc, argv);
    }
    directLog(request.verbose);
    try {
        return request.command(request.json ? Format::json : Format::text);
    } catch (const Failure &failure) {
        return report(failure.status(), failure.what(), request.json);
    }
}

/// A standard descriptor that the caller closed would go to the next file or connection, which would then
/// get what is printed.
void occupyStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(descriptor, F_GETFD) == -1)
            open("/dev/null", O_RDWR); // takes the lowest free descriptor, which is this one
}

} // namespace

int main(int argc, char **argv) {
    occupyStandardDescriptors();
    return static_cast<int>(run(argc, argv));
}
