// zkprinter: the printers and their low-toner reminder from the command line.
#include "Manager/PrinterStatus.h"
#include "Platform/Dispatch/Time/DetachedThread.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/System/TerminationSignals.h"
#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Tools/zkprinter/Commands/Commands.h"
#include "Tools/zkprinter/Printers/Journal.h"
#include "Tools/zkprinter/Printers/Patience.h"
#include "Tools/zkprinter/Printers/Queue.h"
#include "Tools/zkprinter/Printing/Json.h"
#include "Tools/zkprinter/Printing/Output.h"
#include "Tools/zkprinter/Printing/Report.h"
#include "Tools/zkprinter/Printing/Terminal.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <future>
#include <optional>
#include <sstream>
#include <syslog.h>
#include <unistd.h>
#include <utility>

namespace {

const char *const exitStatuses = R"(Exit statuses:
  0  done                               7  printer answered, but refused
  1  printer not in a normal state      8  CUPS does not answer
  2  wrong usage                        9  this program is not completely installed
  3  no such queue                     10  no permission to open the printer
  4  queue does not print over USB     11  printer held by a job or another program
  5  printer not attached              12  printer unplugged meanwhile
  6  printer did not answer in time    13  transfer failed
                                       14  two printers go by what was asked for
128+n  ended by signal n                15  command took too long
                                       16  result cannot be written
                                       17  this computer lacks memory or threads
                                       18  some printers could not be asked or set)";

constexpr double longestTimeout = 86400; // seconds
constexpr auto patienceOfReaders = std::chrono::seconds(1);

/// What the command line asked for.
struct Request {
    bool json = false;
    bool verbose = false;
    bool watch = false;
    double timeout = 90; // seconds
    bool timeoutGiven = false;
    bool forMachines = false; ///< nobody looks at it: only failures and changes are logged
    ReminderTask reminder;
    std::string queue;
    bool queueGiven = false;
    std::string threshold;
    bool thresholdGiven = false;
    std::string output;
    std::function<ExitStatus(Format)> command;
};

CLI::Option *addQueue(CLI::App &command, Request &request) {
    return command.add_option("QUEUE", request.queue, "Name of a print queue, or a device URI (usb://…)");
}

void checkThreshold(const std::string &text) {
    if (!parseThreshold(text))
        throw CLI::ValidationError("THRESHOLD",
                                   "give \"off\" or a whole number from 2 to 10, not \"" + text + "\"");
}

/// What was asked of reminders; with --all the first word is the threshold.
ReminderTask reminderTask(const Request &request) {
    ReminderTask task = request.reminder;
    std::string queue = request.queue, threshold = request.threshold;
    if (task.all && request.queueGiven) {
        if (request.thresholdGiven)
            throw CLI::ExtrasError({threshold});
        threshold = std::exchange(queue, {});
    }
    if (!task.all && !request.queueGiven)
        throw CLI::RequiredError("QUEUE or --all");
    if (task.all ? request.queueGiven : request.thresholdGiven) {
        checkThreshold(threshold);
        task.threshold = parseThreshold(threshold);
    }
    if (task.check && !task.threshold)
        throw CLI::RequiredError("THRESHOLD (with --check)");
    task.queue = queue;
    return task;
}

void addReminder(CLI::App &app, Request &request) {
    auto *const reminder =
        app.add_subcommand("reminder", "Show or set the toner level at which printers remind");
    addQueue(*reminder, request)->each([&](const std::string &) { request.queueGiven = true; });
    reminder->add_option("THRESHOLD", request.threshold, "\"off\" or 0, or 2 to 10 percent")
        ->each([&](const std::string &) { request.thresholdGiven = true; });
    reminder->add_flag("--all", request.reminder.all, "All queues that print over USB, instead of QUEUE");
    reminder->add_flag("--check", request.reminder.check, "Say what would change, and change nothing");
    reminder->callback([&] {
        request.reminder = reminderTask(request);
        request.forMachines = request.reminder.all;
        request.command = [&](Format format) { return workOnReminder(request.reminder, format); };
    });
}

