// What a report is about: this program, what it runs with and where.
#pragma once

#include "Tools/zkprinter/Report.h"

/// The versions of the program, the print service, the kernel and the distribution, and the file of the
/// transport that is really loaded. What cannot be found out is left unknown. `printService` is what that
/// calls itself, empty when unknown.
Facts versions(const std::string &printService);
