// What the program can do. Each command prints its result on standard output, as text or as JSON, and gives
// the exit status; what stops it is thrown as a Failure.
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

/// Lists the attached printers and then every one that comes or goes, until interrupted.
ExitStatus watchDevices(Format format);

/// Says whether the printer is in a normal state.
ExitStatus showStatus(const std::string &queue, Format format);

/// Says at which toner level the printer reminds.
ExitStatus showReminder(const std::string &queue, Format format);

/// Sets that level (0 for off, or 2 to 10 percent), reads it back and says what the printer now holds.
ExitStatus setReminder(const std::string &queue, std::int64_t threshold, Format format);

/// Writes all that tells why a printer cannot be reached, with serial numbers shortened, for the support.
/// Written whatever it finds. Fails, when that is printed, with what keeps it from listing the queues.
ExitStatus diagnose(Format format);

/// Prints what `diagnose` found by now, and the failure that ends it; false when that is not what runs. Any
/// thread.
bool printUnfinishedDiagnosis(const Failure &failure, Format format);

/// "off" and "2" to "10" as a threshold; nothing for any other text.
std::optional<std::int64_t> parseThreshold(const std::string &text);
