// Reads and writes dates exactly as a pattern says: every number with as many digits as the pattern has
// letters. ICU, which also takes numbers of other widths, needs about twenty times as long
// (Benchmarks/run, dates).
//
//     const auto pattern = FixedDatePattern::compile(u"yyyy-MM-dd'T'HH:mm:ssZ");
//     pattern->parse(u"2014-01-20T12:24:48+01:00")    // 1390217088
//     pattern->format(1390217088000, 3600)            // 2014-01-20T12:24:48+0100
//
//     yyyy MM dd HH mm ss SSS    numbers
//     EEE MMM                    "Mon" "Jan", in English; the weekday need not be the date's
//     Z                          "Z", "+0100" or "+01:00"; only at the end or before a blank
//
// Days before 1582-10-15 are dates of the Julian calendar, as in ICU. Immutable, so any thread may use one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

class FixedDatePattern {
public:
    /// Nothing for a pattern with other fields, without year, month or day, or with text that ICU could read
    /// as part of a field: digits anywhere, "e" (an exponent) and non-ASCII characters ("∞") after a number,
    /// and letters after a name.
    static std::optional<FixedDatePattern> compile(std::u16string_view pattern);

    /// Whether the texts contain their offset from UTC; without it they are read as UTC.
    bool namesOffset() const { return namesOffset_; }
    /// Seconds since 1970-01-01 00:00 UTC. Nothing when the text deviates from the pattern, or contains a day
    /// or time that does not exist.
    std::optional<double> parse(std::u16string_view text) const;
    /// The text, the same as ICU's, for whole milliseconds since 1970-01-01 00:00 UTC and an offset in
    /// seconds east of Greenwich. Nothing for a pattern with names, for dates before 1583-01-02 or after
    /// 9999-12-30 00:00, and when the pattern has an offset that is not in whole minutes.
    std::optional<std::u16string> format(double milliseconds, int offset) const;

private:
    enum class Field {
        Literal,
        Year,
        Month,
        Day,
        Hour,
        Minute,
        Second,
        Millisecond,
        Weekday,
        MonthName,
        Offset
    };
    struct Step {
        Field field;
        char16_t literal = 0;
    };
    struct Known {
        std::u16string_view letters;
        Field field;
    };
    class Reader;
    class Writer;
    static const Known known[];

    bool add(const std::u16string &letters);
    static bool canFollow(Field field, Step next);
    bool isSound() const;

    std::vector<Step> steps_;
    bool namesOffset_ = false;
};

#pragma GCC visibility pop
