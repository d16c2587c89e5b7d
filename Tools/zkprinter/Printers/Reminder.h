// The reminder of one printer: asked for, set, and what came of it.
//
// Threads: any; asking blocks for one exchange, setting for up to three (Manager/TonerHint.h).
#pragma once

#include "Manager/TonerHint.h"
#include "Tools/zkprinter/Printers/Exchanged.h"

#include <cstdint>
#include <optional>
#include <string>

using ReminderAnswer = Exchanged<TonerHintReading>;

/// What setting a reminder did.
struct ReminderSetting {
    ReminderAnswer before;
    std::optional<Exchanged<TonerHintWriting>> writing{}; ///< none if nothing was sent
    std::optional<ReminderAnswer> after{};                ///< none unless the printer took the new one
};

/// A reminder that was set, or that would be.
struct ReminderChange {
    std::optional<std::int32_t> previous{}; ///< none when what the printer held was no reminder
    std::int32_t threshold = 0;             ///< what it holds now, or would hold
    bool changed = false;
};

/// Asks the printer; `name` is what the user calls it.
ReminderAnswer askReminder(const Ref<ZKUSB> &printer, const std::string &name);

/// Asks the printer, writes the threshold (0, or 2 to 10 percent) unless it holds that already or does not
/// answer, and reads it back. What the printer took is written into the journal.
ReminderSetting setReminder(const Ref<ZKUSB> &printer, const std::string &name, std::int32_t threshold);

/// The threshold in the answer. Fails when it has none that is plausible.
std::int32_t thresholdIn(const ReminderAnswer &answer, const std::string &name);

/// What setting did. Fails when the printer does not hold the threshold now.
ReminderChange changeBy(const ReminderSetting &setting, const std::string &name, std::int32_t threshold);

/// What setting would do to a printer that gave the answer. Fails when it would not be written.
ReminderChange changeAfter(const ReminderAnswer &answer, const std::string &name, std::int32_t threshold);

/// "off", or "set to 5 %".
std::string reminderText(std::int32_t threshold);
