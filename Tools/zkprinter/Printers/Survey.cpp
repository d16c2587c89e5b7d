#include "Tools/zkprinter/Printers/Survey.h"

#include "Platform/Dispatch/Time/Clock.h"
#include "Tools/zkprinter/Printers/QueuePrinters.h"
#include "Tools/zkprinter/Printers/Reminder.h"
#include "Tools/zkprinter/Printers/Status.h"

namespace {

struct Answers {
    StatusAnswer status;
    ReminderAnswer reminder;
    double seconds = 0;
};

Answers ask(const QueuePrinter &one) {
    dispatch::Clock &clock = dispatch::Clock::current();
    const dispatch::Instant begin = clock.now();
    Answers answers{.status = askStatus(one.printer, one.queue.name),
                    .reminder = askReminder(one.printer, one.queue.name)};
    answers.seconds = std::chrono::duration<double>(clock.now() - begin).count();
    return answers;
}

void addNames(QueueFinding &finding, const Ref<ZKUSB> &printer) {
    auto names =
        finding.queue.printsOverUsb() ? transport::parsePrinterUri(*finding.queue.deviceUri) : std::nullopt;
    if (printer)
        names = printer->identity();
    if (!names)
        return;
    finding.model = names->product;
    finding.serialNumber = names->serial;
}

QueueFinding findingOf(const QueuePrinter &one, const std::optional<Answers> &answers) {
    const std::string &name = one.queue.name;
    QueueFinding finding =
        answers ? QueueFinding{.queue = one.queue,
                               .attached = true,
                               .status = orFailure([&] { return statusIn(answers->status, name); }),
                               .reminder = orFailure([&] { return thresholdIn(answers->reminder, name); }),
                               .seconds = answers->seconds}
                : QueueFinding{.queue = one.queue, .status = *one.failure, .reminder = *one.failure};
    addNames(finding, one.printer);
    return finding;
}

} // namespace

std::vector<Failure> QueueFinding::failures() const {
    std::vector<Failure> all;
    if (const auto *const failure = std::get_if<Failure>(&status))
        all.push_back(*failure);
    if (const auto *const failure = std::get_if<Failure>(&reminder))
        all.push_back(*failure);
    return all;
}

std::vector<QueueFinding> survey() {
    const std::vector<QueuePrinter> queues = queuePrinters();
    const auto answers = askEach<Answers>(queues, ask);
    std::vector<QueueFinding> findings;
    findings.reserve(queues.size());
    for (std::size_t number = 0; number < queues.size(); ++number)
        findings.push_back(findingOf(queues[number], answers[number]));
    return findings;
}
