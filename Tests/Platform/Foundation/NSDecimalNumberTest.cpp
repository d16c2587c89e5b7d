// Decimal numbers: reading, rounding, text, narrowing, and equality with the other kinds of number.
#include "Platform/Foundation/NSDecimalNumber.h"
#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSJSONSerialization.h"
#include "Platform/Foundation/NSPropertyListSerialization.h"
#include "Tests/Platform/Foundation/Text.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

Ref<NSDecimalNumber> decimal(std::string_view digits) {
    return NSDecimalNumber::decimalNumberWithString(string(digits));
}

const std::string nines(38, '9'), zeros127(127, '0');

} // namespace

TEST(NSDecimalNumber, readsWhatATextBeginsWith) {
    const std::pair<std::string, std::string> table[] = {
        {"0", "0"},
        {"-0.00", "0"},
        {" \t+12.50 EUR", "12.5"},
        {"-.5.5", "-0.5"},
        {"5.", "5"},
        {"00012300", "12300"},
        {"1e3", "1000"},
        {"1.5E-3x", "0.0015"},
        {"1e+", "1"},
        {"1e+-2", "1"},
        {"0e99999999999999999999", "0"},
        {nines, nines},
        {nines + "4", nines + "0"},
        {nines + "5", "1" + std::string(39, '0')},
        {"1." + std::string(37, '0') + "5", "1." + std::string(36, '0') + "1"},
        {"0." + std::string(100000, '0') + "1e100001", "1"},
        {nines + "e127", nines + zeros127},
        {"1e164", "1" + std::string(164, '0')},
        {"1e165", "NaN"},
        {nines + "5e127", "NaN"},
        {"1e-128", "0." + zeros127 + "1"},
        {"15e-129", "0." + zeros127 + "2"},
        {"5e-129", "0." + zeros127 + "1"},
        {"4e-129", "0"},
        {"9e-1000", "0"},
        {"1e99999999999999999999", "NaN"},
        {"-1e-99999999999999999999", "0"},
        {"", "NaN"},
        {"abc", "NaN"},
        {"-", "NaN"},
        {".", "NaN"},
        {"e5", "NaN"},
        {"inf", "NaN"},
    };
    for (const auto &[source, expected] : table)
        EXPECT_EQ(text(decimal(source)), expected) << source;
    EXPECT_TRUE(NSDecimalNumber::decimalNumberWithString(nullptr)->isEqual(NSDecimalNumber::notANumber()));
}

TEST(NSDecimalNumber, narrowsAndConverts) {
    struct Row {
        std::string digits;
        std::int64_t wide;
        std::uint64_t wideUnsigned;
        double floating;
    };
    const Row table[] = {
        {"0.99", 0, 0, 0.99},
        {"-1.99", -1, UINT64_MAX, -1.99},
        {"9223372036854775807.9", INT64_MAX, INT64_MAX, 0x1p63},
        {"18446744073709551615", INT64_MAX, UINT64_MAX, 0x1p64},
        {"1e30", INT64_MAX, UINT64_MAX, 1e30},
        {"-1e30", INT64_MIN, 1ull << 63, -1e30},
        {"0.1", 0, 0, 0.1},
        {"9007199254740993", 9007199254740993, 9007199254740993, 9007199254740992},
    };
    for (const Row &row : table) {
        const auto number = decimal(row.digits);
        EXPECT_EQ(number->longLongValue(), row.wide) << row.digits;
        EXPECT_EQ(number->unsignedLongLongValue(), row.wideUnsigned) << row.digits;
        EXPECT_EQ(number->doubleValue(), row.floating) << row.digits;
        EXPECT_TRUE(number->boolValue());
        EXPECT_EQ(number->objCType(), 'd');
    }
    EXPECT_FALSE(decimal("0")->boolValue());
    EXPECT_EQ(decimal("x")->longLongValue(), 0);
    EXPECT_TRUE(std::isnan(decimal("x")->doubleValue()));
    const std::pair<Ref<NSNumber>, std::string> numbers[] = {
        {NSNumber::numberWithDouble(0.1), "0.1"},
        {NSNumber::numberWithFloat(0.1f), "0.1"},
        {NSNumber::numberWithDouble(-1e-7), "-0.0000001"},
        {NSNumber::numberWithUnsignedLongLong(UINT64_MAX), "18446744073709551615"},
        {NSNumber::numberWithBool(true), "1"},
        {NSNumber::numberWithDouble(1e300), "NaN"},
        {NSNumber::numberWithDouble(-INFINITY), "NaN"},
        {decimal("1.25"), "1.25"},
    };
    for (const auto &[number, expected] : numbers)
        EXPECT_EQ(text(NSDecimalNumber::decimalNumberWithDecimal(number->decimalValue())), expected);
}

