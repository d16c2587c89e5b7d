// All supported queues with their printers, for commands that work on each of them.
#pragma once

#include "Tools/zkprinter/Printers/Queue.h"
#include "Tools/zkprinter/Printers/SideBySide.h"

#include <functional>
#include <optional>
#include <vector>

/// A queue and its printer, or why it has none.
struct QueuePrinter {
    Queue queue;
    Ref<ZKUSB> printer{};
    std::optional<Failure> failure{};
};

/// The queue names are different. Fails when the queues cannot be listed.
std::vector<QueuePrinter> queuePrinters();

/// For each queue the number of the first queue that has the same printer; none without a printer.
std::vector<std::optional<std::size_t>> firstOfSamePrinter(const std::vector<QueuePrinter> &queues);

/// Asks every printer once, side by side, through the first queue that has it, and gives its answer to all
/// its queues; none without a printer. `ask` is called on threads of the pool and must not throw.
template <class Answer>
std::vector<std::optional<Answer>> askEach(const std::vector<QueuePrinter> &queues,
                                           const std::function<Answer(const QueuePrinter &)> &ask) {
    const auto firsts = firstOfSamePrinter(queues);
    std::vector<std::size_t> asked;
    for (std::size_t number = 0; number < queues.size(); ++number)
        if (firsts[number] == number)
            asked.push_back(number);
    std::vector<std::optional<Answer>> answers(queues.size());
    sideBySide(asked.size(), [&](std::size_t turn) { answers[asked[turn]] = ask(queues[asked[turn]]); });
    for (std::size_t number = 0; number < queues.size(); ++number)
        if (firsts[number])
            answers[number] = answers[*firsts[number]];
    return answers;
}

/// The end of a command of which `failed` of `count` queues failed, each of which was told: a failure that
/// says how many, or success.
ExitStatus endOf(std::size_t failed, std::size_t count, const char *done);