void addSurveys(CLI::App &app, Request &request) {
    app.add_subcommand("report", "Say status and reminder of the printers of all queues")->callback([&] {
        request.forMachines = true;
        request.command = reportQueues;
    });
    auto *const metrics = app.add_subcommand("metrics", "Print the same as metrics for Prometheus");
    metrics->add_option("--output", request.output, "Replace this file, which is never seen half-written")
        ->type_name("FILE")
        ->check([](const std::string &file) { return file.empty() ? "name a file" : std::string(); });
    metrics->callback([&] {
        request.forMachines = true;
        request.command = [&](Format format) { return writeMetrics(request.output, format); };
    });
}

void addCommands(CLI::App &app, Request &request) {
    app.add_flag("--json", request.json, "Print JSON on standard output and nothing else");
    app.add_flag("-v,--verbose", request.verbose, "Print diagnostics on standard error");
    app.add_option("--timeout", request.timeout,
                   "Longest time that the command may take, in seconds (90; devices --watch: any)")
        ->type_name("SECONDS")
        ->check([](const std::string &text) {
            double seconds = 0;
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
            const bool fits = error == std::errc() && end == text.data() + text.size() && seconds > 0 &&
                              seconds <= longestTimeout;
            return fits ? std::string()
                        : "give a number of seconds above 0, up to 86400, not \"" + text + "\"";
        })
        ->each([&](const std::string &) { request.timeoutGiven = true; });
    app.set_version_flag("--version", std::string("zkprinter ") + ZK_VERSION);
    app.require_subcommand(0, 1); // run() complains of a missing one, after unknown words
    app.fallthrough();
    app.footer(exitStatuses);

    app.add_subcommand("list", "List the print queues of supported models")->callback([&] {
        request.command = listQueues;
    });
    auto *devices = app.add_subcommand("devices", "List the attached printers");
    devices->add_flag("--watch", request.watch, "Go on and report every printer that comes or goes");
    devices->callback([&] { request.command = request.watch ? watchDevices : listDevices; });

    auto *status = app.add_subcommand("status", "Say whether a printer is in a normal state");
    addQueue(*status, request)->required();
    status->callback(
        [&] { request.command = [&](Format format) { return showStatus(request.queue, format); }; });

    addReminder(app, request);
    addSurveys(app, request);
    app.add_subcommand("diagnose", "Write a report for the support, with serial numbers shortened")
        ->callback([&] { request.command = diagnose; });
}

std::string shownSeconds(double seconds) {
    std::ostringstream text;
    text << seconds << (seconds == 1 ? " second" : " seconds");
    return text.str();
}

/// Writes the sentence on standard error, and delivers what was printed.
ExitStatus tell(const Failure &failure) {
    journalFailure(failure.what());
    std::fprintf(stderr, "zkprinter: %s\n", sentenceOf(failure).c_str());
    try {
        deliver();
    } catch (const Failure &) { // the first failure is the one to report
    }
    return failure.status();
}

/// Reports a failure: one sentence on standard error, and with --json an object on standard output.
ExitStatus report(const Failure &failure, bool json) {
    if (json)
        printJson([&](Json &document) { describe(document, failure); });
    return tell(failure);
}

/// The failure for a wrong command line: CLI11's sentence, with a hint at the help.
Failure usage(const CLI::ParseError &error) {
    return {ExitStatus::usage,
            escapedControlCharacters(error.what()) + "; \"zkprinter --help\" shows what can be asked."};
}

/// Prints the help or the version.
void printAnswer(const CLI::App &app, const CLI::Success &question, bool json) {
    std::ostringstream text;
    app.exit(question, text, text);
    if (!json)
        return print(text.str());
    printJson([&](Json &document) {
        if (dynamic_cast<const CLI::CallForVersion *>(&question))
            document.field("name", "zkprinter").field("version", ZK_VERSION);
        else
            document.field("help", text.str());
    });
}

