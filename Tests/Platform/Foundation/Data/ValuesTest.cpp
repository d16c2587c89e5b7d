// Byte buffers, dates and errors.
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/System/NSError.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Testing.h"

#include <cmath>

using std::chrono::nanoseconds;

TEST(NSData, describesCutsAndReads) {
    const std::pair<Ref<NSData>, std::string> table[] = {
        {NSData::dataWithBytes(nullptr, 0), "<>"},
        {dataOf("\xAB"), "<ab>"},
        {dataOf("abcd"), "<61626364>"},
        {dataOf("abcde\xFF"), "<61626364 65ff>"},
        {dataOf("abc")->subdataWithRange({1, 2}), "<6263>"},
        {NSData::data()->subdataWithRange({0, 0}), "<>"},
        {NSMutableData::dataWithLength(2), "<0000>"},
        {NSData::dataWithContentsOfFile("/dev/null"), "<>"},
        {NSData::dataWithContentsOfFile(ZK_RESOURCES "/models.plist")->subdataWithRange({0, 2}), "<3c3f>"},
    };
    for (const auto &[data, expected] : table)
        EXPECT_EQ(text(data), expected);
    constexpr NSUInteger far = ~NSUInteger{0};
    for (const NSRange range : {NSRange{0, 4}, {4, 0}, {3, 1}, {1, far}, {far, 2}})
        EXPECT_EQ(raised([&] { dataOf("abc")->subdataWithRange(range); }), NSRangeException);
    EXPECT_EQ(NSData::dataWithContentsOfFile(ZK_RESOURCES "/no such file"), nullptr);
    EXPECT_EQ(NSData::dataWithContentsOfFile(ZK_RESOURCES), nullptr) << "a folder";

    for (const NSUInteger length : {far, far / 2, far / 4})
        for (const auto &made : {NSMutableData::dataWithCapacity(length), NSMutableData::dataWithLength(3)}) {
            EXPECT_EQ(raised([&] { return made->setLength(length), 0; }), NSInvalidArgumentException);
            EXPECT_EQ(raised([&] { NSMutableData::dataWithLength(length); }), NSInvalidArgumentException);
            EXPECT_EQ(raised([&] { NSData::dataWithBytes("ab", length); }), NSInvalidArgumentException);
            EXPECT_EQ(raised([&] { return made->appendBytes("ab", length), 0; }), NSInvalidArgumentException);
            EXPECT_EQ(made->length() % 3, 0u) << "nothing was changed";
        }
    const auto data = NSMutableData::dataWithCapacity(4);
    data->appendBytes("ab", 2);
    data->appendBytes(nullptr, 0);
    data->appendData(nullptr);
    const id frozen = data->copy();
    EXPECT_TRUE(data->isEqual(frozen) && frozen->isEqual(data) && data->hash() == frozen->hash());
    const auto twin = as<NSMutableData>(data->mutableCopy());
    data->appendData(dataOf("c"));
    data->mutableBytes()[0] = 'X';
    twin->appendData(twin);
    twin->setLength(5);
    EXPECT_EQ(text(data) + text(frozen) + text(twin), "<586263><6162><61626162 00>");
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
    EXPECT_EQ(raised([&] { return later->timeIntervalSinceDate(nullptr); }), NSInvalidArgumentException);
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
    const auto full =
        NSError::errorWithDomain(nullptr, 1,
                                 dictionaryOf({{NSLocalizedDescriptionKey(), u"No paper."_ns},
                                               {NSLocalizedRecoverySuggestionErrorKey(), u"Add some."_ns},
                                               {NSDebugDescriptionErrorKey(), u"tray 1"_ns}}));
    EXPECT_EQ(text(full), "Error Domain=(null) Code=1 \"No paper.\" (tray 1)");
    EXPECT_EQ(text(full->localizedRecoverySuggestion()), "Add some.");
}
