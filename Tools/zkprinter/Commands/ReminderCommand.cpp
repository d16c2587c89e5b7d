// The command `reminder`.
#include "Manager/ConsumableReminder.h"
#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Tools/zkprinter/Commands/Commands.h"
#include "Tools/zkprinter/Failures/OrFailure.h"
#include "Tools/zkprinter/Printers/Journal.h"
#include "Tools/zkprinter/Printers/QueuePrinters.h"
#include "Tools/zkprinter/Printers/Reminder.h"
#include "Tools/zkprinter/Printing/Report.h"
#include "Tools/zkprinter/Printing/Terminal.h"

#include <charconv>

namespace {

/// What was asked of the printer of one queue.
struct Asked {
    ReminderAnswer answer{}; ///< when nothing is to be set, or only to be checked
    std::optional<ReminderSetting> setting{};
};

/// What is known of it now.
struct Outcome {
    ReminderChange change; ///< its threshold only, when nothing was to be set
    ReminderTask task;
};

Asked carryOut(const Ref<ZKUSB> &printer, const std::string &name, const ReminderTask &task) {
    if (task.threshold && !task.check)
        return {.setting = setReminder(printer, name, *task.threshold)};
    return {.answer = askReminder(printer, name)};
}

Outcome outcomeOf(const Asked &asked, const std::string &name, const ReminderTask &task) {
    if (asked.setting)
        return {changeBy(*asked.setting, name, *task.threshold), task};
    if (task.threshold)
        return {changeAfter(asked.answer, name, *task.threshold), task};
    return {{.threshold = thresholdIn(asked.answer, name)}, task};
}

void describe(Json &json, const Outcome &outcome) {
    const auto &[change, task] = outcome;
    json.field("enabled", change.threshold != 0).field("threshold", std::int64_t{change.threshold});
    if (!task.threshold)
        return;
    change.previous ? json.field("previous", std::int64_t{*change.previous}) : json.null("previous");
    json.field("changed", change.changed).field("check", task.check);
}

std::string sentenceOf(const Queue &queue, const Outcome &outcome) {
    const auto &[change, task] = outcome;
    const std::string start = "The low-toner reminder of \"" + escapedControlCharacters(queue.name) + "\" ";
    const std::string state = reminderText(change.threshold);
    if (!task.threshold)
        return start + "is " + state + ".";
    if (!change.changed)
        return start + "is already " + state + ".";
    if (!task.check)
        return start + "is now " + state + ".";
    return start + "would be " + state + "; now it is " +
           (change.previous ? reminderText(*change.previous) : "something that is no reminder") + ".";
}

ExitStatus workOnOne(const ReminderTask &task, Format format) {
    return withPrinterOf(task.queue, [&](const Queue &queue, const Ref<ZKUSB> &printer) {
        const Outcome outcome = outcomeOf(carryOut(printer, queue.name, task), queue.name, task);
        if (format == Format::json)
            printJson([&](Json &json) {
                describe(json, queue.subject());
                describe(json, outcome);
            });
        else
            printLine(sentenceOf(queue, outcome));
        return ExitStatus::success;
    });
}

struct Result {
    Queue queue;
    OrFailure<Outcome> outcome;
};

std::vector<Result> workOnEach(const ReminderTask &task) {
    std::vector<QueuePrinter> queues = queuePrinters();
    std::erase_if(queues, [](const QueuePrinter &one) { return !one.queue.printsOverUsb(); });
    const auto asked = askEach<Asked>(
        queues, [&](const QueuePrinter &one) { return carryOut(one.printer, one.queue.name, task); });
    std::vector<Result> results;
    results.reserve(queues.size());
    for (std::size_t number = 0; number < queues.size(); ++number) {
        const auto &[queue, printer, failure] = queues[number];
        results.push_back({queue, failure ? OrFailure<Outcome>(*failure) : orFailure([&] {
                               return outcomeOf(*asked[number], queue.name, task);
                           })});
    }
    return results;
}

void describe(Json &json, const Result &result) {
    describe(json, result.queue.subject());
    if (const auto *const outcome = std::get_if<Outcome>(&result.outcome))
        describe(json, *outcome);
    else
        describe(json, std::get<Failure>(result.outcome));
}

std::string sentenceOf(const Result &result) {
    const auto *const outcome = std::get_if<Outcome>(&result.outcome);
    return outcome ? sentenceOf(result.queue, *outcome) : sentenceOf(std::get<Failure>(result.outcome));
}

ExitStatus workOnAll(const ReminderTask &task, Format format) {
    const std::vector<Result> results = workOnEach(task);
    if (format == Format::json)
        printJson([&](Json &json) {
            json.array("queues", [&](Json &list) {
                for (const Result &result : results)
                    list.element([&](Json &element) { describe(element, result); });
            });
        });
    else if (results.empty())
        printLine("No queue of a supported model prints over USB; add one in the printer settings.");
    else
        for (const Result &result : results)
            printLine(sentenceOf(result));
    std::size_t failed = 0;
    for (const Result &result : results)
        if (const auto *const failure = std::get_if<Failure>(&result.outcome)) {
            journalFailure(failure->what());
            ++failed;
        }
    return endOf(failed, results.size(), task.threshold && !task.check ? "set" : "read");
}

} // namespace

ExitStatus workOnReminder(const ReminderTask &task, Format format) {
    return task.all ? workOnAll(task, format) : workOnOne(task, format);
}

std::optional<std::int32_t> parseThreshold(const std::string &text) {
    if (text == "off")
        return 0;
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole =
        error == std::errc() && end == text.data() + text.size() && std::to_string(value) == text;
    return whole && isReminderThreshold(value) ? std::optional(value) : std::nullopt;
}
