// One reading of every supported queue: what it is, its printer's status and its reminder.
#pragma once

#include "Manager/PrinterStatus.h"
#include "Tools/zkprinter/Failures/OrFailure.h"
#include "Tools/zkprinter/Printers/Queue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct QueueFinding {
    Queue queue;
    std::optional<std::string>
        model{}; ///< as the printer names its product; if it is not attached, as the URI does
    std::optional<std::string> serialNumber{}; ///< likewise
    bool attached = false;
    OrFailure<PrinterStatus> status;
    OrFailure<std::int32_t> reminder; ///< the threshold
    double seconds = 0;               ///< how long the printer was asked

    /// The failures, of status and of reminder.
    std::vector<Failure> failures() const;
};

/// Reads all queues, each printer once and all side by side. Fails when the queues cannot be listed.
std::vector<QueueFinding> survey();
