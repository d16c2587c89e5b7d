// Numbers of every kind: their types, narrowing and order; decimal ones also: reading and rounding.
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/PlainLocale.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/TextTable.h"

#include <bit>
#include <climits>
#include <cmath>
#include <cstdio>

namespace {

Ref<NSDecimalNumber> decimal(std::string_view digits) {
    return NSDecimalNumber::decimalNumberWithString(string(digits));
}

/// A number behind the letter of its type, as in "q -1", or behind "decimal".
Ref<NSNumber> numberOf(const std::string &shown) {
    const char type = shown[0];
    const std::string digits = shown.substr(shown.find(' ') + 1);
    if (shown.starts_with("decimal"))
        return decimal(digits);
    if (type == 'B')
        return number(digits == "1");
    if (type == 'd' || type == 'f')
        return type == 'd' ? number(plainDouble(digits)) : number(static_cast<float>(plainDouble(digits)));
    return type < 'a' ? make<NSNumber>(type, std::uint64_t{std::stoull(digits)})
                      : make<NSNumber>(type, std::int64_t{std::stoll(digits)});
}

} // namespace

TEST(NSDecimalNumber, readsWhatATextBeginsWith) {
    for (const auto &[source, expected] : rowsOf(ZK_TABLES "/Numbers/Decimals.txt"))
        EXPECT_EQ(text(decimal(source)), expected) << source;
    EXPECT_EQ(text(decimal("0." + std::string(100000, '0') + "1e100001")), "1");
    EXPECT_TRUE(NSDecimalNumber::decimalNumberWithString(nullptr)->isEqual(NSDecimalNumber::notANumber()));
}

TEST(NSDecimalNumber, converts) {
    for (const char *digits : {"0.99", "-1.99", "9223372036854775807.9", "1e30", "-1e30", "0.1", "0",
                               "18446744073709551615", "9007199254740993"})
        EXPECT_EQ(decimal(digits)->doubleValue(), plainDouble(digits)) << digits;
    EXPECT_TRUE(std::isnan(decimal("x")->doubleValue()));
    for (const auto &[shown, expected] : rowsOf(ZK_TABLES "/Numbers/AsDecimals.txt")) {
        const auto made = NSDecimalNumber::decimalNumberWithDecimal(numberOf(shown)->decimalValue());
        EXPECT_EQ(text(made), expected) << shown;
    }
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
    constexpr std::uint64_t bits = 0xFEDCBA9876543281;
    const auto wide = number(bits);
    EXPECT_EQ(wide->charValue(), static_cast<std::int8_t>(0x81));
    EXPECT_EQ(wide->unsignedCharValue(), 0x81);
    EXPECT_EQ(wide->shortValue(), 0x3281);
    EXPECT_EQ(wide->unsignedShortValue(), 0x3281);
    EXPECT_EQ(wide->unsignedIntValue(), 0x76543281u);
    EXPECT_EQ(wide->doubleValue(), static_cast<double>(bits));
    EXPECT_EQ(number(-1)->doubleValue(), -1.0);
    for (const auto &[shown, expected] : rowsOf(ZK_TABLES "/Numbers/Narrowed.txt")) {
        const auto number = numberOf(shown);
        const std::int64_t whole = number->longLongValue();
        EXPECT_EQ(std::to_string(whole) + " " + std::to_string(number->unsignedLongLongValue()), expected);
        EXPECT_EQ(number->intValue(), static_cast<std::int32_t>(whole)) << shown;
        EXPECT_EQ(number->boolValue(), number->doubleValue() != 0) << shown;
    }
}

TEST(NSNumber, remembersItsTypeAndIsShownShort) {
    const std::pair<Ref<NSNumber>, std::string> table[] = {
        {NSNumber::numberWithBool(true), "B 1"},
        {NSNumber::numberWithChar('A'), "c 65"},
        {NSNumber::numberWithUnsignedChar(255), "C 255"},
        {NSNumber::numberWithShort(-1), "s -1"},
        {NSNumber::numberWithUnsignedShort(65535), "S 65535"},
        {NSNumber::numberWithInt(INT_MIN), "i -2147483648"},
        {NSNumber::numberWithUnsignedInt(UINT_MAX), "I 4294967295"},
        {NSNumber::numberWithInteger(INT64_MIN), "q -9223372036854775808"},
        {NSNumber::numberWithUnsignedInteger(UINT64_MAX), "Q 18446744073709551615"},
        {NSNumber::numberWithFloat(0.1f), "f 0.1"},
        {NSNumber::numberWithDouble(100000), "d 100000"},
        {NSNumber::numberWithDouble(1e300), "d 1e+300"},
        {decimal("0.5"), "d 0.5"},
    };
    for (const auto &[number, shown] : table) {
        EXPECT_EQ(typed(number), shown);
        EXPECT_EQ(number->isBoolean(), shown[0] == 'B') << shown;
        EXPECT_EQ(number->isFloating(), shown[0] == 'f' || shown[0] == 'd') << shown;
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
    std::vector<std::vector<Ref<NSNumber>>> ranks;
    for (const auto &[first, equals] : rowsOf(ZK_TABLES "/Numbers/Ranks.txt")) {
        ranks.push_back({numberOf(first)});
        for (const id &other : string(equals)->componentsSeparatedByString(u", "_ns))
            if (!equals.empty())
                ranks.back().push_back(numberOf(text(other)));
    }
    for (std::size_t i = 0; i < ranks.size(); ++i)
        for (std::size_t j = 0; j < ranks.size(); ++j)
            for (const auto &a : ranks[i])
                for (const auto &b : ranks[j]) {
                    SCOPED_TRACE(text(a) + " and " + text(b));
                    EXPECT_EQ(a->isEqual(b), i == j);
                    EXPECT_TRUE(i != j || a->hash() == b->hash());
                    const auto first = as<NSDecimalNumber>(a);
                    EXPECT_TRUE(!first ||
                                first->compare(b) == static_cast<NSComparisonResult>((i > j) - (i < j)));
                }
    for (const id &one : {id(decimal("1")), id(number(1))})
        EXPECT_FALSE(one->isEqual(nullptr) || one->isEqual(u"1"_ns) || one->isEqual(NSArray::array()));
    EXPECT_NE(decimal("1.00000000000000000000001")->hash(), decimal("1.00000000000000000000002")->hash());
}

TEST(NSDecimalNumber, keepsItsDigitsInJSONAndIsADoubleInPropertyLists) {
    const auto list = arrayOf({decimal("12345678901234567890.123456789")});
    const auto json = NSJSONSerialization::dataWithJSONObject(list, NSJSONWritingOptions::None, nullptr);
    EXPECT_EQ(contents(json), "[12345678901234567890.123456789]");
    const auto plist = NSPropertyListSerialization::dataWithPropertyList(
        arrayOf({decimal("0.1")}), NSPropertyListFormat::BinaryFormat_v1_0);
    EXPECT_TRUE(NSPropertyListSerialization::propertyListWithData(plist)->isEqual(arrayOf({number(0.1)})));
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(arrayOf({NSDecimalNumber::notANumber()})));
}
