#include "Manager/TonerHint.h"

#include "Manager/ConsumableReminder.h"
#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Manager/ScriptedTransport.h"
#include "Tests/Support/Envelopes.h"

using namespace std::string_literals;

namespace {

using Read = ScriptedTransport::Read;

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

std::string inWords(const TonerHintReading &reading) {
    using enum TonerHintReading::Outcome;
    return reading.outcome == nothing    ? "nothing"
           : reading.outcome == rejected ? "rejected"
                                         : "threshold " + std::to_string(reading.threshold);
}

std::string inWords(TonerHintWriting writing) {
    using enum TonerHintWriting;
    return writing == nothing   ? "nothing"
           : writing == success ? "success"
           : writing == failure ? "failure"
                                : "unclear";
}

class TonerHintTest : public testing::Test {
protected:
    /// What reading from a printer that sends this delivers, in words.
    Lines read(const std::vector<Read> &replies) {
        return exchange(replies, [](const auto &deliver) { readTonerHint(sampleRecord(), deliver); });
    }
    Lines write(const std::vector<Read> &replies, std::int64_t index = 4) {
        return exchange(replies,
                        [&](const auto &deliver) { writeTonerHint(sampleRecord(), index, deliver); });
    }

    Lines calls; ///< of the transport, in the latest exchange
    LogLines log;

private:
    Lines exchange(const std::vector<Read> &replies, const auto &begin) {
        ScriptedTransport transport;
        transport.reads = {{.status = TL_USB_ERROR_TIMEOUT}}; // nothing is left from before
        transport.reads.insert(transport.reads.end(), replies.begin(), replies.end());
        Lines delivered;
        begin([&](const auto &outcome) { delivered.push_back(inWords(outcome)); });
        calls = transport.takeCalls();
        return delivered;
    }
};

} // namespace

TEST_F(TonerHintTest, readingAsksAndLogs) {
    EXPECT_EQ(read({replyHeader(0x21, 1, 2), {.bytes = bytesOf("10")}}), Lines{"threshold 10"});
    EXPECT_EQ(calls.at(2), writeCall(envelopes::readThreshold));
    EXPECT_EQ(log.take(), (Lines{"get honer sendACLWithPJL header: <00acff21 00010002>",
                                 "get honer sendACLWithPJL data: <3130>", "dataString:10", "dataInt:10",
                                 "len:2,size:2"}));
}

TEST_F(TonerHintTest, readingTakesTheLeadingNumberOfTheText) {
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
    for (const auto &[data, value, logged] : rows) {
        const Read header = replyHeader(0x21, 1, static_cast<std::uint8_t>(data.size()));
        EXPECT_EQ(read({header, {.bytes = bytesOf(data)}}), Lines{"threshold " + std::to_string(value)})
            << data;
        const Lines lines = log.take();
        EXPECT_EQ(lines.at(2), std::string("dataString:") + logged);
        EXPECT_EQ(lines.at(3), "dataInt:" + std::to_string(value));
    }
}

TEST_F(TonerHintTest, writingSendsTheChoiceAndLogs) {
    const struct {
        std::int64_t index;
        std::uint8_t length;
        std::string text;
    } rows[] = {
        {-1, 0x1F, "OID_PLATFORM_CONSUMEABLE_HINT=0"},
        {9, 0x20, "OID_PLATFORM_CONSUMEABLE_HINT=10"},
    };
    for (const auto &[index, length, text] : rows) {
        const std::string envelope = "\x1B%-12345X@PJL ENTER LANGUAGE=ACL\r\n\x00\xAC\xFF\x20\x00"s +
                                     static_cast<char>(length) + "\0\0\0\0\0\0\0\0\0\0"s + text +
                                     "\x1B%-12345X";
        EXPECT_EQ(write({replyHeader(0x20, 1, 0)}, index), Lines{"success"});
        EXPECT_EQ(calls, (Lines{std::string("open 2 ") + sampleUri, "read #1 100 4096 0",
                                writeCall(bytesOf(envelope)), "read #1 10000 4096 0"}));
        EXPECT_EQ(log.take(),
                  (Lines{"pjl_tonerhint_set:" + text, "set honer sendACLWithPJL header: <00acff20 00010000>",
                         "set honer sendACLWithPJL data: (null)", "set honer success"}));
    }
    EXPECT_EQ(write({replyHeader(0x20, 1, 0)}), Lines{"success"});
    EXPECT_EQ(calls.at(2), writeCall(envelopes::writeThreshold5));
}

TEST_F(TonerHintTest, judgesWhatThePrinterSends) {
    constexpr std::uint8_t wrote = 0x20, was = 0x21;
    const Read five{.bytes = {'5'}}, half{.bytes = {0x00, 0xAC, 0xFF, was}};
    const std::tuple<const char *, std::vector<Read>, Lines> readings[] = {
        {"wrong echo", {replyHeader(wrote, 1, 1), five}, {"rejected"}},
        {"field 2", {replyHeader(was, 2, 1), five}, {"rejected"}},
        {"field 0x0101", {replyHeader(was, 0x0101, 1), five}, {"rejected"}},
        {"no data", {replyHeader(was, 1, 0)}, {"rejected"}},
        {"empty data", {replyHeader(was, 1, 1), {}}, {"rejected"}},
        {"short header", {half}, {"rejected"}},
        {"short data, then nothing", {replyHeader(was, 1, 9), five}, {"threshold 5", "nothing"}},
        {"short data, then a reply",
         {replyHeader(was, 1, 9), five, replyHeader(was, 1, 0)},
         {"threshold 5", "rejected"}},
        {"no reply", {}, {"nothing"}},
        {"silent end", {{.bytes = {0x00, 0x12}}}, {}},
    };
    // The header alone decides.
    const std::tuple<const char *, std::vector<Read>, Lines> writings[] = {
        {"data that never comes", {replyHeader(wrote, 1, 1)}, {"success"}},
        {"refusal", {replyHeader(wrote, 0, 0)}, {"failure"}},
        {"wrong echo", {replyHeader(was, 1, 0)}, {"unclear"}},
        {"short header", {half}, {"unclear"}},
        {"short data, then another reply",
         {replyHeader(wrote, 1, 9), five, replyHeader(was, 1, 0)},
         {"success", "unclear"}},
        {"no reply", {}, {"nothing"}},
    };
    const auto expectLogged = [&](const char *each, const Lines &delivered) {
        const Lines lines = log.take();
        EXPECT_EQ(countOf(lines, each), 2 * std::ssize(delivered));
        EXPECT_EQ(countOf(lines, "dataInt:5"), std::ranges::count(delivered, "threshold 5"));
        EXPECT_EQ(countOf(lines, "set honer success"), std::ranges::count(delivered, "success"));
        EXPECT_EQ(countOf(lines, "set honer fail"),
                  std::ranges::count(delivered, "failure") + std::ranges::count(delivered, "unclear"));
    };
    for (const auto &[sent, replies, delivered] : readings) {
        EXPECT_EQ(read(replies), delivered) << sent;
        expectLogged("get honer send", delivered);
    }
    for (const auto &[sent, replies, delivered] : writings) {
        EXPECT_EQ(write(replies), delivered) << sent;
        expectLogged("set honer send", delivered);
    }
}

TEST_F(TonerHintTest, withoutPrinterNothingIsSentOrDelivered) {
    ScriptedTransport transport;
    readTonerHint(nullptr, [](const TonerHintReading &) { ADD_FAILURE(); });
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
