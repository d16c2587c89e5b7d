// The versions in a report.
#pragma once

#include "Tools/zkprinter/Printing/Report.h"

/// The versions of the program, the print service, the kernel and the distribution, and the file of the
/// transport that is loaded. What cannot be determined is left unknown. `printService` is how that names
/// itself, empty when unknown.
Facts versions(const std::string &printService);
