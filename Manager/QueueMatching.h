// Which print queues of the host's printing system belong to supported models.
//
// Threads: any, one call at a time a thread; blocks for as long as CUPS takes to answer.
#pragma once

#include "Platform/Runtime/Ref.h"

#include <functional>
#include <string>

class NSArray;
class NSMutableArray;
class NSString;

/// How CUPS answered.
struct QueueMatching {
    int destinations = 0;  ///< how many queues there are in all
    bool reachable = true; ///< false when no print service answered
    std::string server;    ///< when not reachable: who should have answered, a host or a socket's path
};

/// Appends to `entries`, in the order of CUPS, a table entry for every queue and every model of `models`
/// whose "ppdModel" equals the queue's make and model. So a queue that two models match appears twice.
///
/// A table entry is a mutable dictionary of texts: "displayName" (the queue's description), "hideName" (its
/// name) and "deviceUri". A text that the queue lacks is left out.
///
/// `seen` is told the name of every queue as it is read, supported or not.
QueueMatching matchQueues(const Ref<NSArray> &models, const Ref<NSMutableArray> &entries,
                          const std::function<void(const Ref<NSString> &destName)> &seen);
