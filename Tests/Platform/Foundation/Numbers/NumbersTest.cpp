// Numbers of every kind: their types, narrowing and order; decimal ones also: reading and rounding.
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/PlainLocale.h"
#include "Tests/Support/Random.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>

using namespace std::string_literals;

namespace {

Ref<NSDecimalNumber> decimal(std::string_view digits) {
    return NSDecimalNumber::decimalNumberWithString(string(digits));
}

const std::string nines(38, '9'), zeros127(127, '0');

} // namespace

TEST(NSDecimalNumber, readsWhatATextBeginsWith) {
    const std::pair<std::string, std::string> table[] = {
        {" \t+12.50 EUR", "12.5"},
        {"-.5.5", "-0.5"},
        {"5.", "5"},
        {"00012300", "12300"},
        {"1e3", "1000"},
        {"1.5E-3x", "0.0015"},
        {"1e+", "1"},
        {"1e+-2", "1"},
        {nines, nines},
        {nines + "4", nines + "0"},
        {nines + "5", "1" + std::string(39, '0')},
        {"1." + std::string(37, '0') + "5", "1." + std::string(36, '0') + "1"},
        {"0." + std::string(100000, '0') + "1e100001", "1"},
        {nines + "e127", nines + zeros127},
        {"1e164", "1" + std::string(164, '0')},
        {"1e-128", "0." + zeros127 + "1"},
        {"15e-129", "0." + zeros127 + "2"},
        {"5e-129", "0." + zeros127 + "1"},
    };
    for (const auto &[source, expected] : table)
        EXPECT_EQ(text(decimal(source)), expected) << source;
    for (const char *zero :
         {"0", "-0.00", "0e99999999999999999999", "4e-129", "9e-1000", "-1e-99999999999999999999"})
        EXPECT_EQ(text(decimal(zero)), "0") << zero;
    for (const std::string &none :
         {"1e165"s, nines + "5e127", "1e99999999999999999999"s, ""s, "abc"s, "-"s, "."s, "e5"s, "inf"s})
        EXPECT_EQ(text(decimal(none)), "NaN") << none;
    EXPECT_TRUE(NSDecimalNumber::decimalNumberWithString(nullptr)->isEqual(NSDecimalNumber::notANumber()));
}

TEST(NSDecimalNumber, converts) {
    for (const char *digits : {"0.99", "-1.99", "9223372036854775807.9", "1e30", "-1e30", "0.1", "0",
                               "18446744073709551615", "9007199254740993"})
        EXPECT_EQ(decimal(digits)->doubleValue(), plainDouble(digits)) << digits;
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
    for (const auto &[digits, whole] : {std::pair{"1e999999999999", INT64_MAX},
                                        {"-1e999999999999", INT64_MIN},
                                        {"1e-999999999999", 0},
                                        {"12.39e3", 12390},
                                        {"-0.12399e4", -1239}}) {
        const auto unrounded = NSDecimal::read(digits);
        EXPECT_EQ(unrounded.longLongValue(), whole) << digits;
        EXPECT_EQ(raised([&] { return unrounded.text(); }).empty(), std::abs(unrounded.exponent) < 9)
            << digits;
    }
}

