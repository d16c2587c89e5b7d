#include "Platform/Foundation/Dates/TimeZoneFile.h"

#include "Platform/Foundation/Dates/PosixTimeZone.h"

#include <algorithm>
#include <functional>

namespace {

constexpr std::int64_t latestChange = std::int64_t{1} << 39; ///< in the year 19391

/// Reads bytes from the front. After the first that are missing, `ok` stays false and numbers are 0.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : rest_(bytes) {}

    bool ok() const { return ok_; }
    std::string_view rest() const { return rest_; }

    void fail() { ok_ = false; }

    std::string_view take(std::uint64_t count) {
        ok_ = ok_ && count <= rest_.size();
        const auto taken = rest_.substr(0, ok_ ? count : 0);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::int64_t number(std::size_t width) {
        const auto bytes = take(width);
        std::uint64_t value = !bytes.empty() && (bytes.front() & 0x80) ? ~std::uint64_t{0} : 0;
        for (const char byte : bytes)
            value = value << 8 | static_cast<unsigned char>(byte);
        return static_cast<std::int64_t>(value);
    }

private:
    std::string_view rest_;
    bool ok_ = true;
};

struct Header {
    int version = 0;
    std::uint64_t universalFlags, standardFlags, leapSeconds, changes, kinds, names;
};

Header header(Bytes &bytes) {
    constexpr std::string_view magic = "TZif";
    Header made{};
    if (bytes.take(magic.size()) != magic)
        bytes.fail();
    made.version = static_cast<int>(bytes.number(1));
    bytes.take(15);
    for (auto *count : {&made.universalFlags, &made.standardFlags, &made.leapSeconds, &made.changes,
                        &made.kinds, &made.names})
        *count = static_cast<std::uint32_t>(bytes.number(4));
    return made;
}

struct Kind {
    std::int32_t offset; ///< seconds east of Greenwich
    bool isDaylight;
};

std::vector<Kind> kinds(Bytes &bytes, std::uint64_t count) {
    std::vector<Kind> made;
    while (bytes.ok() && made.size() < count) {
        const auto offset = static_cast<std::int32_t>(bytes.number(4));
        made.push_back({offset, bytes.number(1) != 0});
        bytes.take(1); // the index of its name
    }
    return made;
}

/// The file only flags daylight saving; the amount it adds is the difference to the nearest standard time
/// before it, or else after it, with a smaller offset. Where winter is flagged instead, as in some places,
/// the amount belongs to the standard time between two winters.
std::vector<TimeZoneRules::Change> changesOf(const std::vector<std::int64_t> &times,
                                             const std::vector<Kind> &kinds) {
    std::vector<std::int32_t> added(kinds.size());
    const auto addTo = [&](std::int32_t &standard, std::size_t i) {
        if (!kinds[i].isDaylight)
            standard = kinds[i].offset;
        else if (added[i] == 0)
            added[i] = std::max(kinds[i].offset - standard, 0);
    };
    constexpr std::int32_t none = TimeZoneRules::farthestOffset;
    std::int32_t earlier = none, later = none;
    for (std::size_t i = 0; i < kinds.size(); ++i)
        addTo(earlier, i);
    for (std::size_t i = kinds.size(); i-- > 0;)
        addTo(later, i);
    const auto isWinter = [&](std::size_t i) { return kinds[i].isDaylight && added[i] == 0; };
    for (std::size_t i = 1; i + 1 < kinds.size(); ++i)
        if (!kinds[i].isDaylight && isWinter(i - 1) && isWinter(i + 1))
            added[i] = std::max(kinds[i].offset - kinds[i - 1].offset, 0);
    std::vector<TimeZoneRules::Change> made;
    made.reserve(times.size());
    for (std::size_t i = 0; i < times.size(); ++i)
        made.push_back({times[i], {kinds[i].offset, added[i]}});
    return made;
}

/// The size of the tables in bytes, with times of that many bytes.
std::uint64_t sizeOfTables(const Header &header, std::uint64_t timeWidth) {
    return header.changes * (timeWidth + 1) + header.kinds * 6 + header.names +
           header.leapSeconds * (timeWidth + 4) + header.standardFlags + header.universalFlags;
}

struct Tables {
    TimeZoneRules::Offset first;
    std::vector<TimeZoneRules::Change> changes;
};

std::optional<Tables> tables(std::string_view bytes, const Header &header, std::size_t timeWidth) {
    Bytes rest(bytes);
    std::vector<std::int64_t> times;
    while (rest.ok() && times.size() < header.changes)
        times.push_back(rest.number(timeWidth));
    const auto indices = rest.take(header.changes);
    const auto all = kinds(rest, header.kinds);
    const bool known = std::all_of(indices.begin(), indices.end(), [&](char index) {
        return static_cast<unsigned char>(index) < all.size();
    });
    const bool near = std::all_of(all.begin(), all.end(), [](const Kind &kind) {
        return kind.offset >= -TimeZoneRules::farthestOffset && kind.offset <= TimeZoneRules::farthestOffset;
    });
    const bool inOrder = std::adjacent_find(times.begin(), times.end(), std::greater_equal()) == times.end();
    if (!rest.ok() || !known || !near || !inOrder || all.empty() || header.leapSeconds > 0 ||
        (!times.empty() && times.back() > latestChange))
        return std::nullopt;
    std::vector<Kind> kindsOfTimes;
    for (const char index : indices)
        kindsOfTimes.push_back(all[static_cast<unsigned char>(index)]);
    return Tables{{all.front().offset, 0}, changesOf(times, kindsOfTimes)};
}

/// The line at the front, which is enclosed in line feeds; nothing without them.
std::optional<std::string_view> lastLine(std::string_view bytes) {
    const auto end = bytes.find('\n', 1);
    return bytes.starts_with('\n') && end != bytes.npos ? std::optional(bytes.substr(1, end - 1))
                                                        : std::nullopt;
}

} // namespace

std::optional<TimeZoneRules> timeZoneRulesFromFile(std::string_view file) {
    Bytes bytes(file);
    Header found = header(bytes);
    const bool wide = found.version != 0;
    if (wide) {
        bytes.take(sizeOfTables(found, 4));
        found = header(bytes);
    }
    const std::size_t timeWidth = wide ? 8 : 4;
    auto read = tables(bytes.take(sizeOfTables(found, timeWidth)), found, timeWidth);
    if (!bytes.ok() || !read)
        return std::nullopt;
    const auto line = wide ? lastLine(bytes.rest()) : "";
    if (line && line->empty()) {
        const std::size_t count = read->changes.size();
        return TimeZoneRules(read->first, std::move(read->changes), count);
    }
    const auto rules = line ? PosixTimeZone::parse(*line) : std::nullopt;
    return rules ? std::optional(rules->rulesAfter(read->first, std::move(read->changes))) : std::nullopt;
}
