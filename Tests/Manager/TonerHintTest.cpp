#include "Manager/TonerHint.h"

#include "Manager/ConsumableReminder.h"
#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Manager/ScriptedTransport.h"
#include "Tests/Support/Envelopes.h"

using namespace std::string_literals;

namespace {

using Read = ScriptedTransport::Read;
using Reading = TonerHintReading;
using Readings = std::vector<TonerHintReading>;
using Writings = std::vector<TonerHintWriting>;

const Reading nothing = {Reading::Outcome::nothing}, rejected = {Reading::Outcome::rejected};
const Read timedOut{.status = TL_USB_ERROR_TIMEOUT};

Reading threshold(std::int32_t value) {
    return {Reading::Outcome::threshold, value};
}

Readings readWith(ScriptedTransport &transport, std::vector<Read> replies) {
    transport.reads = std::move(replies);
    transport.reads.insert(transport.reads.begin(), timedOut);
    Readings readings;
    readTonerHint(sampleRecord(), [&](const Reading &reading) { readings.push_back(reading); });
    return readings;
}

Writings writeWith(ScriptedTransport &transport, std::int64_t index, std::vector<Read> replies) {
    transport.reads = std::move(replies);
    transport.reads.insert(transport.reads.begin(), timedOut);
    Writings writings;
    writeTonerHint(sampleRecord(), index, [&](TonerHintWriting writing) { writings.push_back(writing); });
    return writings;
}

Read replyHeader(std::uint8_t command, std::uint16_t field, std::uint8_t length) {
    return {.bytes = {0x00, 0xAC, 0xFF, command, static_cast<std::uint8_t>(field >> 8),
                      static_cast<std::uint8_t>(field), 0x00, length}};
}

std::ptrdiff_t countOf(const Lines &lines, std::string_view prefix) {
    return std::ranges::count_if(lines, [&](const std::string &line) { return line.starts_with(prefix); });
}

/// The one write of an exchange with the time-out of the queries.
std::string writeCall(const Bytes &envelope) {
    return "write #1 10000 0 " + hex(envelope);
}

} // namespace

TEST(ReadTonerHint, asksAndLogs) {
    LogLines log;
    ScriptedTransport transport;
    EXPECT_EQ(readWith(transport, {replyHeader(0x21, 1, 2), {.bytes = bytesOf("10")}}),
              Readings{threshold(10)});
    EXPECT_EQ(transport.takeCalls().at(2), writeCall(envelopes::readThreshold));
    EXPECT_EQ(log.take(), (Lines{"get honer sendACLWithPJL header: <00acff21 00010002>",
                                 "get honer sendACLWithPJL data: <3130>", "dataString:10", "dataInt:10",
                                 "len:2,size:2"}));
}

TEST(ReadTonerHint, takesTheLeadingNumberOfTheText) {
    const struct {
        std::string data;
        std::int32_t value;
        const char *logged;
    } rows[] = {
        {"0", 0, "0"},
        {"off", 0, "off"},
        {"7%", 7, "7%"},
        {"\t\n-4", -4, "\\t\\n-4"},
        {"5\0009"s, 5, "5"}, // a zero byte between
        {"4294967301", INT32_MAX, "4294967301"},
        {"5\xFF", 0, "(null)"},
    };
    LogLines log;
    for (const auto &[data, value, logged] : rows) {
        ScriptedTransport transport;
        const Read header = replyHeader(0x21, 1, static_cast<std::uint8_t>(data.size()));
        EXPECT_EQ(readWith(transport, {header, {.bytes = bytesOf(data)}}), Readings{threshold(value)})
            << data;
        const Lines lines = log.take();
        EXPECT_EQ(lines.at(2), std::string("dataString:") + logged);
        EXPECT_EQ(lines.at(3), "dataInt:" + std::to_string(value));
    }
}

TEST(ReadTonerHint, rejectsWhatIsNotAsExpected) {
    const Read five{.bytes = {'5'}};
    const struct {
        const char *name;
        std::vector<Read> replies;
        Readings readings;
    } rows[] = {
        {"wrong echo", {replyHeader(0x20, 1, 1), five}, {rejected}},
        {"field 2", {replyHeader(0x21, 2, 1), five}, {rejected}},
        {"field 0x0101", {replyHeader(0x21, 0x0101, 1), five}, {rejected}},
        {"no data", {replyHeader(0x21, 1, 0)}, {rejected}},
        {"empty data", {replyHeader(0x21, 1, 1), {}}, {rejected}},
        {"data that never comes", {replyHeader(0x21, 1, 1)}, {rejected}},
        {"short header", {{.bytes = {0x00, 0xAC, 0xFF, 0x21}}}, {rejected}},
        {"short data, then nothing", {replyHeader(0x21, 1, 9), five}, {threshold(5), nothing}},
        {"short data, then a reply",
         {replyHeader(0x21, 1, 9), five, replyHeader(0x21, 1, 0)},
         {threshold(5), rejected}},
        {"no reply", {}, {nothing}},
        {"silent end", {{.bytes = {0x00, 0x12}}}, {}},
    };
    LogLines log;
    for (const auto &[name, replies, readings] : rows) {
        ScriptedTransport transport;
        EXPECT_EQ(readWith(transport, replies), readings) << name;
        const Lines lines = log.take();
        EXPECT_EQ(countOf(lines, "get honer send"), std::ssize(readings) * 2);
        EXPECT_EQ(countOf(lines, "data"), 2 * std::ranges::count(readings, threshold(5)));
    }
}

