#include "Platform/Foundation/Dates/FixedDatePattern.h"

#include "Platform/Ascii/Ascii.h"
#include "Platform/Foundation/Dates/DatePatternFields.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <tuple>

namespace {

constexpr std::u16string_view weekdayNames[] = {u"Sun", u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat"};
constexpr std::u16string_view monthNames[] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                              u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};

bool isJulian(int year, int month, int day) {
    return std::tuple(year, month, day) < std::tuple(1582, 10, 15);
}

int daysOfMonth(int year, int month) {
    static constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0 || isJulian(year, month, 1));
    return days[month - 1] + (month == 2 && leap);
}

/// Days from 1970-01-01, by the Julian or Gregorian calendar. Years are counted from March, so that the leap
/// day is the last day of its year.
int dayNumber(int year, int month, int day) {
    const int march = year - (month <= 2);
    const int dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    const int gregorian = isJulian(year, month, day) ? -2 : march / 400 - march / 100;
    return 365 * march + march / 4 + gregorian + dayOfYear - 719468;
}

} // namespace

/// Reads fields from the front of a text. After the first that is missing, `ok` stays false.
class FixedDatePattern::Reader {
public:
    explicit Reader(std::u16string_view text) : rest_(text) {}

    void read(Step step) {
        switch (step.field) {
        case Field::Literal:
            return expect(step.literal);
        case Field::Year:
            return number(4, 1, 9999, year_);
        case Field::Month:
            return number(2, 1, 12, month_);
        case Field::Day:
            return number(2, 1, 31, day_);
        case Field::Hour:
            return number(2, 0, 23, hour_);
        case Field::Minute:
            return number(2, 0, 59, minute_);
        case Field::Second:
            return number(2, 0, 59, second_);
        case Field::Millisecond:
            return number(3, 0, 999, millisecond_);
        case Field::Weekday:
            return name(weekdayNames, weekday_);
        case Field::MonthName:
            return name(monthNames, month_);
        case Field::Offset:
            return offset();
        }
    }

    std::optional<double> seconds() const {
        if (!ok_ || !rest_.empty() || day_ > daysOfMonth(year_, month_))
            return std::nullopt;
        const double time = 3600 * hour_ + 60 * minute_ + second_ - offset_;
        return 86400.0 * dayNumber(year_, month_, day_) + time + millisecond_ / 1000.0;
    }

private:
    bool take(char16_t unit) {
        const bool there = rest_.starts_with(unit);
        rest_.remove_prefix(there);
        return there;
    }

    void expect(char16_t unit) { ok_ = take(unit) && ok_; }

    void number(std::size_t width, int least, int most, int &value) {
        const auto digits = rest_.substr(0, width);
        ok_ = ok_ && digits.size() == width &&
              std::all_of(digits.begin(), digits.end(), ascii::isDigit<char16_t>);
        if (!ok_)
            return;
        value = 0;
        for (const char16_t digit : digits)
            value = value * 10 + (digit - u'0');
        ok_ = value >= least && value <= most;
        rest_.remove_prefix(width);
    }

    template <std::size_t count>
    void name(const std::u16string_view (&names)[count], int &value) {
        const auto found = std::find(names, names + count, rest_.substr(0, 3));
        ok_ = ok_ && found != names + count;
        value = static_cast<int>(found - names) + 1;
        rest_.remove_prefix(std::min<std::size_t>(rest_.size(), 3));
    }

    void offset() {
        if (take(u'Z'))
            return;
        const bool west = take(u'-');
        if (!west)
            expect(u'+');
        int hours = 0, minutes = 0;
        number(2, 0, 23, hours);
        take(u':');
        number(2, 0, 59, minutes);
        offset_ = (west ? -60 : 60) * (60 * hours + minutes);
    }

    std::u16string_view rest_;
    bool ok_ = true;
    int year_ = 0, month_ = 1, day_ = 0, weekday_ = 0;
    int hour_ = 0, minute_ = 0, second_ = 0, millisecond_ = 0;
    int offset_ = 0; ///< seconds east of Greenwich
};

/// Appends the fields of one moment to a text. After one that it cannot write, `ok` stays false.
class FixedDatePattern::Writer {
public:
    /// The moment must lie in the years 1583 to 9999.
    Writer(std::chrono::sys_time<std::chrono::milliseconds> moment, int offset)
        : offset_(offset), local_(moment + std::chrono::seconds(offset)),
          day_(std::chrono::floor<std::chrono::days>(local_)), date_(day_), time_(local_ - day_) {}

