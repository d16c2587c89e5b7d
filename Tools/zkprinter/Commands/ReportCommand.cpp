// The command `report`.
#include "Tools/zkprinter/Commands/Commands.h"
#include "Tools/zkprinter/Printers/Journal.h"
#include "Tools/zkprinter/Printers/QueuePrinters.h"
#include "Tools/zkprinter/Printers/Survey.h"
#include "Tools/zkprinter/Printing/Report.h"
#include "Tools/zkprinter/Printing/Terminal.h"

#include <algorithm>

namespace {

void describe(Json &json, const char *key, const std::optional<std::string> &text) {
    text ? json.field(key, *text) : json.null(key);
}

void describe(Json &json, const QueueFinding &finding) {
    describe(json, finding.queue.subject());
    describe(json, "description", finding.queue.description);
    describe(json, "model", finding.model);
    describe(json, "serialNumber", finding.serialNumber);
    json.field("attached", finding.attached);
    json.object("status", [&](Json &status) {
        if (const auto *const read = std::get_if<PrinterStatus>(&finding.status))
            status.field("normal", read->isNormal()).field("printerStatus", read->value);
        else
            describe(status, std::get<Failure>(finding.status));
    });
    json.object("reminder", [&](Json &reminder) {
        if (const auto *const threshold = std::get_if<std::int32_t>(&finding.reminder))
            reminder.field("enabled", *threshold != 0).field("threshold", std::int64_t{*threshold});
        else
            describe(reminder, std::get<Failure>(finding.reminder));
    });
    json.field("seconds", finding.seconds);
}

std::string shownStatus(const QueueFinding &finding) {
    if (const auto *const read = std::get_if<PrinterStatus>(&finding.status))
        return read->isNormal() ? "normal" : "not normal (" + std::to_string(read->value) + ")";
    return nameOf(std::get<Failure>(finding.status).status());
}

std::string shownReminder(const QueueFinding &finding) {
    if (const auto *const threshold = std::get_if<std::int32_t>(&finding.reminder))
        return *threshold == 0 ? "off" : std::to_string(*threshold) + " %";
    return nameOf(std::get<Failure>(finding.reminder).status());
}

void printText(const std::vector<QueueFinding> &findings) {
    std::vector<std::vector<std::string>> rows = {{"QUEUE", "MODEL", "SERIAL NUMBER", "STATUS", "REMINDER"}};
    std::vector<std::string> sentences;
    for (const QueueFinding &finding : findings) {
        rows.push_back({finding.queue.name, finding.model.value_or(""), finding.serialNumber.value_or(""),
                        shownStatus(finding), shownReminder(finding)});
        for (const Failure &failure : finding.failures())
            if (std::ranges::find(sentences, sentenceOf(failure)) == sentences.end())
                sentences.push_back(sentenceOf(failure));
    }
    printTable(rows);
    for (const std::string &sentence : sentences)
        printLine(sentence);
}

/// Whether a printer that should have answered did not. From queues that do not print over USB nobody expects
/// it.
bool isFailed(const QueueFinding &finding) {
    return finding.queue.printsOverUsb() && !finding.failures().empty();
}

} // namespace

ExitStatus reportQueues(Format format) {
    const auto findings = survey();
    if (format == Format::json)
        printJson([&](Json &json) {
            json.array("queues", [&](Json &list) {
                for (const QueueFinding &finding : findings)
                    list.element([&](Json &element) { describe(element, finding); });
            });
        });
    else if (findings.empty())
        printLine("No queue belongs to a supported model; add one in the printer settings.");
    else
        printText(findings);
    for (const QueueFinding &finding : findings)
        if (isFailed(finding))
            journalFailure(finding.failures().front().what());
    return endOf(static_cast<std::size_t>(std::ranges::count_if(findings, isFailed)), findings.size(),
                 "read");
}
