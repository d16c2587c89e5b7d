// The rules of a time zone in POSIX form, as in the environment's TZ and at the end of zone files:
//
//     CET-1CEST,M3.5.0,M10.5.0/3     one hour east of Greenwich; two in summer, from 02:00 on the last Sunday
//                                    of March to 03:00 on the last Sunday of October
//     <+0545>-5:45                   without changes
//
// Days are Mm.w.d (the w-th weekday d of month m, 5 for the last; d is 0 on Sunday), Jn (the n-th day of the
// year, not counting a leap day) or n (days after January 1); times run from -167 to 167 hours. Summer time
// without rules follows those of the United States since 2007. Immutable, so any thread may use one.
#pragma once

#include "Platform/Foundation/Dates/TimeZoneRules.h"

#include <optional>
#include <string_view>

class PosixTimeZone {
public:
    /// Nothing for any other text.
    static std::optional<PosixTimeZone> parse(std::string_view text);

    /// These rules for all times.
    TimeZoneRules rules() const;
    /// The listed changes, and these rules after the last of them; these rules for all times without changes.
    /// `first` is the offset before the first change.
    TimeZoneRules rulesAfter(TimeZoneRules::Offset first, std::vector<TimeZoneRules::Change> changes) const;

private:
    struct Day {
        enum class Kind { WeekdayOfMonth, NoLeapDay, Plain } kind;
        int number = 0; ///< of the day, or of the month
        int week = 0, weekday = 0;
        std::int32_t time = 0; ///< seconds after midnight

        std::int64_t inYear(int year) const; ///< seconds on the clocks from 1970-01-01 00:00
    };
    struct Summer {
        std::int32_t offset;
        Day start, end;
    };
    class Reader;

    /// The changes from `year` on that come after the time `later`, for more than one period of 400 years.
    /// Empty without summer time.
    std::vector<TimeZoneRules::Change> changesFrom(int year, std::int64_t later) const;

    std::int32_t offset_ = 0; ///< seconds east of Greenwich
    std::optional<Summer> summer_;
};
