// Whether to believe what a printer says of its reminder.
#pragma once

#include "Manager/TonerHint.h"

#include <cstdint>
#include <optional>
#include <string>

/// The threshold of an answer, if all of it is there and is nothing but a number, 0 or 2 to 10; white space,
/// zero bytes at the end and a percent sign may be around it.
std::optional<std::int32_t> believableThreshold(const TonerHintReading &answer);

/// The printer's words for a sentence: quoted, harmless, cut when long, with how much of them is missing.
std::string wordsOf(const TonerHintReading &answer);
