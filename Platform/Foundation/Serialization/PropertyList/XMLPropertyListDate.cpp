#include "Platform/Foundation/Serialization/PropertyList/XMLPropertyListDate.h"

#include <charconv>
#include <chrono>
#include <cmath>

namespace {

using namespace std::chrono;

constexpr sys_days referenceDate = 2001y / January / 1;
constexpr sys_seconds first = sys_days(0y / January / 1), end = sys_days(10000y / January / 1);

constexpr std::string_view form = "dddd-dd-ddTdd:dd:ddZ"; // d: a digit

std::string padded(int number, std::size_t width) {
    std::string digits = std::to_string(number);
    return digits.insert(0, width - digits.size(), '0');
}

} // namespace

std::optional<std::string> xmlPropertyListDateText(NSTimeInterval sinceReferenceDate) {
    const double whole = std::floor(sinceReferenceDate);
    if (!(whole >= static_cast<double>((first - referenceDate).count()) &&
          whole < static_cast<double>((end - referenceDate).count())))
        return std::nullopt;
    const sys_seconds moment = referenceDate + seconds(static_cast<std::int64_t>(whole));
    const auto midnight = floor<days>(moment);
    const year_month_day day(midnight);
    const hh_mm_ss time(moment - midnight);
    const auto two = [](auto number) { return padded(static_cast<int>(number), 2); };
    return padded(static_cast<int>(day.year()), 4) + "-" + two(static_cast<unsigned>(day.month())) + "-" +
           two(static_cast<unsigned>(day.day())) + "T" + two(time.hours().count()) + ":" +
           two(time.minutes().count()) + ":" + two(time.seconds().count()) + "Z";
}

std::optional<NSTimeInterval> xmlPropertyListDate(std::string_view text) {
    if (text.size() != form.size())
        return std::nullopt;
    for (std::size_t i = 0; i < form.size(); ++i)
        if (form[i] == 'd' ? text[i] < '0' || text[i] > '9' : text[i] != form[i])
            return std::nullopt;
    const auto field = [text](std::size_t at, std::size_t width) {
        int number = 0;
        std::from_chars(text.data() + at, text.data() + at + width, number);
        return number;
    };
    const auto part = [&](std::size_t at) { return static_cast<unsigned>(field(at, 2)); };
    const year_month_day day(year(field(0, 4)), month(part(5)), std::chrono::day(part(8)));
    const hours hour(part(11));
    const minutes minute(part(14));
    const seconds second(part(17));
    if (!day.ok() || hour >= 24h || minute >= 60min || second >= 60s)
        return std::nullopt;
    return static_cast<double>((sys_days(day) + hour + minute + second - referenceDate).count());
}
