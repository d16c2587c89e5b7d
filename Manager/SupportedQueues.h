// Which print queues of the host belong to supported models.
//
// Threads: any; blocks until the print service answers, at most for `printServicePatience` (PrintService.h).
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <functional>
#include <string>

class NSArray;
class NSMutableArray;
class NSString;

/// What was found, and if there are no entries, why.
struct SupportedQueues {
    enum class Outcome {
        matching,       ///< there are entries
        noneSupported,  ///< there are queues, but none of a supported model
        noQueues,       ///< the print service has no queue
        noPrintService, ///< the print service does not answer
        noModels,       ///< there is no list of supported models
    };

    Outcome outcome = Outcome::noPrintService;
    int destinations = 0; ///< how many queues there are in all
    std::string server;   ///< which print service was asked: a host, with an unusual port, or a socket's path
    std::string service;  ///< how it names itself, e.g. "CUPS/2.4 IPP/2.1"; empty when it did not say
};

/// Appends to `entries`, in the order of CUPS, a table entry for every queue and every model of `models`
/// whose "ppdModel" equals the queue's make and model. A queue that matches two models appears twice.
///
/// A table entry is a mutable dictionary of texts: "displayName" (the queue's description), "hideName" (its
/// name) and "deviceUri". A text that the queue lacks is left out.
///
/// `seen`, which may be empty, is called with the name of every queue, supported or not. Without `models`
/// nothing matches.
SupportedQueues matchQueues(const Ref<NSArray> &models, const Ref<NSMutableArray> &entries,
                            const std::function<void(const Ref<NSString> &destName)> &seen);
