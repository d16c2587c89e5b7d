// Numbers, byte buffers, dates and errors.
#include "Platform/Dispatch/ManualClock.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/NSNull.h"
#include "Platform/Foundation/NSNumber.h"
#include "Tests/Platform/Foundation/Text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdlib>

using std::chrono::nanoseconds;
using namespace std::chrono_literals;

namespace {

__extension__ using Wide = __int128;

/// A number with its exact value, which is `whole + fraction`.
struct Sample {
    Ref<NSNumber> number;
    Wide whole;
    double fraction = 0;
};

std::vector<Sample> samples() {
    constexpr std::int64_t two53 = std::int64_t{1} << 53;
    std::vector<Sample> all = {
        {NSNumber::numberWithBool(true), 1},
        {NSNumber::numberWithChar(-1), -1},
        {NSNumber::numberWithUnsignedShort(1), 1},
        {NSNumber::numberWithFloat(127), 127},
        {NSNumber::numberWithDouble(-0.0), 0},
        {NSNumber::numberWithDouble(0x1p64), Wide{1} << 64},
        {NSNumber::numberWithDouble(0.5), 0, 0.5},
        {NSNumber::numberWithFloat(0.5f), 0, 0.5},
        {NSNumber::numberWithDouble(0.1), 0, 0.1},
        {NSNumber::numberWithFloat(0.1f), 0, double{0.1f}},
        {NSNumber::numberWithDouble(HUGE_VAL), 0, HUGE_VAL},
        {NSNumber::numberWithDouble(-HUGE_VAL), 0, -HUGE_VAL},
    };
    for (const std::int64_t value :
         {std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}, two53 - 1, two53, two53 + 1, -two53 - 1, -two53,
          INT64_MAX, INT64_MAX - 511, INT64_MIN, INT64_MIN + 1}) {
        const auto bits = static_cast<std::uint64_t>(value);
        const auto rounded = static_cast<double>(value);
        all.push_back({NSNumber::numberWithLongLong(value), value});
        all.push_back({NSNumber::numberWithUnsignedLongLong(bits), bits});
        all.push_back({NSNumber::numberWithDouble(rounded), static_cast<Wide>(rounded)});
    }
    return all;
}

Ref<NSData> bytes(std::string_view content) {
    return NSData::dataWithBytes(content.data(), content.size());
}

} // namespace

TEST(NSNumber, equalityIsByExactValueAndHashAgrees) {
    const auto all = samples();
    for (const Sample &a : all)
        for (const Sample &b : all) {
            const bool expected = a.whole == b.whole && a.fraction == b.fraction;
            EXPECT_EQ(a.number->isEqual(b.number), expected)
                << a.number->objCType() << text(a.number) << " and " << b.number->objCType()
                << text(b.number);
            EXPECT_TRUE(!expected || a.number->hash() == b.number->hash()) << text(a.number);
        }
    const auto one = NSNumber::numberWithInt(1), nan = NSNumber::numberWithDouble(NAN);
    EXPECT_FALSE(one->isEqual(nullptr) || one->isEqual(u"1"_ns) || one->isEqual(NSNull::null()));
    EXPECT_TRUE(nan->isEqual(nan) && nan->isEqual(NSNumber::numberWithDouble(-NAN)))
        << "or a collection could not find what it holds";
    EXPECT_EQ(nan->hash(), NSNumber::numberWithDouble(-NAN)->hash());
    EXPECT_FALSE(nan->isEqual(one) || one->isEqual(nan));
}

