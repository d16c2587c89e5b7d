// How far the clocks of a place are set from UTC, and when they are set anew. Immutable; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class TimeZoneRules {
public:
    /// Farther from Greenwich no clock is set.
    static constexpr std::int32_t farthestOffset = 26 * 3600;

    struct Offset {
        std::int32_t seconds = 0;  ///< east of Greenwich
        std::int32_t daylight = 0; ///< of these, what summer adds
        bool operator==(const Offset &) const = default;
    };
    /// The clocks show the offset from the time on.
    struct Change {
        std::int64_t time; ///< seconds since 1970-01-01 00:00 UTC
        Offset offset;
    };
    static constexpr std::int64_t period = 146097LL * 86400; ///< 400 years, after which calendars repeat

    /// The same offset always.
    explicit TimeZoneRules(Offset offset) : first_(offset) {}
    /// An offset before the first of the changes, which come in the order of their times. Those from the
    /// index on, which span more than a period, repeat after it; before it as well when they are all.
    TimeZoneRules(Offset first, std::vector<Change> changes, std::size_t repeating);

    /// At a time in seconds since 1970-01-01 00:00 UTC.
    Offset at(std::int64_t time) const;
    /// When clocks show a time, in seconds from 1970-01-01 00:00 on them: of two such moments the later, and
    /// for a time that the clocks jump over what they showed before.
    Offset whenClocksShow(std::int64_t shown) const;
    /// The first moment, in seconds since 1970-01-01 00:00 UTC, at which clocks show the time or, where they
    /// jump over it, a later one.
    std::int64_t firstShowing(std::int64_t shown) const;

private:
    using Changes = std::vector<Change>;

    /// The time moved by whole periods to where the changes are listed, the first `margin` of which it skips.
    std::int64_t listed(std::int64_t time, std::int64_t margin) const;
    Changes::const_iterator firstChangeAfter(std::int64_t time) const;
    /// The offset until a change.
    const Offset &before(Changes::const_iterator change) const;

    Offset first_;
    Changes changes_;
    std::size_t repeating_ = 0; ///< the number of changes when none repeats
};
