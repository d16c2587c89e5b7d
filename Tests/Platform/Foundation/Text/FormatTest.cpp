// Formatting, and the log that is made of it.
#include "Platform/Foundation/Text/Format.h"
#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Tests/Support/LogLines.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/OnThreads.h"
#include "Tests/Support/PlainLocale.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>

#pragma GCC diagnostic ignored "-Wformat-nonliteral"

namespace {

template <class... Arguments>
std::string ours(const std::string &format, const Arguments &...arguments) {
    std::string out;
    formatUTF8(out, format, std::array<FormatArgument, sizeof...(arguments)>{FormatArgument(arguments)...});
    return out;
}

template <class... Arguments>
std::string theirs(const std::string &format, Arguments... arguments) {
    const PlainLocale plain;
    char out[1024];
    const int length = std::snprintf(out, sizeof out, format.c_str(), arguments...);
    return {out, static_cast<std::size_t>(length)};
}

/// What may stand between "%" and the conversion, as C defines it.
std::vector<std::string> layouts() {
    std::vector<std::string> all;
    for (const char *flags : {"", "-", "0", "+", " ", "#", "-#", "0+", "# 0", "-+ #0"})
        for (const char *width : {"", "1", "12"})
            for (const char *precision : {"", ".", ".0", ".1", ".7"})
                all.push_back(std::string("%") + flags + width + precision);
    return all;
}

} // namespace

TEST(Format, printsWhatCPrints) {
    const std::int64_t wholes[] = {0, 1, -1, 128, -129, 70000, INT_MIN, UINT_MAX, INT64_MAX, INT64_MIN};
    const double floatings[] = {0.0,     -0.0,    1.5,      -2.675,    1e-7, 1e22,
                                DBL_MAX, DBL_MIN, INFINITY, -INFINITY, NAN};
    for (const std::string &layout : layouts()) {
        for (const char conversion : std::string("diuoxX"))
            for (const std::int64_t value : wholes) {
                const auto with = [&](const char *length) { return layout + length + conversion; };
                const auto bits = static_cast<std::uint64_t>(value);
                for (const char *narrow : {"", "h", "hh"})
                    EXPECT_EQ(ours(with(narrow), value), theirs(with(narrow), static_cast<int>(value)));
                for (const char *wide : {"l", "ll", "z", "j", "t"})
                    EXPECT_EQ(ours(with(wide), bits), theirs(with(wide), value)) << with(wide);
                EXPECT_EQ(ours(with("q"), value), theirs(with("ll"), value));
            }
        for (const char conversion : std::string("eEfFgGaA"))
            for (const double value : floatings)
                EXPECT_EQ(ours(layout + conversion, value), theirs(layout + conversion, value)) << layout;
        if (layout.find_first_of("0+ #") != std::string::npos)
            continue;
        for (const char *value : {"", "a", "printer queue"})
            EXPECT_EQ(ours(layout + "s", value), theirs(layout + "s", value)) << layout;
    }
    for (const char *directive : {"%c", "%5c", "%-5c|"})
        EXPECT_EQ(ours(directive, 'A'), theirs(directive, 'A')) << directive;
    const int stars[] = {0, 1, -1, 7, -7};
    for (const int width : stars)
        for (const int precision : stars) {
            EXPECT_EQ(ours("[%*.*d]", width, precision, 0), theirs("[%*.*d]", width, precision, 0));
            EXPECT_EQ(ours("[%-*.*f]", width, precision, 2.5), theirs("[%-*.*f]", width, precision, 2.5));
            EXPECT_EQ(ours("[%*.*s]", width, precision, "abc"), theirs("[%*.*s]", width, precision, "abc"));
        }
    EXPECT_EQ(ours("%p %20p", stars, stars), theirs("%p %20p", stars, stars));
}

