#include "Tools/zkprinter/Commands.h"

#include "Manager/ConsumableReminder.h"
#include "Manager/PrinterStatus.h"
#include "Manager/TonerHint.h"
#include "Manager/ZKUSB.h"
#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Platform/Foundation/Text/NSString.h" // IWYU pragma: keep: it is the complete type
#include "Platform/Transport/zkcomtl.h"
#include "Tools/zkprinter/Json.h"
#include "Tools/zkprinter/Patience.h"
#include "Tools/zkprinter/Queue.h"
#include "Tools/zkprinter/ReminderReply.h"
#include "Tools/zkprinter/Terminal.h"
#include "Tools/zkprinter/TransportFailure.h"

#include <charconv>

namespace {

std::string shown(const Queue &queue) {
    return escapedControlCharacters(queue.name);
}

void describe(Json &json, const Queue &queue) {
    json.field("queue", queue.name);
    queue.deviceUri ? json.field("deviceUri", *queue.deviceUri) : json.null("deviceUri");
}

/// Reads the printer's threshold. Fails when the answer is not a plausible one.
std::int32_t thresholdOf(const Queue &queue, const Ref<ZKUSB> &printer) {
    using Outcome = TonerHintReading::Outcome;
    TonerHintReading last;
    std::int32_t transportStatus = TL_USB_OK; // of the last reading
    const Waiting waiting("\"" + shown(queue) + "\"");
    readTonerHint(printer, [&](const TonerHintReading &reading) {
        if (reading.outcome == Outcome::nothing && last.outcome != Outcome::nothing)
            return; // an answer may be followed by a failed transfer
        last = reading;
        transportStatus = printer->transportStatus();
    });
    if (last.outcome == Outcome::threshold) {
        if (const auto threshold = believableThreshold(last))
            return *threshold;
        throw Failure(ExitStatus::refused, "\"" + shown(queue) + "\" answered " + wordsOf(last) +
                                               ", which is no reminder; switch it off and on and try again.");
    }
    if (last.outcome == Outcome::rejected && transportStatus == TL_USB_OK)
        throw Failure(ExitStatus::refused,
                      "\"" + shown(queue) +
                          "\" refused to tell its reminder; check that its firmware is up to date "
                          "and try again.");
    throw reasonOf(transportStatus, queue.name, accessTo(printer->URI()->utf8()));
}

/// Whether nothing was sent to the printer.
bool neverReached(std::int32_t transportStatus) {
    return transportStatus == TL_USB_ERROR_ACCESS || transportStatus == TL_USB_ERROR_BUSY ||
           transportStatus == TL_USB_ERROR_AMBIGUOUS;
}

Failure mayHaveChanged(const Failure &reason) {
    return {reason.status(),
            std::string("The new reminder may or may not have been taken: ") + reason.what()};
}

void writeThreshold(const Queue &queue, const Ref<ZKUSB> &printer, std::int64_t threshold) {
    auto last = TonerHintWriting::nothing;
    std::int32_t transportStatus = TL_USB_OK;
    const Waiting waiting("\"" + shown(queue) + "\"");
    writeTonerThreshold(printer, threshold, [&](TonerHintWriting writing) {
        if (writing != TonerHintWriting::nothing)
            last = writing;
        transportStatus = printer->transportStatus();
    });
    if (last == TonerHintWriting::failure)
        throw Failure(
            ExitStatus::refused,
            "\"" + shown(queue) +
                "\" refused the new reminder; check that its firmware is up to date and try again.");
    if (last == TonerHintWriting::unclear)
        throw mayHaveChanged(Failure(
            ExitStatus::refused, "\"" + shown(queue) +
                                     "\" gave an answer that cannot be understood; ask it for its reminder, "
                                     "check that its firmware is up to date and try again."));
    if (last == TonerHintWriting::nothing) {
        const Failure reason = reasonOf(transportStatus, queue.name, accessTo(printer->URI()->utf8()));
        throw neverReached(transportStatus) ? reason : mayHaveChanged(reason);
    }
}

/// Reads the new threshold back from the printer.
std::int32_t newThresholdOf(const Queue &queue, const Ref<ZKUSB> &printer) {
    try {
        return thresholdOf(queue, printer);
    } catch (const Failure &reason) {
        throw Failure(reason.status(),
                      "\"" + shown(queue) +
                          "\" accepted the new reminder, but it could not be read back: " + reason.what());
    }
}

std::string reminderText(std::int64_t threshold) {
    return threshold == 0 ? "off" : "set to " + std::to_string(threshold) + " %";
}

void printReminder(const Queue &queue, std::int32_t threshold, const char *verb, Format format) {
    if (format == Format::json)
        printJson([&](Json &json) {
            describe(json, queue);
            json.field("enabled", threshold != 0).field("threshold", std::int64_t{threshold});
        });
    else
        printLine("The low-toner reminder of \"" + shown(queue) + "\" is " + verb + reminderText(threshold) +
                  ".");
}

} // namespace

