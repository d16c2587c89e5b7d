// Is a printer in a normal state?
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <cstdint>
#include <functional>
#include <string_view>

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

/// Receives the line, with its end, that a failed reading has for standard error.
using StatusComplaintSink = std::function<void(std::string_view line)>;

/// Replaces where these lines go and returns what was there; an empty function stands for standard error. Any
/// thread.
StatusComplaintSink setStatusComplaintSink(StatusComplaintSink sink);

/// Asks the printer of the device URI through the transport's printer-information call. Blocks the calling
/// thread for up to 2 seconds. Any thread.
PrinterStatus readPrinterStatus(const Ref<NSString> &deviceUri);

/// Judges the status text of a printer: a JSON object whose "printer_status" is 1 or 3 when all is well.
PrinterStatus parsePrinterStatus(const Ref<NSString> &text);