TEST(NSDecimalNumber, isComparedByExactValue) {
    // In ascending order; equal ones side by side.
    const std::vector<std::vector<Ref<NSNumber>>> ranks = {
        {decimal("no"), NSNumber::numberWithDouble(NAN)},
        {NSNumber::numberWithDouble(-INFINITY)},
        {decimal("-1e164")},
        {decimal("-9223372036854775808"), NSNumber::numberWithLongLong(INT64_MIN),
         NSNumber::numberWithDouble(-0x1p63)},
        {decimal("-1.5"), NSNumber::numberWithFloat(-1.5f)},
        {decimal("0"), NSNumber::numberWithBool(false), NSNumber::numberWithDouble(-0.0)},
        {NSNumber::numberWithDouble(5e-324)},
        {decimal("1e-128")},
        {decimal("0.09")},
        {decimal("0.1")},
        {NSNumber::numberWithDouble(0.1)}, // a little more than one tenth
        {decimal("0.5"), NSNumber::numberWithDouble(0.5)},
        {decimal("1"), decimal("1.0"), NSNumber::numberWithBool(true), NSNumber::numberWithChar(1)},
        {decimal("9007199254740992"), NSNumber::numberWithDouble(9007199254740992)},
        {decimal("9007199254740993"), NSNumber::numberWithLongLong(9007199254740993)},
        {decimal("18446744073709551615"), NSNumber::numberWithUnsignedLongLong(UINT64_MAX)},
        {decimal("18446744073709551616"), NSNumber::numberWithDouble(0x1p64)},
        {decimal("18446744073709551616.5")},
        {NSNumber::numberWithDouble(INFINITY)},
    };
    for (std::size_t i = 0; i < ranks.size(); ++i)
        for (std::size_t j = 0; j < ranks.size(); ++j)
            for (const auto &a : ranks[i])
                for (const auto &b : ranks[j]) {
                    SCOPED_TRACE(text(a) + " and " + text(b));
                    EXPECT_EQ(a->isEqual(b), i == j);
                    EXPECT_TRUE(i != j || a->hash() == b->hash());
                    const auto number = as<NSDecimalNumber>(a);
                    if (number) {
                        EXPECT_EQ(number->compare(b), static_cast<NSComparisonResult>((i > j) - (i < j)));
                    }
                }
    EXPECT_FALSE(decimal("1")->isEqual(u"1"_ns));
    EXPECT_NE(decimal("1.00000000000000000000001")->hash(), decimal("1.00000000000000000000002")->hash());
}

TEST(NSDecimalNumber, keepsItsDigitsInJSONAndIsADoubleInPropertyLists) {
    const auto list = NSArray::arrayWithObjects({decimal("12345678901234567890.123456789")});
    const auto json = NSJSONSerialization::dataWithJSONObject(list, NSJSONWritingOptions::None, nullptr);
    EXPECT_EQ(std::string(json->span().begin(), json->span().end()), "[12345678901234567890.123456789]");
    const auto plist = NSPropertyListSerialization::dataWithPropertyList(
        NSArray::arrayWithObjects({decimal("0.1")}), NSPropertyListFormat::BinaryFormat_v1_0);
    EXPECT_TRUE(NSPropertyListSerialization::propertyListWithData(plist)->isEqual(
        NSArray::arrayWithObjects({NSNumber::numberWithDouble(0.1)})));
    const auto invalid = NSArray::arrayWithObjects({NSDecimalNumber::notANumber()});
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(invalid));
}