void directLog(bool verbose, bool forMachines) {
    openlog("zkprinter", LOG_PID, LOG_USER);
    if (verbose) {
        NSLogSetSink(NSLogVerbosely);
        setJournal(NSLogVerbosely);
    } else {
        NSLogSetSink(forMachines ? [](NSLogLevel, std::string_view) {} : NSLogSink(NSLogToSystemLogOnly));
        setStatusComplaintSink([](std::string_view) {}); // the failure's sentence says it
    }
}

Failure outOfTime(const Request &request, const std::string &what) {
    const Failure failure(ExitStatus::timedOut, "The command took longer than " +
                                                    shownSeconds(request.timeout) +
                                                    (what.empty() ? "" : ", waiting for " + what) +
                                                    "; try again, or allow it more time with --timeout.");
    return request.queue.empty() || request.reminder.all ? failure
                                                         : failure.about(subjectNamed(request.queue));
}

/// Ends the program from another thread than the command's, which may never return. Waits at most a second
/// for a stopped terminal or another reader who does not read.
[[noreturn]] void giveUp(const Request &request, const std::string &what) {
    std::promise<void> told;
    const auto tellTheEnd = [&] {
        takeOutputOver();
        const Failure failure = outOfTime(request, what);
        if (printUnfinishedDiagnosis(failure, request.json ? Format::json : Format::text))
            tell(failure);
        else
            report(failure, request.json);
        told.set_value();
    };
    if (dispatch::startDetachedThread(tellTheEnd))
        told.get_future().wait_for(patienceOfReaders);
    else
        tellTheEnd();
    dispatch::endProcess(static_cast<int>(ExitStatus::timedOut));
}

ExitStatus carryOut(const Request &request) {
    using Seconds = std::chrono::duration<double>;
    const bool bounded = !request.watch || request.timeoutGiven;
    const Patience patience(
        bounded ? std::optional(std::chrono::duration_cast<Patience::Duration>(Seconds(request.timeout)))
                : std::nullopt,
        [&](const std::string &what) {
            if (!request.verbose) // diagnostics say more
                showPassing(what.empty() ? what : "Waiting for " + what + "…");
        },
        [&](const std::string &what) { giveUp(request, what); });
    return request.command(request.json ? Format::json : Format::text);
}

/// Whether "--json" is among the options; what follows "--" is not an option.
bool asksForJson(int argc, char **argv) {
    const auto end = std::find(argv, argv + argc, std::string_view("--"));
    return std::find(argv, end, std::string_view("--json")) != end;
}

ExitStatus run(int argc, char **argv) {
    CLI::App app("Shows and sets the low-toner reminder of Zelkor USB printers.", "zkprinter");
    Request request;
    request.json = asksForJson(argc, argv); // also when the rest cannot be parsed
    try {
        ExitStatus status = ExitStatus::success;
        try {
            addCommands(app, request);
            app.parse(argc, argv);
            if (!request.command)
                throw CLI::RequiredError("A subcommand");
            directLog(request.verbose, request.forMachines || request.json);
            status = carryOut(request);
        } catch (const ToldFailure &failure) {
            deliver();
            return tell(failure);
        } catch (const CLI::Success &question) {
            printAnswer(app, question, request.json);
        } catch (const CLI::ParseError &error) {
            throw usage(error);
        }
        deliver();
        return status;
    } catch (const Failure &failure) {
        return report(failure, request.json);
    } catch (const std::exception &error) { // of the standard library
        return report({ExitStatus::outOfResources, std::string("The command could not be carried out (") +
                                                       error.what() +
                                                       "); end some other programs and try again."},
                      request.json);
    }
}

/// If the caller closed a standard descriptor, the next file or connection would get its number, and what is
/// printed. This puts something in its place that cannot be written to either.
void occupyStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(descriptor, F_GETFD) == -1)
            open("/dev/null", O_RDONLY); // takes the lowest free descriptor, which is this one
}

} // namespace

int main(int argc, char **argv) {
    occupyStandardDescriptors();
    dispatch::endOnSignals(erasePassing);
    return static_cast<int>(run(argc, argv));
}
