// The offsets of a place's clocks from UTC, and when they change. Immutable, so any thread may use them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#pragma GCC visibility push(default)

class TimeZoneRules {
public:
    /// The largest offset in either direction, in seconds.
    static constexpr std::int32_t farthestOffset = 26 * 3600;

    struct Offset {
        std::int32_t seconds = 0;  ///< east of Greenwich
        std::int32_t daylight = 0; ///< the part of these that daylight saving adds
        bool operator==(const Offset &) const = default;
    };
    /// The offset applies from the time on.
    struct Change {
        std::int64_t time; ///< seconds since 1970-01-01 00:00 UTC
        Offset offset;
    };
    static constexpr std::int64_t period = 146097LL * 86400; ///< 400 years, after which calendars repeat

    /// The same offset at all times.
    explicit TimeZoneRules(Offset offset) : first_(offset) {}
    /// The offset before the first change, and the changes in the order of their times. The changes from the
    /// index `repeating` on, which span more than a period, repeat with it for ever, and back in time, too,
    /// if the index is 0. With the number of changes as the index none repeats.
    TimeZoneRules(Offset first, std::vector<Change> changes, std::size_t repeating);

    /// The offset at a time, in seconds since 1970-01-01 00:00 UTC.
    Offset at(std::int64_t time) const;
    /// The offset at a local time, in seconds since 1970-01-01 00:00 local time: of two moments with the same
    /// local time that of the later, and for a local time that is skipped the offset before the change.
    Offset whenClocksShow(std::int64_t shown) const;
    /// The first moment, in seconds since 1970-01-01 00:00 UTC, with the local time `shown` or, if that is
    /// skipped, with a later one.
    std::int64_t firstShowing(std::int64_t shown) const;

private:
    using Changes = std::vector<Change>;

    /// The time moved by whole periods into the listed changes, at least `margin` seconds after the first
    /// repeating one; unmoved when nothing repeats at that time.
    std::int64_t listed(std::int64_t time, std::int64_t margin) const;
    Changes::const_iterator firstChangeAfter(std::int64_t time) const;
    /// The offset before a change.
    const Offset &before(Changes::const_iterator change) const;

    Offset first_;
    Changes changes_;
    std::size_t repeating_ = 0; ///< the number of changes when none repeats
};

#pragma GCC visibility pop