ExitStatus listQueues(Format format) {
    const auto queues = supportedQueues();
    if (format == Format::json) {
        printJson([&](Json &json) {
            json.array("queues", [&](Json &list) {
                for (const Queue &queue : queues)
                    list.element([&](Json &element) {
                        describe(element, queue);
                        queue.description ? element.field("description", *queue.description)
                                          : element.null("description");
                        element.field("usb", queue.printsOverUsb());
                    });
            });
        });
    } else if (queues.empty()) {
        printLine("No queue belongs to a supported model; add one in the printer settings.");
    } else {
        std::vector<std::vector<std::string>> rows = {{"QUEUE", "DESCRIPTION", "USB", "DEVICE"}};
        for (const Queue &queue : queues)
            rows.push_back({queue.name, queue.description.value_or(""), queue.printsOverUsb() ? "yes" : "no",
                            queue.deviceUri.value_or("")});
        printTable(rows);
    }
    return ExitStatus::success;
}

ExitStatus showStatus(const std::string &name, Format format) {
    const Queue queue = usbQueueNamed(name);
    const PrinterStatus status = statusOf(attachedPrinterOf(queue), queue.name);
    if (format == Format::json)
        printJson([&](Json &json) {
            describe(json, queue);
            json.field("normal", status.isNormal()).field("printerStatus", status.value);
        });
    else if (status.isNormal())
        printLine("\"" + shown(queue) + "\" is " + styled("in a normal state", Style::good) + ".");
    else
        printLine("\"" + shown(queue) + "\" is " + styled("not in a normal state", Style::bad) + " (status " +
                  std::to_string(status.value) + "); look at what the printer itself shows.");
    return status.isNormal() ? ExitStatus::success : ExitStatus::notNormal;
}

ExitStatus showReminder(const std::string &name, Format format) {
    const Queue queue = usbQueueNamed(name);
    printReminder(queue, thresholdOf(queue, attachedPrinterOf(queue)), "", format);
    return ExitStatus::success;
}

ExitStatus setReminder(const std::string &name, std::int64_t threshold, Format format) {
    const Queue queue = usbQueueNamed(name);
    const auto printer = attachedPrinterOf(queue);
    writeThreshold(queue, printer, threshold);
    const std::int32_t held = newThresholdOf(queue, printer);
    if (held != threshold)
        throw Failure(ExitStatus::refused,
                      "\"" + shown(queue) + "\" accepted the new reminder, but it is still " +
                          reminderText(held) + "; switch the printer off and on and try again.");
    printReminder(queue, held, "now ", format);
    return ExitStatus::success;
}

std::optional<std::int64_t> parseThreshold(const std::string &text) {
    if (text == "off")
        return 0;
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole =
        error == std::errc() && end == text.data() + text.size() && std::to_string(value) == text;
    return whole && value != 0 && isReminderThreshold(value) ? std::optional(value) : std::nullopt;
}
