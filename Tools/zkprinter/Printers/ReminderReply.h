// Checks the printer's answer to the question for its reminder.
#pragma once

#include "Manager/TonerHint.h"

#include <cstdint>
#include <optional>
#include <string>

/// The threshold in an answer, if the answer is complete and is only a number, 0 or 2 to 10. White space
/// around it, a percent sign, and anything behind a zero byte are ignored.
std::optional<std::int32_t> believableThreshold(const TonerHintReading &answer);

/// The printer's words for use in a sentence: in quotes, with control characters escaped, cut after 60
/// characters, and with the number of bytes if some are missing.
std::string wordsOf(const TonerHintReading &answer);
