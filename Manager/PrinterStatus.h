// Whether a printer is in a normal state.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <cstdint>
#include <functional>
#include <string_view>

class NSString;

/// What a printer answered.
struct PrinterStatus {
    enum class Outcome {
        normal,
        notNormal,  ///< it answered with another state; see `value`
        noAnswer,   ///< the transport failed; see `transportStatus`
        unreadable, ///< it answered with something that is not a status
    };

    Outcome outcome = Outcome::noAnswer;
    std::int64_t value = 0;           ///< "printer_status" of the answer
    std::int32_t transportStatus = 0; ///< when there was no answer, a value of zkcomtl.h

    bool isNormal() const { return outcome == Outcome::normal; }
};

/// Receives the line, with its line feed, that a failed reading writes to standard error.
using StatusComplaintSink = std::function<void(std::string_view line)>;

/// Sets where these lines go and returns the sink that was set before; an empty one stands for standard
/// error. The sink is called by one thread at a time and must not set another. Any thread.
StatusComplaintSink setStatusComplaintSink(StatusComplaintSink sink);

/// Asks the printer of the device URI through the transport's printer-information call, with a time-out of 2
/// seconds. Blocks the calling thread, longer if the printer is slow to open. Any thread.
PrinterStatus readPrinterStatus(const Ref<NSString> &deviceUri);

/// Judges the status text of a printer: a JSON object whose "printer_status" is 1 or 3 in a normal state.
/// Other JSON, and an object without it, is not normal; text that is not JSON is unreadable.
PrinterStatus parsePrinterStatus(const Ref<NSString> &text);
