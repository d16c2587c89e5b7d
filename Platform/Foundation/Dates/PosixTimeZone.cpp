#include "Platform/Foundation/Dates/PosixTimeZone.h"

#include "Platform/Ascii/Ascii.h"

#include <algorithm>
#include <chrono>
#include <limits>

namespace {

constexpr int daysBeforeMarch = 59;

/// The offsets of winter and summer. If summer's is the smaller one, winter counts as daylight saving.
std::pair<TimeZoneRules::Offset, TimeZoneRules::Offset> seasons(std::int32_t standard, std::int32_t summer) {
    return {{standard, std::max(standard - summer, 0)}, {summer, std::max(summer - standard, 0)}};
}

} // namespace

/// Reads parts from the front of a text. After the first that is missing, `ok` stays false.
class PosixTimeZone::Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    std::optional<PosixTimeZone> zone() {
        PosixTimeZone made;
        name();
        made.offset_ = -time(24);
        if (!rest_.empty())
            made.summer_ = summer(made.offset_);
        return ok_ && rest_.empty() ? std::optional(made) : std::nullopt;
    }

private:
    Summer summer(std::int32_t standard) {
        name();
        const bool named = !rest_.empty() && rest_.front() != ',';
        const std::int32_t offset = named ? -time(24) : standard + 3600;
        if (rest_.empty())
            rest_ = ",M3.2.0,M11.1.0";
        const Day start = day();
        return {offset, start, day()};
    }

    bool take(char character) {
        const bool there = rest_.starts_with(character);
        rest_.remove_prefix(there);
        return there;
    }
    void expect(char character) { ok_ = take(character) && ok_; }

    void name() {
        const bool quoted = take('<');
        const auto end = std::find_if_not(rest_.begin(), rest_.end(), [quoted](char one) {
            return ascii::isLetter(one) || (quoted && (ascii::isDigit(one) || one == '+' || one == '-'));
        });
        const auto length = static_cast<std::size_t>(end - rest_.begin());
        ok_ = ok_ && length >= 3;
        rest_.remove_prefix(length);
        if (quoted)
            expect('>');
    }

    int number(int least, int most) {
        int value = -1;
        while (!rest_.empty() && ascii::isDigit(rest_.front()) && value <= most) {
            value = std::max(value, 0) * 10 + (rest_.front() - '0');
            rest_.remove_prefix(1);
        }
        ok_ = ok_ && value >= least && value <= most;
        return value;
    }

    /// "-5:45:30" in seconds.
    std::int32_t time(int mostHours) {
        const bool negative = take('-');
        if (!negative)
            take('+');
        std::int32_t seconds = number(0, mostHours) * 3600;
        if (take(':')) {
            seconds += number(0, 59) * 60;
            seconds += take(':') ? number(0, 59) : 0;
        }
        return negative ? -seconds : seconds;
    }

    Day day() {
        expect(',');
        Day made{Day::Kind::Plain};
        if (take('M')) {
            made.kind = Day::Kind::WeekdayOfMonth;
            made.number = number(1, 12);
            expect('.');
            made.week = number(1, 5);
            expect('.');
            made.weekday = number(0, 6);
        } else if (take('J')) {
            made.kind = Day::Kind::NoLeapDay;
            made.number = number(1, 365);
        } else {
            made.number = number(0, 365);
        }
        made.time = take('/') ? time(167) : 2 * 3600;
        return made;
    }

    std::string_view rest_;
    bool ok_ = true;
};

std::int64_t PosixTimeZone::Day::inYear(int yearNumber) const {
    using namespace std::chrono;
    const std::chrono::year inYear(yearNumber);
    const sys_days newYear(inYear / January / 1);
    sys_days day = newYear + days(number);
    if (kind == Kind::NoLeapDay && (!inYear.is_leap() || number <= daysBeforeMarch))
        day -= days(1);
    if (kind == Kind::WeekdayOfMonth) {
        const auto monthOfYear = inYear / month(static_cast<unsigned>(number));
        const std::chrono::weekday which(static_cast<unsigned>(weekday));
        day = week == 5 ? sys_days(monthOfYear / which[last])
                        : sys_days(monthOfYear / which[static_cast<unsigned>(week)]);
    }
    return seconds(day.time_since_epoch()).count() + time;
}

std::optional<PosixTimeZone> PosixTimeZone::parse(std::string_view text) {
    return Reader(text).zone();
}

std::vector<TimeZoneRules::Change> PosixTimeZone::changesFrom(int firstYear, std::int64_t later) const {
    if (!summer_)
        return {};
    const auto [winter, summer] = seasons(offset_, summer_->offset);
    std::vector<TimeZoneRules::Change> changes;
    for (int year = firstYear; year < firstYear + 403; ++year) {
        changes.push_back({summer_->start.inYear(year) - offset_, summer});
        changes.push_back({summer_->end.inYear(year) - summer_->offset, winter});
    }
    // At the same time the start of summer comes last, so it counts: summer may last all year.
    std::stable_sort(changes.begin(), changes.end(), [standard = winter](const auto &one, const auto &other) {
        return one.time < other.time ||
               (one.time == other.time && one.offset == standard && other.offset != standard);
    });
    std::erase_if(changes, [later](const auto &change) { return change.time <= later; });
    return changes;
}

TimeZoneRules PosixTimeZone::rules() const {
    constexpr std::int64_t always = std::numeric_limits<std::int64_t>::min();
    auto changes = changesFrom(1970, always);
    return changes.empty() ? TimeZoneRules({offset_, 0}) : TimeZoneRules({offset_, 0}, std::move(changes), 0);
}

TimeZoneRules PosixTimeZone::rulesAfter(TimeZoneRules::Offset first,
                                        std::vector<TimeZoneRules::Change> changes) const {
    using namespace std::chrono;
    if (changes.empty())
        return rules();
    constexpr std::int64_t longAgo = -100'000'000'000; // std::chrono::year does not reach much further
    const std::int64_t latest = std::max(changes.back().time, longAgo);
    const year_month_day day(floor<days>(sys_seconds(seconds(latest))));
    const auto following = changesFrom(static_cast<int>(day.year()), latest);
    const std::size_t repeating = changes.size();
    changes.insert(changes.end(), following.begin(), following.end());
    return {first, std::move(changes), repeating};
}
