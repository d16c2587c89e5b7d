// The consumable-reminder threshold: the toner level, in percent, at which a printer warns that toner is low.
// 0 means that the reminder is off; otherwise it is 2 to 10.
//
// Threads: all queries block their thread for one exchange, which may take 35 seconds once the printer is
// open: 5 for the drain, and three time-outs of 10. So call them off the main thread. `deliver` is called on
// that thread before the query returns.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

class ZKUSB;

/// What a printer answered to the question for its threshold.
struct TonerHintReading {
    enum class Outcome {
        nothing,  ///< the transport failed
        rejected, ///< the printer answered, but not as expected
        threshold,
    };

    Outcome outcome = Outcome::nothing;
    std::int32_t threshold =
        0; ///< the number at the beginning of the printer's words, unchecked; 0 without one

    // For callers that check the threshold:
    std::string words{};       ///< the reply's data: foreign bytes
    std::size_t announced = 0; ///< how many bytes of data the reply's header announced
};

/// What a printer answered to a new threshold.
enum class TonerHintWriting {
    nothing, ///< the transport failed
    unclear, ///< the printer answered, but not to this
    failure, ///< the printer refused
    success,
};

/// Asks the printer for its threshold. `deliver` may not be called at all (no printer, or the exchange ended
/// silently), once, or twice: a threshold whose data had the wrong length is followed by another outcome.
void readTonerHint(const Ref<ZKUSB> &printer, const std::function<void(const TonerHintReading &)> &deliver);

/// Sets the threshold, 0 or 2 to 10, which is not checked here. `deliver` as above.
void writeTonerThreshold(const Ref<ZKUSB> &printer, std::int64_t threshold,
                         const std::function<void(TonerHintWriting)> &deliver);

/// The same for the threshold of an item of the pop-up (see ConsumableReminder.h).
void writeTonerHint(const Ref<ZKUSB> &printer, std::int64_t popUpIndex,
                    const std::function<void(TonerHintWriting)> &deliver);
