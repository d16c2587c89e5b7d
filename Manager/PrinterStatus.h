// Is a printer in a normal state?
#pragma once

#include "Platform/Runtime/Ref.h"

#include <cstdint>

class NSString;

/// What a printer said of itself.
struct PrinterStatus {
    enum class Outcome {
        normal,
        notNormal,  ///< it answered with another state; see `value`
        noAnswer,   ///< the transport failed; see `transportStatus`
        unreadable, ///< it answered with something that is no status
    };

    Outcome outcome = Outcome::noAnswer;
    std::int64_t value = 0;           ///< "printer_status" of the answer
    std::int32_t transportStatus = 0; ///< of zkcomtl.h, when there was no answer

    bool isNormal() const { return outcome == Outcome::normal; }
};

/// Asks the printer of the device URI through the transport's printer-information call. Blocks the calling
/// thread for up to 2 seconds. Any thread.
PrinterStatus readPrinterStatus(const Ref<NSString> &deviceUri);

/// Judges the status text of a printer: a JSON object whose "printer_status" is 1 or 3 when all is well.
PrinterStatus parsePrinterStatus(const Ref<NSString> &text);
