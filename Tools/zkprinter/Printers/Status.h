// Whether one printer is in a normal state: asked, and judged.
#pragma once

#include "Manager/PrinterStatus.h"
#include "Tools/zkprinter/Printers/Exchanged.h"

#include <string>

using StatusAnswer = Exchanged<PrinterStatus>;

/// Asks the printer; `name` is what the user calls it. Blocks as readPrinterStatus does; any thread.
StatusAnswer askStatus(const Ref<ZKUSB> &printer, const std::string &name);

/// The status in the answer. Fails when the printer could not be asked or its answer was no status.
PrinterStatus statusIn(const StatusAnswer &answer, const std::string &name);