TEST(NSNumber, narrowsAsDocumented) {
    const auto wide = NSNumber::numberWithUnsignedLongLong(0xFEDCBA9876543281);
    EXPECT_EQ(wide->charValue(), static_cast<std::int8_t>(0x81));
    EXPECT_EQ(wide->unsignedCharValue(), 0x81);
    EXPECT_EQ(wide->shortValue(), 0x3281);
    EXPECT_EQ(wide->unsignedShortValue(), 0x3281);
    EXPECT_EQ(wide->unsignedIntValue(), 0x76543281u);
    EXPECT_EQ(wide->doubleValue(), static_cast<double>(0xFEDCBA9876543281));
    EXPECT_EQ(NSNumber::numberWithInt(-1)->doubleValue(), -1.0);
    struct Row {
        Ref<NSNumber> number;
        std::int64_t wide;
        std::uint64_t wideUnsigned;
    };
    const Row table[] = {
        {wide, static_cast<std::int64_t>(0xFEDCBA9876543281), 0xFEDCBA9876543281},
        {NSNumber::numberWithInt(-1), -1, UINT64_MAX},
        {NSNumber::numberWithDouble(-0.0), 0, 0},
        {NSNumber::numberWithDouble(0.9), 0, 0},
        {NSNumber::numberWithDouble(-1.9), -1, UINT64_MAX},
        {NSNumber::numberWithDouble(4294967297.5), 4294967297, 4294967297},
        {NSNumber::numberWithDouble(0x1p63), INT64_MAX, 1ull << 63},
        {NSNumber::numberWithDouble(-0x1p63), INT64_MIN, 1ull << 63},
        {NSNumber::numberWithDouble(-0x1.8p63), INT64_MIN, 1ull << 63},
        {NSNumber::numberWithDouble(0x1p64), INT64_MAX, UINT64_MAX},
        {NSNumber::numberWithDouble(INFINITY), INT64_MAX, UINT64_MAX},
        {NSNumber::numberWithDouble(NAN), 0, 0},
        {decimal("0"), 0, 0},
        {decimal("0.99"), 0, 0},
        {decimal("-1.99"), -1, UINT64_MAX},
        {decimal("9223372036854775807.9"), INT64_MAX, INT64_MAX},
        {decimal("18446744073709551615"), INT64_MAX, UINT64_MAX},
        {decimal("1e30"), INT64_MAX, UINT64_MAX},
        {decimal("-1e30"), INT64_MIN, 1ull << 63},
        {decimal("9007199254740993"), 9007199254740993, 9007199254740993},
        {decimal("x"), 0, 0},
    };
    for (const Row &row : table) {
        EXPECT_EQ(row.number->longLongValue(), row.wide) << text(row.number);
        EXPECT_EQ(row.number->unsignedLongLongValue(), row.wideUnsigned) << text(row.number);
        EXPECT_EQ(row.number->intValue(), static_cast<std::int32_t>(row.wide)) << text(row.number);
        EXPECT_EQ(row.number->boolValue(), row.number->doubleValue() != 0) << text(row.number);
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
        {decimal("0.5"), 'd', "0.5"},
    };
    for (const Row &row : table) {
        EXPECT_EQ(row.number->objCType(), row.type);
        EXPECT_EQ(text(row.number), row.text);
        EXPECT_EQ(row.number->isBoolean(), row.type == 'B');
        EXPECT_EQ(row.number->isFloating(), row.type == 'f' || row.type == 'd');
    }
}

namespace {

/// The digits that matter.
std::size_t significantDigits(std::string number) {
    number.erase(std::min(number.find('e'), number.size()));
    std::erase_if(number, [](char character) { return character == '.' || character == '-'; });
    const std::size_t first = std::min(number.find_first_not_of('0'), number.size());
    return number.find_last_not_of('0') + 1 - first;
}

/// Whether the number's text reads back equal, and no text with a digit less does.
template <class T>
void expectFewestDigits(T value, const Ref<NSNumber> &number) {
    const PlainLocale plain;
    const std::string shown = text(number);
    ASSERT_EQ(static_cast<T>(sizeof value == 4 ? std::strtof(shown.c_str(), nullptr)
                                               : std::strtod(shown.c_str(), nullptr)),
              value);
    const std::size_t count = significantDigits(shown);
    char shorter[64];
    std::snprintf(shorter, sizeof shorter, "%.*e", std::max(static_cast<int>(count) - 2, 0), double{value});
    const double back =
        sizeof value == 4 ? double{std::strtof(shorter, nullptr)} : std::strtod(shorter, nullptr);
    ASSERT_TRUE(count == 1 || back != double{value}) << shown << " is longer than " << shorter;
    ASSERT_LE(shown.size(), 24u);
}

} // namespace

TEST(NSNumber, isShownInTheFewestDigits) {
    Random random(254977);
    const auto anyOf = [&](auto bits, auto like) {
        const auto any = std::bit_cast<decltype(like)>(bits);
        return std::isfinite(any) && any != 0 ? any : 1;
    };
    for (int round = 0; round < 20000; ++round) {
        const double wide =
            round % 2 ? anyOf(random(), 0.0) : static_cast<double>(random() >> random() % 64 | 1);
        const float narrow = anyOf(static_cast<std::uint32_t>(random()), 0.0f);
        expectFewestDigits(wide, NSNumber::numberWithDouble(wide));
        expectFewestDigits(narrow, NSNumber::numberWithFloat(narrow));
    }
    EXPECT_EQ(text(NSNumber::numberWithDouble(std::copysign(NAN, -1))), "nan");
    EXPECT_EQ(text(NSNumber::numberWithFloat(-INFINITY)), "-inf");
}

