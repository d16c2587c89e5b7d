// A regular expression that is asked many times, compiled once. The patterns of the library never try the
// same place in two ways without end, so that a match takes time in proportion to the text.
//
//     thread_local TextMatcher hexadecimal(u"[0-9A-Fa-f]++");
//     return hexadecimal.matches(text->units());
//
// Threads: one at a time, so each thread keeps its own.
#pragma once

#include <memory>
#include <string_view>
#include <unicode/uregex.h>

namespace qn {

class TextMatcher {
public:
    explicit TextMatcher(std::u16string_view pattern);

    /// Whether the whole text is of the pattern. False for texts of 2^31 units and more.
    bool matches(std::u16string_view text) { return asks(text, uregex_matches); }
    /// Whether a part of it is.
    bool finds(std::u16string_view text) { return asks(text, uregex_find); }

private:
    using Question = UBool (*)(URegularExpression *, std::int32_t, UErrorCode *);
    bool asks(std::u16string_view text, Question question);

    std::unique_ptr<URegularExpression, decltype(&uregex_close)> expression_;
};

} // namespace qn
