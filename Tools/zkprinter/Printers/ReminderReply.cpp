#include "Tools/zkprinter/Printers/ReminderReply.h"

#include "Manager/ConsumableReminder.h"
#include "Platform/Ascii/Trimmed.h"
#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Platform/Foundation/Text/Unicode.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace {

constexpr std::size_t mostShown = 60; // units of UTF-16

/// The text up to the first zero byte, trimmed.
std::string_view textOf(std::string_view words) {
    return ascii::trimmed(words.substr(0, words.find('\0')));
}

} // namespace

std::optional<std::int32_t> believableThreshold(const TonerHintReading &answer) {
    std::string_view digits = textOf(answer.words);
    if (digits.ends_with('%'))
        digits = ascii::trimmed(digits.substr(0, digits.size() - 1));
    unsigned value = 0;
    const char *const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    const bool whole = answer.words.size() == answer.announced && error == std::errc() && stop == end;
    return whole && isReminderThreshold(value) ? std::optional(static_cast<std::int32_t>(value))
                                               : std::nullopt;
}

std::string wordsOf(const TonerHintReading &answer) {
    std::u16string units;
    unicode::appendUTF16(units, textOf(answer.words)); // bytes that are not valid UTF-8 become U+FFFD
    const bool cut = units.size() > mostShown;
    units.resize(std::min(units.size(), mostShown));
    std::string text;
    unicode::appendUTF8(text, units);
    std::string shown = "\"" + escapedControlCharacters(text) + (cut ? "…" : "") + "\"";
    if (answer.words.size() != answer.announced)
        shown += " (" + std::to_string(answer.words.size()) + " of " + std::to_string(answer.announced) +
                 " bytes)";
    return shown;
}
