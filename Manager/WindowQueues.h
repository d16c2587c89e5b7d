// The queues that the window lists, and why there are none.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

class NSMutableArray;
class NSString;

struct WindowQueues {
    enum class State {
        found,
        noneSupported, ///< the print service has no queue of a supported model
        silent,        ///< no print service answered
        damaged,       ///< a file of this program is missing or cannot be used
    };

    State state = State::noneSupported;
    Ref<NSMutableArray> entries;  ///< table entries (see SupportedQueues.h)
    Ref<NSString> latestDestName; ///< the name of the last queue, supported or not; none without queues
};

/// Asks the print service. Blocks until it answers, at most for `printServicePatience` (PrintService.h). Any
/// thread.
WindowQueues readWindowQueues();
