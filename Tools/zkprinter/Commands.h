// The program's commands. Each prints its result (Output.h), as text or as JSON, and returns the exit status;
// it throws a Failure when it cannot be carried out.
#pragma once

#include "Tools/zkprinter/Failure.h"

#include <cstdint>
#include <optional>
#include <string>

enum class Format { text, json };

/// Lists the queues of supported models.
ExitStatus listQueues(Format format);

/// Lists the attached printers.
ExitStatus listDevices(Format format);

/// Lists the attached printers, and then every one that comes or goes, until interrupted or until nobody
/// reads the output.
ExitStatus watchDevices(Format format);

/// Prints whether the printer is in a normal state. `queue` here and below is a queue's name or a device URI.
ExitStatus showStatus(const std::string &queue, Format format);

/// Prints at which toner level the printer reminds.
ExitStatus showReminder(const std::string &queue, Format format);

/// Sets that level (0 for off, or 2 to 10 percent), reads it back and prints what the printer now holds.
ExitStatus setReminder(const std::string &queue, std::int64_t threshold, Format format);

/// Prints a report for the support on why a printer cannot be reached, with serial numbers shortened. If the
/// queues cannot be listed, throws a ToldFailure after printing the rest.
ExitStatus diagnose(Format format);

/// Prints what `diagnose` has found so far, and the failure that ends it; false when `diagnose` has found
/// nothing or is not running. Any thread.
bool printUnfinishedDiagnosis(const Failure &failure, Format format);

/// "off" and "2" to "10" as a threshold; std::nullopt for any other text.
std::optional<std::int64_t> parseThreshold(const std::string &text);
