// The program's commands. Each prints its result (Output.h), as text or as JSON, and returns the exit status;
// it throws a Failure when it cannot be carried out.
#pragma once

#include "Tools/zkprinter/Failures/Failure.h"
#include "Tools/zkprinter/Printing/Format.h"

#include <cstdint>
#include <optional>
#include <string>

/// Lists the queues of supported models.
ExitStatus listQueues(Format format);

/// Lists the attached printers.
ExitStatus listDevices(Format format);

/// Lists the attached printers, and then every one that comes or goes, until interrupted or until nobody
/// reads the output.
ExitStatus watchDevices(Format format);

/// Prints status and reminder of every queue. Throws a ToldFailure (`partly`) after printing them if printers
/// could not be asked.
ExitStatus reportQueues(Format format);

/// Prints what `report` finds out as metrics, or writes it to the file, if one is given.
ExitStatus writeMetrics(const std::string &file, Format format);

/// Prints whether the printer is in a normal state. `queue` is a queue's name or a device URI.
ExitStatus showStatus(const std::string &queue, Format format);

/// What is to be done about reminders.
struct ReminderTask {
    std::string queue{};                     ///< its name or a device URI; empty with `all`
    bool all = false;                        ///< all queues that print over USB
    std::optional<std::int32_t> threshold{}; ///< to be set: 0 for off, or 2 to 10 percent; none to show it
    bool check = false;                      ///< only say what would change
};

/// Prints at which toner level the printer reminds; or sets that level unless the printer holds it already,
/// reads it back and prints what the printer now holds. For all queues, throws a ToldFailure (`partly`) after
/// printing if some failed.
ExitStatus workOnReminder(const ReminderTask &task, Format format);

/// Prints a report for the support on why a printer cannot be reached, with serial numbers shortened. If the
/// queues cannot be listed, throws a ToldFailure after printing the rest.
ExitStatus diagnose(Format format);

/// Prints what `diagnose` has found so far, and the failure that ends it; false when `diagnose` has found
/// nothing or is not running. Any thread.
bool printUnfinishedDiagnosis(const Failure &failure, Format format);

/// "off", "0" and "2" to "10" as a threshold; std::nullopt for any other text.
std::optional<std::int32_t> parseThreshold(const std::string &text);
