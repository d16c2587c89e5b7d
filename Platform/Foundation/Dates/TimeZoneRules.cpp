#include "Platform/Foundation/Dates/TimeZoneRules.h"

#include <algorithm>

namespace {

/// More than the largest offset, so that the changes on both sides of a local time are listed.
constexpr std::int64_t margin = 2 * 86400LL;
static_assert(margin > TimeZoneRules::farthestOffset);

} // namespace

TimeZoneRules::TimeZoneRules(Offset first, std::vector<Change> changes, std::size_t repeating)
    : first_(first), changes_(std::move(changes)), repeating_(repeating) {}

std::int64_t TimeZoneRules::listed(std::int64_t time, std::int64_t skipped) const {
    if (repeating_ == changes_.size())
        return time;
    const std::int64_t start = changes_[repeating_].time + skipped, rest = (time - start) % period;
    if (time < start && repeating_ > 0)
        return time;
    return start + rest + (rest < 0 ? period : 0);
}

const TimeZoneRules::Offset &TimeZoneRules::before(Changes::const_iterator change) const {
    return change == changes_.begin() ? first_ : std::prev(change)->offset;
}

TimeZoneRules::Changes::const_iterator TimeZoneRules::firstChangeAfter(std::int64_t time) const {
    return std::upper_bound(changes_.begin(), changes_.end(), time,
                            [](std::int64_t wanted, const Change &one) { return wanted < one.time; });
}

TimeZoneRules::Offset TimeZoneRules::at(std::int64_t time) const {
    return before(firstChangeAfter(listed(time, 0)));
}

TimeZoneRules::Offset TimeZoneRules::whenClocksShow(std::int64_t shown) const {
    const std::int64_t wanted = listed(shown, margin);
    auto next = firstChangeAfter(wanted + farthestOffset);
    while (next != changes_.begin() && std::prev(next)->time + std::prev(next)->offset.seconds > wanted)
        --next;
    return before(next);
}

std::int64_t TimeZoneRules::firstShowing(std::int64_t shown) const {
    const std::int64_t wanted = listed(shown, margin), moved = shown - wanted;
    auto next = firstChangeAfter(wanted - farthestOffset);
    std::int64_t moment = wanted - before(next).seconds;
    for (; next != changes_.end() && moment >= next->time; ++next)
        moment = std::max(next->time, wanted - next->offset.seconds);
    return moment + moved;
}
