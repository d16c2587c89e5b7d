// The ten choices of the reminder: which threshold each stands for, and which choice shows a threshold.
//
// | index | threshold written | thresholds that select it            |
// |-------|-------------------|--------------------------------------|
// | 0     | 0 (off)           | 0                                    |
// | i     | i + 1             | i + 1                                |
// | 9     | 10                | 10, 1 and everything outside 0 to 10 |
#pragma once

#include <cstdint>

inline constexpr std::int64_t reminderChoices = 10;

/// The threshold that the item of the pop-up stands for; −1, no selection, gives 0.
constexpr std::int64_t thresholdForPopUpIndex(std::int64_t index) {
    return index == 0 ? 0 : index + 1;
}

/// The item that shows the threshold; every number has one.
constexpr std::int64_t popUpIndexForThreshold(std::int32_t threshold) {
    if (threshold == 0)
        return 0;
    return threshold >= 2 && threshold <= 10 ? threshold - 1 : reminderChoices - 1;
}

/// Whether the reminder can be set to the threshold.
constexpr bool isReminderThreshold(std::int64_t threshold) {
    return threshold == 0 || (threshold >= 2 && threshold <= 10);
}
