// The rules of a time zone as the environment's TZ and the ends of zone files have them:
//
//     CET-1CEST,M3.5.0,M10.5.0/3     an hour east of Greenwich, in summer two: from the last Sunday of March,
//                                    02:00, to the last of October, 03:00
//     <+0545>-5:45                   never changes
//
// Days are Mm.w.d (the w-th weekday d of month m, 5 for the last), Jn (the n-th day, never counting a leap
// day) or n (days after January 1); times run from -167 to 167 hours. Summer without rules is that of the
// United States since 2007. Immutable; any thread.
#pragma once

#include "Platform/Foundation/Dates/TimeZoneRules.h"

#include <optional>
#include <string_view>

class PosixTimeZone {
public:
    /// Nothing for any other text.
    static std::optional<PosixTimeZone> parse(std::string_view text);

    /// As if they had always been the rules.
    TimeZoneRules rules() const;
    /// The rules that follow the changes, or the offset when there are none of these.
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

    /// Those from the year on whose times are later; more than a period of them. None without summer.
    std::vector<TimeZoneRules::Change> changesFrom(int year, std::int64_t later) const;

    std::int32_t offset_ = 0; ///< seconds east of Greenwich
    std::optional<Summer> summer_;
};
