#include "Tools/zkprinter/Printers/QueuePrinters.h"

#include <algorithm>

std::vector<QueuePrinter> queuePrinters() {
    std::vector<QueuePrinter> all;
    const AttachedPrinters attached;
    for (const Queue &queue : supportedQueues()) {
        if (std::ranges::find(all, queue.name, [](const QueuePrinter &one) { return one.queue.name; }) !=
            all.end())
            continue; // its model is listed twice
        try {
            all.push_back({.queue = queue, .printer = attached.printerOf(queue)});
        } catch (const Failure &failure) {
            all.push_back({.queue = queue, .failure = failure});
        }
    }
    return all;
}

std::vector<std::optional<std::size_t>> firstOfSamePrinter(const std::vector<QueuePrinter> &queues) {
    std::vector<std::optional<std::size_t>> firsts;
    firsts.reserve(queues.size());
    for (const QueuePrinter &queue : queues) {
        const auto first = std::ranges::find(queues, queue.printer, &QueuePrinter::printer);
        firsts.push_back(queue.printer ? std::optional<std::size_t>(first - queues.begin()) : std::nullopt);
    }
    return firsts;
}

ExitStatus endOf(std::size_t failed, std::size_t count, const char *done) {
    if (failed == 0)
        return ExitStatus::success;
    throw ToldFailure(Failure(ExitStatus::partly, std::to_string(failed) + " of " + std::to_string(count) +
                                                      " queues could not be " + done +
                                                      "; do what is said of each, and try again."));
}