TEST(Format, objectsPositionsAndWhatDoesNotFit) {
    const auto name = u"Büro"_ns;
    const char *const noText = nullptr;
    enum class Level : std::uint8_t { High = 200 };
    const std::pair<std::string, std::string> table[] = {
        {ours("%@ has %@", name, number(7)), "Büro has 7"},
        {ours("[%6@] [%-6@] [%2@]", name, name, name), "[  Büro] [Büro  ] [Büro]"},
        {ours("%@ %@ %@", Ref<NSString>(), nullptr, NSString::class_()), "(null) (null) NSString"},
        {ours("%s [%8s] [%.3s]", noText, noText, noText), "(null) [  (null)] [(nu]"},
        {ours("%d %x %hhu %u", Level::High, Level::High, true, std::int32_t{-2}), "200 c8 1 4294967294"},
        {ours("%f %+.1e %G", -NAN, -NAN, std::copysign(NAN, -1)), "nan +nan NAN"},
        {ours("%C%c [%3C] [%-3C]", char16_t{0xFC}, 'x', char16_t{0xFC}, 'y'), "üx [  ü] [y  ]"},
        {ours("%p", id(name)), ours("%p", static_cast<const void *>(name.get()))},
        // Positions.
        {ours("%2$@ %1$d %1$03d", 1, name), "Büro 1 001"},
        {ours("%2$d %d %d", 1, 2), "2 1 2"},
        // Too few arguments, and what is no directive, stay as they stand.
        {ours("%d %@ %5.2f %s", 1), "1 %@ %5.2f %s"},
        {ours("%3$@ %1$d %0$d", 1, 2), "%3$@ 1 %0$d"},
        {ours("%", 1) + ours("%5", 1) + ours("%-.", 1) + ours("%ll", 1), "%%5%-.%ll"},
        {ours("100 %y %n %ü %D %%d %5% %d", 1), "100 %y %n %ü %D %d % 1"},
        // A directive of another kind prints the argument in its natural form.
        {ours("%@ %@ %@ %@", 3, -2.5, "text", UINT64_MAX), "3 -2.5 text 18446744073709551615"},
        {ours("%s %s %s", name, 3u, 0.5), "Büro 3 0.5"},
        {ours("%d %x %f %d %c", name, "text", 12, 2.5, 2.5), "Büro text 12 2.5 2.5"},
        {ours("[%*d]", 2.5, 1) + ours("[%*d]", name, 1), "[1][1]"},
        {std::to_string(ours("%*d", 1 << 30, 1).size() + ours("%99999999999d", 1).size()), "8192"},
    };
    for (const auto &[actual, expected] : table)
        EXPECT_EQ(actual, expected);

    const std::u16string lone = {u'a', 0xD83D, u'b', 0xDE00, 0};
    const auto odd = make<NSString>(lone);
    EXPECT_EQ(NSString::stringWithFormat("ü%@>", odd)->units(), u"ü" + lone + u">");
    EXPECT_EQ(NSString::stringWithFormat("%C%C", char16_t{0xD83D}, char16_t{0xDE00})->units(), u"\U0001F600");
    EXPECT_EQ(NSString::stringWithFormat("%s", "\xFF")->units(), u"\uFFFD");
    EXPECT_EQ(ours("%@", odd), std::string("a\uFFFDb\uFFFD\0", 9));
}

TEST(Format, anyTextWithAnyArgumentsIsSafe) {
    Random random(20240117);
    constexpr std::string_view alphabet = "%%%%%%%%@diuoxXcCspeEfFgGaADUOn$*.-+ #0123456789hlqzjtL\xC3\xBC";
    const auto list = arrayOf({u"a"_ns, number(0.5)});
    const char *const noText = nullptr;
    const FormatArgument pool[] = {INT64_MIN, UINT64_MAX, 3,    -4.5, NAN,     "text",
                                   noText,    &random,    list, 'c',  nullptr, true};
    for (int round = 0; round < 20000; ++round) {
        const std::string format = random.text(alphabet, 24);
        std::vector<FormatArgument> arguments;
        for (std::size_t count = random.below(5); arguments.size() < count;)
            arguments.push_back(random.of(pool));
        ASSERT_LE(formatUTF16(format, arguments).size(), 24 * 8192u) << format;
    }
}

namespace {

/// Logs while it is being logged.
class Chatty final : public NSObject {
public:
    Ref<NSString> description() const override {
        NSLog("asked about %d", 7);
        return u"chatty"_ns;
    }
};

} // namespace

TEST(Log, writesOneEscapedLineAnEntry) {
    LogLines log;
    NSLog("plain %d %@", 5, u"Büro"_ns);
    NSLog("\n\n");
    NSLog("inner\nline, outer ends\r\n\n");
    NSLog("%s", "%d %s: data is no format");
    NSLog("\x1B[2J\a\t\x7F %@",
          make<NSString>(std::u16string{0, 0x85, 0x9F, 0x2028, 0x202E, 0x2066, 0x2069}));
    NSLog("%@", make<NSString>(std::u16string{0xA0, 0x2027, 0x202F, 0x2065, 0x206A, 0xD800}));
    NSLog("%s cut", "\xC3");
    NSLog("before %@ after", make<Chatty>());
    EXPECT_THAT(log.take(),
                ElementsAre("plain 5 Büro", "", "inner\\nline, outer ends\\r", "%d %s: data is no format",
                            "\\u001B[2J\\u0007\\t\\u007F \\u0000\\u0085\\u009F\\u2028\\u202E\\u2066\\u2069",
                            "\u00A0\u2027\u202F\u2065\u206A\uFFFD", "\uFFFD cut", "asked about 7",
                            "before chatty after"));
    for (const std::string end : {"\xC2", "\xE2", "\xE2\x80", "\xE2\x81", "\xC3\xBC", ""})
        EXPECT_EQ(escapedControlCharacters("a\n" + end), "a\\n" + end) << "a character cut off";
}

TEST(Log, replacingTheSinkReturnsTheFormerOne) {
    LogLines log;
    std::vector<std::string> other;
    NSLogSink former = NSLogSetSink([&](NSLogLevel, std::string_view line) { other.emplace_back(line); });
    NSLog("to the other");
    EXPECT_TRUE(NSLogSetSink(std::move(former)));
    NSLog("back");
    EXPECT_THAT(log.take(), ElementsAre("back"));
    EXPECT_THAT(other, ElementsAre("to the other"));
}

TEST(Log, entriesOfSeveralThreadsDoNotMix) {
    constexpr int threads = 4, entries = 200;
    LogLines log;
    dispatch::onThreads(threads, [](int writer) {
        for (int entry = 0; entry < entries; ++entry)
            NSLog("writer %d entry %d of %@", writer, entry, number(entries));
    });
    const Lines lines = log.take();
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(threads) * entries);
    std::map<int, int> next;
    for (const std::string &line : lines) {
        const int writer = std::stoi(line.substr(7));
        EXPECT_EQ(line, ours("writer %d entry %d of 200", writer, next[writer]++));
    }
}
