// A regular expression, compiled once for many texts. The library's patterns avoid backtracking, so that a
// match takes time proportional to the length of the text.
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
    /// A pattern in ICU's syntax; it has to be valid.
    explicit TextMatcher(std::u16string_view pattern);

    /// Whether the pattern matches the whole text. False for texts of 2^31 units and more.
    bool matches(std::u16string_view text) { return asks(text, uregex_matches); }
    /// Whether it matches a part of the text.
    bool finds(std::u16string_view text) { return asks(text, uregex_find); }

private:
    using Question = UBool (*)(URegularExpression *, std::int32_t, UErrorCode *);
    bool asks(std::u16string_view text, Question question);

    std::unique_ptr<URegularExpression, decltype(&uregex_close)> expression_;
};

} // namespace qn
