// The findings about all queues as metrics: text that is valid for Prometheus' text format and for
// OpenMetrics.
//
// All are gauges without a time stamp, and the last line is "# EOF" with a line feed. A family without a
// value is left out. Queues that do not print over USB have none.
#pragma once

#include "Tools/zkprinter/Printers/Survey.h"

#include <string>
#include <vector>

/// `cupsUp`: whether the print service answers; without it there are no findings.
std::string metricsText(const std::vector<QueueFinding> &findings, bool cupsUp, const std::string &version);