TEST(NSNumber, narrowsAsDocumented) {
    const auto wide = NSNumber::numberWithUnsignedLongLong(0xFEDCBA9876543281);
    EXPECT_EQ(wide->charValue(), static_cast<std::int8_t>(0x81));
    EXPECT_EQ(wide->unsignedCharValue(), 0x81);
    EXPECT_EQ(wide->shortValue(), 0x3281);
    EXPECT_EQ(wide->unsignedShortValue(), 0x3281);
    EXPECT_EQ(wide->intValue(), 0x76543281);
    EXPECT_EQ(wide->unsignedIntValue(), 0x76543281u);
    EXPECT_EQ(wide->longLongValue(), static_cast<std::int64_t>(0xFEDCBA9876543281));
    EXPECT_EQ(wide->doubleValue(), static_cast<double>(0xFEDCBA9876543281));
    EXPECT_EQ(NSNumber::numberWithInt(-1)->doubleValue(), -1.0);
    EXPECT_EQ(NSNumber::numberWithInt(-1)->unsignedLongLongValue(), UINT64_MAX);
    struct Row {
        double value;
        std::int64_t wide;
        std::uint64_t wideUnsigned;
        std::int32_t narrow;
    };
    const Row table[] = {
        {-0.0, 0, 0, 0},
        {0.9, 0, 0, 0},
        {-1.9, -1, UINT64_MAX, -1},
        {4294967297.5, 4294967297, 4294967297, 1},
        {0x1p63, INT64_MAX, 1ull << 63, -1},
        {-0x1p63, INT64_MIN, 1ull << 63, 0},
        {-0x1.8p63, INT64_MIN, 1ull << 63, 0},
        {0x1p64, INT64_MAX, UINT64_MAX, -1},
        {INFINITY, INT64_MAX, UINT64_MAX, -1},
        {NAN, 0, 0, 0},
    };
    for (const Row &row : table) {
        const auto number = NSNumber::numberWithDouble(row.value);
        EXPECT_EQ(number->longLongValue(), row.wide) << row.value;
        EXPECT_EQ(number->unsignedLongLongValue(), row.wideUnsigned) << row.value;
        EXPECT_EQ(number->intValue(), row.narrow) << row.value;
        EXPECT_EQ(number->boolValue(), row.value != 0) << row.value;
    }
}

TEST(NSNumber, remembersItsTypeAndReadsBackEqual) {
    struct Row {
        Ref<NSNumber> number;
        char type;
        std::string text;
    };
    const Row table[] = {
        {NSNumber::numberWithBool(true), 'B', "1"},
        {NSNumber::numberWithChar('A'), 'c', "65"},
        {NSNumber::numberWithUnsignedChar(255), 'C', "255"},
        {NSNumber::numberWithShort(-1), 's', "-1"},
        {NSNumber::numberWithUnsignedShort(65535), 'S', "65535"},
        {NSNumber::numberWithInt(INT_MIN), 'i', "-2147483648"},
        {NSNumber::numberWithUnsignedInt(UINT_MAX), 'I', "4294967295"},
        {NSNumber::numberWithInteger(INT64_MIN), 'q', "-9223372036854775808"},
        {NSNumber::numberWithUnsignedInteger(UINT64_MAX), 'Q', "18446744073709551615"},
        {NSNumber::numberWithFloat(0.1f), 'f', "0.1"},
        {NSNumber::numberWithDouble(-2.0), 'd', "-2"},
        {NSNumber::numberWithDouble(100000), 'd', "100000"},
        {NSNumber::numberWithDouble(1e300), 'd', "1e+300"},
    };
    for (const Row &row : table) {
        EXPECT_EQ(row.number->objCType(), row.type);
        EXPECT_EQ(text(row.number), row.text);
        EXPECT_EQ(row.number->isBoolean(), row.type == 'B');
        EXPECT_EQ(row.number->isFloating(), row.type == 'f' || row.type == 'd');
    }
    for (const double value : {1.0 / 3, 1e22, DBL_MIN, 5e-324, DBL_MAX, -1e-7, 1e16})
        EXPECT_EQ(std::strtod(text(NSNumber::numberWithDouble(value)).c_str(), nullptr), value);
    for (const float value : {1.0f / 3, 1e15f, 1e16f, FLT_MIN, FLT_MAX})
        EXPECT_EQ(std::strtof(text(NSNumber::numberWithFloat(value)).c_str(), nullptr), value);
}

TEST(NSData, describesCutsAndReads) {
    const std::pair<Ref<NSData>, std::string> table[] = {
        {NSData::dataWithBytes(nullptr, 0), "<>"},
        {bytes("\xAB"), "<ab>"},
        {bytes("abcd"), "<61626364>"},
        {bytes("abcde\xFF"), "<61626364 65ff>"},
        {bytes("abc")->subdataWithRange({1, 2}), "<6263>"},
        {NSData::data()->subdataWithRange({0, 0}), "<>"},
        {NSMutableData::dataWithLength(2), "<0000>"},
        {NSData::dataWithContentsOfFile("/dev/null"), "<>"},
        {NSData::dataWithContentsOfFile(ZK_RESOURCES "/models.plist")->subdataWithRange({0, 2}), "<3c3f>"},
    };
    for (const auto &[data, expected] : table)
        EXPECT_EQ(text(data), expected);
    constexpr NSUInteger far = ~NSUInteger{0};
    for (const NSRange range : {NSRange{0, 4}, {4, 0}, {3, 1}, {1, far}, {far, 2}})
        EXPECT_EQ(raised([&] { bytes("abc")->subdataWithRange(range); }), NSRangeException);
    EXPECT_EQ(NSData::dataWithContentsOfFile(ZK_RESOURCES "/no such file"), nullptr);
    EXPECT_EQ(NSData::dataWithContentsOfFile(ZK_RESOURCES), nullptr) << "a folder";

    const auto data = NSMutableData::dataWithCapacity(4);
    data->appendBytes("ab", 2);
    data->appendBytes(nullptr, 0);
    const id frozen = data->copy();
    EXPECT_TRUE(data->isEqual(frozen) && frozen->isEqual(data) && data->hash() == frozen->hash());
    const auto twin = as<NSMutableData>(data->mutableCopy());
    data->appendData(bytes("c"));
    data->mutableBytes()[0] = 'X';
    twin->setLength(4);
    EXPECT_EQ(text(data) + text(frozen) + text(twin), "<586263><6162><61620000>");
    EXPECT_FALSE(data->isEqual(frozen) || frozen->isEqual(nullptr) || frozen->isEqual(u"ab"_ns));
}

