#include "Tools/zkprinter/Printers/Reminder.h"

#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Tools/zkprinter/Printers/Journal.h"
#include "Tools/zkprinter/Printers/Patience.h"
#include "Tools/zkprinter/Printers/ReminderReply.h"

namespace {

using Reading = TonerHintReading::Outcome;

std::string quoted(const std::string &name) {
    return "\"" + escapedControlCharacters(name) + "\"";
}

std::optional<std::int32_t> believed(const ReminderAnswer &exchanged) {
    return exchanged.answer.outcome == Reading::threshold ? believableThreshold(exchanged.answer)
                                                          : std::nullopt;
}

/// Whether the printer answered, but with no threshold.
bool isRefusal(const ReminderAnswer &exchanged) {
    const Reading outcome = exchanged.answer.outcome;
    return !believed(exchanged) && (outcome == Reading::threshold ||
                                    (outcome == Reading::rejected && exchanged.transportStatus == TL_USB_OK));
}

Exchanged<TonerHintWriting> write(const Ref<ZKUSB> &printer, std::int32_t threshold) {
    Exchanged<TonerHintWriting> last{.answer = TonerHintWriting::nothing};
    writeTonerThreshold(printer, threshold, [&](TonerHintWriting writing) {
        if (writing != TonerHintWriting::nothing)
            last.answer = writing;
        last.transportStatus = printer->transportStatus();
    });
    findAccess(last, *printer);
    return last;
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

void requireTaken(const Exchanged<TonerHintWriting> &writing, const std::string &name) {
    switch (writing.answer) {
    case TonerHintWriting::success:
        return;
    case TonerHintWriting::failure:
        throw Failure(ExitStatus::refused,
                      quoted(name) +
                          " refused the new reminder; check that its firmware is up to date and try again.");
    case TonerHintWriting::unclear:
        throw mayHaveChanged(
            Failure(ExitStatus::refused,
                    quoted(name) + " gave an answer that cannot be understood; ask it for its reminder, "
                                   "check that its firmware is up to date and try again."));
    case TonerHintWriting::nothing: {
        const Failure reason = reasonOf(writing.transportStatus, name, writing.access);
        throw neverReached(writing.transportStatus) ? reason : mayHaveChanged(reason);
    }
    }
}

/// The threshold that was read back.
std::int32_t newThresholdIn(const ReminderAnswer &answer, const std::string &name) {
    try {
        return thresholdIn(answer, name);
    } catch (const Failure &reason) {
        throw Failure(reason.status(),
                      quoted(name) +
                          " accepted the new reminder, but it could not be read back: " + reason.what());
    }
}

Failure notHeld(const std::string &name, std::int32_t held, const std::optional<std::int32_t> &previous) {
    const std::string start = quoted(name) + " accepted the new reminder, but it is ";
    if (held == previous)
        return {ExitStatus::refused,
                start + "still " + reminderText(held) + "; switch the printer off and on and try again."};
    return {ExitStatus::refused, start + reminderText(held) +
                                     ", which somebody else must have set meanwhile; find out who sets this "
                                     "printer and try again."};
}

} // namespace

ReminderAnswer askReminder(const Ref<ZKUSB> &printer, const std::string &name) {
    ReminderAnswer last;
    const Waiting waiting(quoted(name));
    readTonerHint(printer, [&](const TonerHintReading &reading) {
        if (reading.outcome == Reading::nothing && last.answer.outcome != Reading::nothing)
            return; // an answer may be followed by a failed transfer
        last.answer = reading;
        last.transportStatus = printer->transportStatus();
    });
    findAccess(last, *printer);
    return last;
}

ReminderSetting setReminder(const Ref<ZKUSB> &printer, const std::string &name, std::int32_t threshold) {
    ReminderSetting setting{.before = askReminder(printer, name)};
    const auto previous = believed(setting.before);
    if (previous == threshold || (!previous && !isRefusal(setting.before)))
        return setting;
    {
        const Waiting waiting(quoted(name));
        setting.writing = write(printer, threshold);
    }
    if (setting.writing->answer == TonerHintWriting::success) {
        journalChange(name, previous, threshold);
        setting.after = askReminder(printer, name);
    }
    return setting;
}

std::int32_t thresholdIn(const ReminderAnswer &answer, const std::string &name) {
    if (const auto threshold = believed(answer))
        return *threshold;
    if (!isRefusal(answer))
        throw reasonOf(answer.transportStatus, name, answer.access);
    if (answer.answer.outcome == Reading::threshold)
        throw Failure(ExitStatus::refused, quoted(name) + " answered " + wordsOf(answer.answer) +
                                               ", which is no reminder; switch it off and on and try again.");
    throw Failure(ExitStatus::refused,
                  quoted(name) +
                      " refused to tell its reminder; check that its firmware is up to date and try again.");
}

ReminderChange changeBy(const ReminderSetting &setting, const std::string &name, std::int32_t threshold) {
    if (!setting.writing)
        return changeAfter(setting.before, name, threshold);
    requireTaken(*setting.writing, name);
    const auto previous = believed(setting.before);
    const std::int32_t held = newThresholdIn(*setting.after, name);
    if (held != threshold)
        throw notHeld(name, held, previous);
    return {.previous = previous, .threshold = held, .changed = true};
}

ReminderChange changeAfter(const ReminderAnswer &answer, const std::string &name, std::int32_t threshold) {
    const auto previous = isRefusal(answer) ? std::nullopt : std::optional(thresholdIn(answer, name));
    return {.previous = previous, .threshold = threshold, .changed = previous != threshold};
}

std::string reminderText(std::int32_t threshold) {
    return threshold == 0 ? "off" : "set to " + std::to_string(threshold) + " %";
}