    void write(Step step) {
        switch (step.field) {
        case Field::Literal:
            text_ += step.literal;
            return;
        case Field::Year:
            return number(4, static_cast<int>(date_.year()));
        case Field::Month:
            return number(2, static_cast<int>(static_cast<unsigned>(date_.month())));
        case Field::Day:
            return number(2, static_cast<int>(static_cast<unsigned>(date_.day())));
        case Field::Hour:
            return number(2, static_cast<int>(time_.hours().count()));
        case Field::Minute:
            return number(2, static_cast<int>(time_.minutes().count()));
        case Field::Second:
            return number(2, static_cast<int>(time_.seconds().count()));
        case Field::Millisecond:
            return number(3, static_cast<int>(time_.subseconds().count()));
        case Field::Offset:
            return offset();
        case Field::Weekday:
        case Field::MonthName:
            ok_ = false;
        }
    }

    std::optional<std::u16string> text() { return ok_ ? std::optional(std::move(text_)) : std::nullopt; }

private:
    void number(std::size_t width, int value) {
        text_.append(width, u'0');
        for (auto digit = text_.rbegin(); value; value /= 10)
            *digit++ = static_cast<char16_t>(u'0' + value % 10);
    }

    void offset() {
        const int minutes = std::abs(offset_) / 60;
        ok_ = ok_ && offset_ % 60 == 0;
        text_ += offset_ < 0 ? u'-' : u'+';
        number(2, minutes / 60);
        number(2, minutes % 60);
    }

    const int offset_;
    const std::chrono::sys_time<std::chrono::milliseconds> local_;
    const std::chrono::sys_days day_;
    const std::chrono::year_month_day date_;
    const std::chrono::hh_mm_ss<std::chrono::milliseconds> time_;
    std::u16string text_;
    bool ok_ = true;
};

constexpr FixedDatePattern::Known FixedDatePattern::known[] = {
    {u"yyyy", Field::Year},       {u"MM", Field::Month},    {u"dd", Field::Day},
    {u"HH", Field::Hour},         {u"mm", Field::Minute},   {u"ss", Field::Second},
    {u"SSS", Field::Millisecond}, {u"EEE", Field::Weekday}, {u"MMM", Field::MonthName},
    {u"Z", Field::Offset}};

bool FixedDatePattern::add(const std::u16string &letters) {
    const auto found = std::find_if(std::begin(known), std::end(known),
                                    [&](const Known &one) { return one.letters == letters; });
    if (found == std::end(known))
        return false;
    steps_.push_back({found->field});
    return true;
}

/// Whether ICU, too, ends the field where the next begins.
bool FixedDatePattern::canFollow(Field field, Step next) {
    switch (field) {
    case Field::Literal:
        return true;
    case Field::Offset:
        return next.literal == u' ';
    case Field::Weekday:
    case Field::MonthName:
        return !ascii::isLetter(next.literal);
    default:
        return next.literal < 0x80 && next.literal != u'e' && next.literal != u'E';
    }
}

/// Whether ICU reads every text that this pattern reads as the same date.
bool FixedDatePattern::isSound() const {
    const auto has = [this](auto... fields) {
        return std::any_of(steps_.begin(), steps_.end(),
                           [=](const Step &step) { return ((step.field == fields) || ...); });
    };
    for (std::size_t i = 0; i + 1 < steps_.size(); ++i)
        if (!canFollow(steps_[i].field, steps_[i + 1]))
            return false;
    return has(Field::Year) && has(Field::Month, Field::MonthName) && has(Field::Day) &&
           std::none_of(steps_.begin(), steps_.end(), [](const Step &step) {
               return ascii::isDigit(step.literal) || step.literal == u'\'';
           });
}

std::optional<FixedDatePattern> FixedDatePattern::compile(std::u16string_view pattern) {
    FixedDatePattern made;
    bool understood = true;
    const bool closed = walkDatePattern(
        pattern,
        [&](char16_t letter, std::size_t count) {
            understood = understood && made.add(std::u16string(count, letter));
        },
        [&](char16_t unit) {
            made.steps_.push_back({Field::Literal, unit});
        });
    made.namesOffset_ = std::any_of(made.steps_.begin(), made.steps_.end(),
                                    [](const Step &step) { return step.field == Field::Offset; });
    return closed && understood && made.isSound() ? std::optional(made) : std::nullopt;
}

std::optional<double> FixedDatePattern::parse(std::u16string_view text) const {
    Reader reader(text);
    for (const Step step : steps_)
        reader.read(step);
    return reader.seconds();
}

std::optional<std::u16string> FixedDatePattern::format(double milliseconds, int offset) const {
    using namespace std::chrono;
    // A day from the limits, so that no offset goes beyond them.
    constexpr sys_time<std::chrono::milliseconds> earliest = sys_days(1583y / 1 / 2),
                                                  latest = sys_days(9999y / 12 / 30);
    if (!(milliseconds >= static_cast<double>(earliest.time_since_epoch().count()) &&
          milliseconds <= static_cast<double>(latest.time_since_epoch().count())))
        return std::nullopt;
    const std::chrono::milliseconds count(static_cast<std::int64_t>(milliseconds));
    Writer writer(sys_time<std::chrono::milliseconds>(count), offset);
    for (const Step step : steps_)
        writer.write(step);
    return writer.text();
}