TEST(WriteTonerHint, sendsTheChoiceAndLogs) {
    const struct {
        std::int64_t index;
        std::uint8_t length;
        std::string text;
    } rows[] = {
        {-1, 0x1F, "OID_PLATFORM_CONSUMEABLE_HINT=0"},
        {9, 0x20, "OID_PLATFORM_CONSUMEABLE_HINT=10"},
    };
    LogLines log;
    for (const auto &[index, length, text] : rows) {
        const std::string envelope = "\x1B%-12345X@PJL ENTER LANGUAGE=ACL\r\n\x00\xAC\xFF\x20\x00"s +
                                     static_cast<char>(length) + "\0\0\0\0\0\0\0\0\0\0"s + text +
                                     "\x1B%-12345X";
        ScriptedTransport transport;
        EXPECT_EQ(writeWith(transport, index, {replyHeader(0x20, 1, 0)}),
                  Writings{TonerHintWriting::success});
        EXPECT_EQ(transport.takeCalls(), (Lines{std::string("open 2 ") + sampleUri, "read #1 100 4096 0",
                                                writeCall(bytesOf(envelope)), "read #1 10000 4096 0"}));
        EXPECT_EQ(log.take(),
                  (Lines{"pjl_tonerhint_set:" + text, "set honer sendACLWithPJL header: <00acff20 00010000>",
                         "set honer sendACLWithPJL data: (null)", "set honer success"}));
    }
}

TEST(WriteTonerHint, judgesTheHeaderAlone) {
    using enum TonerHintWriting;
    const Read text{.bytes = {'5'}};
    const struct {
        const char *name;
        std::vector<Read> replies;
        Writings writings;
    } rows[] = {
        {"data", {replyHeader(0x20, 1, 1), text}, {success}},
        {"data that never comes", {replyHeader(0x20, 1, 1)}, {success}},
        {"refusal", {replyHeader(0x20, 0, 0)}, {failure}},
        {"wrong echo", {replyHeader(0x21, 1, 0)}, {unclear}},
        {"short header", {{.bytes = {0x00, 0xAC, 0xFF, 0x20}}}, {unclear}},
        {"short data, then another reply",
         {replyHeader(0x20, 1, 9), text, replyHeader(0x21, 1, 0)},
         {success, unclear}},
        {"no reply", {}, {TonerHintWriting::nothing}},
        {"silent end", {{}}, {}},
    };
    LogLines log;
    for (const auto &[name, replies, writings] : rows) {
        ScriptedTransport transport;
        EXPECT_EQ(writeWith(transport, 4, replies), writings) << name;
        EXPECT_EQ(transport.takeCalls().at(2), writeCall(envelopes::writeThreshold5));
        const Lines lines = log.take();
        EXPECT_EQ(countOf(lines, "set honer send"), std::ssize(writings) * 2);
        EXPECT_EQ(countOf(lines, "set honer success"), std::ranges::count(writings, success));
        EXPECT_EQ(countOf(lines, "set honer fail"),
                  std::ranges::count(writings, failure) + std::ranges::count(writings, unclear));
    }
}

TEST(TonerHint, withoutPrinterNothingIsSentOrDelivered) {
    LogLines log;
    ScriptedTransport transport;
    readTonerHint(nullptr, [](const Reading &) { ADD_FAILURE(); });
    writeTonerHint(nullptr, 3, [](TonerHintWriting) { ADD_FAILURE(); });
    EXPECT_EQ(transport.takeCalls(), Lines{});
}

TEST(ConsumableReminder, mapsChoicesAndThresholds) {
    const std::int64_t written[] = {0, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    for (std::int64_t index = 0; index < 10; ++index) {
        EXPECT_EQ(thresholdForPopUpIndex(index), written[index]);
        EXPECT_EQ(popUpIndexForThreshold(static_cast<std::int32_t>(written[index])), index);
    }
    EXPECT_EQ(thresholdForPopUpIndex(-1), 0);
    for (const std::int32_t outside : {-1, 1, 11, 255, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(popUpIndexForThreshold(outside), 9) << outside;
        EXPECT_FALSE(isReminderThreshold(outside));
    }
    for (const std::int64_t threshold : written)
        EXPECT_TRUE(isReminderThreshold(threshold));
}