TEST(NSDate, describesItselfInUtc) {
    const std::pair<double, std::string> table[] = {
        {1390220688.999, "2014-01-20 12:24:48 +0000"}, {-0.5, "1969-12-31 23:59:59 +0000"},
        {951782400, "2000-02-29 00:00:00 +0000"},      {253402300800, "10000-01-01 00:00:00 +0000"},
        {969e9, "32676-05-21 18:40:00 +0000"},         {971e9, "970021692800.000000"},
    };
    for (const auto &[seconds, expected] : table)
        EXPECT_EQ(text(NSDate::dateWithTimeIntervalSince1970(seconds)), expected);
    EXPECT_EQ(text(NSDate::distantPast()), "0000-12-30 00:00:00 +0000") << "01-01 before the reform";
    EXPECT_EQ(text(NSDate::distantFuture()), "4001-01-01 00:00:00 +0000");
    EXPECT_EQ(text(make<NSDate>(INFINITY)), "inf");
}

TEST(NSDate, countsFromTheCurrentClock) {
    dispatch::ManualClock clock(1390220688);
    const dispatch::ClockScope scope(clock);
    const auto date = NSDate::date();
    EXPECT_EQ(date->timeIntervalSinceReferenceDate(), 1390220688 - NSTimeIntervalSince1970);
    clock.advance(3s);
    EXPECT_EQ(date->timeIntervalSinceNow(), -3.0);
    clock.setWallTime(0);
    EXPECT_EQ(date->timeIntervalSinceNow(), 1390220688.0);
    const auto later = NSDate::dateWithTimeIntervalSinceNow(2),
               same = NSDate::dateWithTimeIntervalSince1970(2);
    EXPECT_EQ(later->timeIntervalSinceDate(NSDate::date()), 2.0);
    EXPECT_TRUE(later->isEqual(same) && later->hash() == same->hash());
    EXPECT_FALSE(later->isEqual(date) || later->isEqual(nullptr) || later->isEqual(u"x"_ns));
    const std::pair<double, nanoseconds> intervals[] = {
        {1.5, 1500ms},
        {-2, -2s},
        {1e-10, 0ns},
        {NAN, 0ns},
        {9e9, 9000000000s},
        {9.3e9, nanoseconds::max()},
        {INFINITY, nanoseconds::max()},
        {-INFINITY, nanoseconds::min()},
    };
    for (const auto &[seconds, expected] : intervals)
        EXPECT_EQ(nanosecondsFromTimeInterval(seconds), expected) << seconds;
}

TEST(NSError, saysWhatWentWrong) {
    const auto bare = NSError::errorWithDomain(u"ZKDomain"_ns, -5, nullptr);
    const std::string sentence = "The operation couldn’t be completed. (ZKDomain error -5.)";
    EXPECT_EQ(text(bare->localizedDescription()), sentence);
    EXPECT_EQ(text(bare), "Error Domain=ZKDomain Code=-5 \"" + sentence + "\"");
    EXPECT_EQ(bare->localizedRecoverySuggestion(), nullptr);
    EXPECT_EQ(bare->userInfo()->count(), 0u);
    const auto full = NSError::errorWithDomain(
        nullptr, 1,
        NSDictionary::dictionaryWithEntries({{NSLocalizedDescriptionKey(), u"No paper."_ns},
                                             {NSLocalizedRecoverySuggestionErrorKey(), u"Add some."_ns},
                                             {NSDebugDescriptionErrorKey(), u"tray 1"_ns}}));
    EXPECT_EQ(text(full), "Error Domain=(null) Code=1 \"No paper.\" (tray 1)");
    EXPECT_EQ(text(full->localizedRecoverySuggestion()), "Add some.");
}