TEST(NSNumber, isComparedByExactValue) {
    constexpr std::int64_t two53 = 1ll << 53;
    // In ascending order; equal ones side by side.
    const std::vector<std::vector<Ref<NSNumber>>> ranks = {
        // or a collection could not find what it holds
        {decimal("no"), NSNumber::numberWithDouble(NAN), NSNumber::numberWithDouble(-NAN)},
        {NSNumber::numberWithDouble(-INFINITY)},
        {decimal("-1e164")},
        {decimal("-9223372036854775808"), NSNumber::numberWithLongLong(INT64_MIN),
         NSNumber::numberWithDouble(-0x1p63)},
        {NSNumber::numberWithLongLong(INT64_MIN + 1)},
        {NSNumber::numberWithLongLong(-two53 - 1)},
        {NSNumber::numberWithLongLong(-two53), NSNumber::numberWithDouble(-0x1p53)},
        {decimal("-1.5"), NSNumber::numberWithFloat(-1.5f)},
        {NSNumber::numberWithLongLong(-1), NSNumber::numberWithChar(-1), NSNumber::numberWithDouble(-1)},
        {decimal("0"), NSNumber::numberWithBool(false), NSNumber::numberWithDouble(-0.0),
         NSNumber::numberWithLongLong(0)},
        {NSNumber::numberWithDouble(5e-324)},
        {decimal("1e-128")},
        {decimal("0.09")},
        {decimal("0.1")},
        {NSNumber::numberWithDouble(0.1)}, // a little more than one tenth
        {NSNumber::numberWithFloat(0.1f)}, // still more
        {decimal("0.5"), NSNumber::numberWithDouble(0.5), NSNumber::numberWithFloat(0.5f)},
        {decimal("1"), decimal("1.0"), NSNumber::numberWithBool(true), NSNumber::numberWithChar(1),
         NSNumber::numberWithUnsignedShort(1), NSNumber::numberWithFloat(1)},
        {NSNumber::numberWithUnsignedLongLong(two53 - 1), NSNumber::numberWithDouble(0x1p53 - 1)},
        {decimal("9007199254740992"), NSNumber::numberWithDouble(0x1p53),
         NSNumber::numberWithLongLong(two53)},
        {decimal("9007199254740993"), NSNumber::numberWithLongLong(two53 + 1),
         NSNumber::numberWithUnsignedLongLong(two53 + 1)},
        {NSNumber::numberWithLongLong(INT64_MAX - 511)},
        {NSNumber::numberWithLongLong(INT64_MAX), NSNumber::numberWithUnsignedLongLong(INT64_MAX)},
        {NSNumber::numberWithUnsignedLongLong(1ull << 63), NSNumber::numberWithDouble(0x1p63)},
        {NSNumber::numberWithUnsignedLongLong((1ull << 63) + 1)},
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
                    EXPECT_TRUE(!number ||
                                number->compare(b) == static_cast<NSComparisonResult>((i > j) - (i < j)));
                }
    for (const Ref<NSNumber> &one : {Ref<NSNumber>(decimal("1")), NSNumber::numberWithInt(1)})
        EXPECT_FALSE(one->isEqual(nullptr) || one->isEqual(u"1"_ns) || one->isEqual(NSArray::array()));
    EXPECT_NE(decimal("1.00000000000000000000001")->hash(), decimal("1.00000000000000000000002")->hash());
}

TEST(NSDecimalNumber, keepsItsDigitsInJSONAndIsADoubleInPropertyLists) {
    const auto list = arrayOf({decimal("12345678901234567890.123456789")});
    const auto json = NSJSONSerialization::dataWithJSONObject(list, NSJSONWritingOptions::None, nullptr);
    EXPECT_EQ(std::string(json->span().begin(), json->span().end()), "[12345678901234567890.123456789]");
    const auto plist = NSPropertyListSerialization::dataWithPropertyList(
        arrayOf({decimal("0.1")}), NSPropertyListFormat::BinaryFormat_v1_0);
    EXPECT_TRUE(NSPropertyListSerialization::propertyListWithData(plist)->isEqual(
        arrayOf({NSNumber::numberWithDouble(0.1)})));
    const auto invalid = arrayOf({NSDecimalNumber::notANumber()});
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(invalid));
}
