// The queues that the window lists, and why there are none.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

class NSMutableArray;
class NSString;

struct QueueList {
    enum class State {
        found,
        noneSupported, ///< the print service has no queue of a supported model
        silent,        ///< no print service answered
        damaged,       ///< a file of this program is missing or makes no sense
    };

    State state = State::noneSupported;
    Ref<NSMutableArray> entries;  ///< table entries (see QueueMatching.h)
    Ref<NSString> latestDestName; ///< of all queues, supported or not; none without any
};

/// Asks the print service. Blocks for as long as it takes to answer, or until its patience ends (see
/// PrintService.h). Any thread.
QueueList readQueueList();
