// The host's printing system itself.
#pragma once

#include <string>

/// What the print service calls itself, e.g. "CUPS/2.4 IPP/2.1"; empty when it does not answer. Any thread;
/// blocks for as long as it takes to answer.
std::string printServiceVersion();
