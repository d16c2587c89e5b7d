#include "Tests/Manager/ExchangeModel.h"

#include <atomic>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace {

using Read = ScriptedTransport::Read;

constexpr std::int32_t timeout = 5000;
const Bytes request = {0x01, 0x02, 0x03};
const Read timedOut{.status = TL_USB_ERROR_TIMEOUT};
const Bytes replyHeader = {0x00, 0xAC, 0xFF, 0x21, 0x00, 0x01, 0x00, 0x02}; // announces 2 bytes
const Bytes endHeader = {0x00, 0xAC, 0xFF, 0x20, 0x00, 0x01, 0x00, 0x00};   // announces none

Ref<ExchangeCompletion> completionInto(Lines &lines) {
    return makeBlock<void(const Ref<NSData> &, const Ref<NSData> &)>(
        [&](const Ref<NSData> &header, const Ref<NSData> &data) {
            lines.push_back(hex(header) + " " + hex(data));
        });
}

Exchange exchangeWith(ScriptedTransport &transport) {
    LogLines log;
    Lines completions;
    const auto completion = completionInto(completions);
    sampleRecord()->sendACLWithPJL(dataOf(request), timeout, completion);
    return {transport.takeCalls(), completions, log.take()};
}

/// Every call of an exchange that gets as far as the write.
Lines callsOf(std::size_t drains, std::size_t reads, bool closes) {
    Lines calls = {std::string("open 2 ") + sampleUri};
    calls.insert(calls.end(), drains, "read #1 100 4096 0");
    calls.emplace_back("write #1 5000 0 <010203>");
    calls.insert(calls.end(), reads, "read #1 5000 4096 0");
    if (closes)
        calls.emplace_back("close #1");
    return calls;
}

/// Scripts by chance, with bytes and lengths that lead into every branch.
class ScriptMaker {
public:
    explicit ScriptMaker(unsigned seed) : random_(seed) {}

    void fill(ScriptedTransport &transport) {
        transport.openStatus = oneIn(12) ? TL_USB_ERROR_NO_DEVICE : TL_USB_OK;
        transport.givesHandle = !oneIn(12);
        transport.writeStatus = oneIn(12) ? TL_USB_ERROR_IO : TL_USB_OK;
        for (int stale = pick({0, 1, 2}); stale > 0; --stale)
            transport.reads.push_back({.bytes = transfer().bytes});
        transport.reads.push_back(timedOut);
        for (int replies = pick({0, 1, 2, 3, 4, 5, 6}); replies > 0; --replies) {
            transport.reads.push_back(transfer());
            if (oneIn(2)) { // a reply whose data often, but not always, has the announced length
                const std::uint8_t length = byte({1, 2, 3, 9});
                transport.reads.push_back({.bytes = {0x00, 0xAC, 0xFF, 0x21, 0x00, 0x01, 0x00, length}});
                transport.reads.push_back(transfer());
                transport.reads.back().bytes.resize(byte({1, 2, 3, 9}), 0x56);
            }
        }
    }

private:
    int pick(std::initializer_list<int> choices) { return choices.begin()[random_() % choices.size()]; }
    std::uint8_t byte(std::initializer_list<int> choices) { return static_cast<std::uint8_t>(pick(choices)); }
    bool oneIn(unsigned count) { return random_() % count == 0; }

    Read transfer() {
        Read read{.status = oneIn(9) ? TL_USB_ERROR_IO : TL_USB_OK};
        read.bytes = {byte({0x00, 0x00, 0x41, 0xAC}),
                      byte({0xAC, 0xAC, 0x42, 0x00}),
                      0xFF,
                      0x21,
                      byte({0, 0, 1}),
                      byte({0, 1, 1}),
                      byte({0, 0, 0, 1, 16}),
                      byte({0, 1, 2, 4, 9})};
        const int length = pick({0, 1, 2, 4, 7, 8, 8, 8, 8, 8, 9, 256, 4096, 4099});
        read.bytes.resize(static_cast<std::size_t>(length), 0x55);
        if (oneIn(8))
            read.length = pick({-1, 0, 1, 2, 8, 256, 4096, 5000, INT32_MIN, INT32_MAX});
        return read;
    }

    std::mt19937 random_;
};

} // namespace

TEST(Exchange, takesEachPathWithItsCalls) {
    const auto of = [](Bytes bytes) { return Read{.bytes = std::move(bytes)}; };
    const Read reply = of(replyHeader), end = of(endHeader), ten = of({0x31, 0x30}),
               junk = of(bytesOf("ABCD"));
    const Read zeroField = of({0x00, 0xAC, 0xFF, 0x21, 0x00, 0x00, 0x00, 0x02});
    const Read reply256 = of({0x00, 0xAC, 0xFF, 0x21, 0x01, 0x00, 0x01, 0x00}), all256 = of(Bytes(256, 0x34));
    const Read reply4096 = of({0x00, 0xAC, 0xFF, 0x21, 0x00, 0x01, 0x10, 0x00}),
               all4096 = of(Bytes(4096, 0x35));
    const Read longReply = of({0x00, 0xAC, 0xFF, 0x21, 0x00, 0x01, 0x00, 0x02, 0xAA, 0xBB});
    const Read zeroFirst = of({0x00, 0x12, 0x13}), acSecond = of({0x41, 0xAC, 0x13}), empty = of({});
    const Read failedReply{.status = TL_USB_ERROR_IO, .bytes = replyHeader};
    const Read failedTen{.status = TL_USB_ERROR_IO, .bytes = ten.bytes};
    const Read below{.bytes = ten.bytes, .length = -5}, above{.bytes = all4096.bytes, .length = 0x7FFFFFFF};
    const Read unmeasured{.bytes = replyHeader, .length = 0};
    const struct {
        const char *name;
        std::vector<Read> replies;
        std::size_t reads;
        Lines completions; // header and data: the number of a reply, e for empty, - for none
        int logged;        // length, 0 for no line
    } rows[] = {
        {"reply with data", {reply, ten}, 2, {"01"}, 2},
        {"reply without data", {end}, 1, {"0-"}, 0},
        {"zero at offset 4", {zeroField}, 1, {"0-"}, 0},
        {"big-endian fields", {reply256, all256}, 2, {"01"}, 256},
        {"full buffer", {reply4096, all4096}, 2, {"01"}, 4096},
        {"the whole transfer is the header", {longReply, ten}, 2, {"01"}, 2},
        {"no reply", {timedOut}, 1, {"--"}, 0},
        {"failed read of a header", {failedReply}, 1, {"--"}, 0},
        {"begins 00 but is no header", {zeroFirst, reply}, 1, {}, 0},
        {"AC in second place only", {acSecond, reply}, 1, {}, 0},
        {"empty transfer", {empty, reply}, 1, {}, 0},
        {"junk, then a reply", {junk, junk, end}, 3, {"2-"}, 0},
        {"junk, then nothing", {junk}, 2, {"--"}, 0},
        {"data read fails", {reply, timedOut, end}, 2, {"0e"}, 0},
        {"data read fails with all the data", {reply, failedTen}, 2, {"01"}, 2},
        {"short data, then a header", {reply256, junk, end}, 3, {"01", "2-"}, 0},
        {"short data, then nothing", {reply256, junk}, 3, {"01", "--"}, 0},
        {"short data, junk, then a reply", {reply256, junk, junk, reply, ten}, 5, {"01", "34"}, 2},
        {"long data, then nothing", {reply, junk}, 3, {"01", "--"}, 0},
        {"wrong data beginning 00", {reply, zeroFirst, end}, 2, {"01"}, 0},
        {"wrong data with AC second", {reply, acSecond, end}, 2, {"01"}, 0},
        {"wrong data like a header", {reply, end, end}, 2, {"01"}, 0},
        {"length below zero", {reply, below}, 3, {"0e", "--"}, 0},
        {"length above the capacity", {reply4096, above}, 2, {"01"}, 4096},
        {"header of no length", {unmeasured, ten}, 1, {"e-"}, 0},
    };
    for (const auto &row : rows) {
        ScriptedTransport transport;
        transport.reads = {timedOut};
        transport.reads.insert(transport.reads.end(), row.replies.begin(), row.replies.end());
        const auto buffer = [&](char name) {
            return name == '-'   ? "none"
                   : name == 'e' ? "<>"
                                 : hex(row.replies[static_cast<std::size_t>(name - '0')].bytes);
        };
        Exchange expected;
        for (const std::string &completion : row.completions)
            expected.completions.push_back(buffer(completion[0]) + " " + buffer(completion[1]));
        const bool failed = !row.completions.empty() && row.completions.back() == "--";
        expected.calls = callsOf(1, row.reads, failed);
        const std::string length = std::to_string(row.logged);
        if (row.logged)
            expected.log = {"len:" + length + ",size:" + length};
        EXPECT_EQ(exchangeWith(transport), expected) << row.name;
    }
}

TEST(Exchange, shortHeadersHaveNoData) {
    for (std::size_t length = 0; length < 8; ++length) {
        const Bytes header(replyHeader.begin(), replyHeader.begin() + static_cast<long>(length));
        ScriptedTransport transport;
        transport.reads = {timedOut, {.bytes = header}, {.bytes = {0x31, 0x30}}};
        const Lines expected = length < 2 ? Lines{} : Lines{hex(header) + " none"};
        EXPECT_EQ(exchangeWith(transport), (Exchange{callsOf(1, 1, false), expected, {}})) << length;
    }
}

TEST(Exchange, closesNothingItCouldNotOpen) {
    for (const auto &[status, givesHandle] : {std::pair(-2, false), {-2, true}, {1, true}, {0, false}}) {
        ScriptedTransport transport;
        transport.openStatus = status;
        transport.givesHandle = givesHandle;
        EXPECT_EQ(exchangeWith(transport),
                  (Exchange{{std::string("open 2 ") + sampleUri}, {failedCompletion}, {}}));
    }
}

TEST(Exchange, drainsStaleTransfersAndClosesWhenTheWriteFails) {
    ScriptedTransport transport;
    transport.reads = {{.bytes = replyHeader}, {}, {.bytes = {0x39}}, {.status = 7, .bytes = endHeader}};
    transport.writeStatus = TL_USB_ERROR_IO;
    EXPECT_EQ(exchangeWith(transport), (Exchange{callsOf(4, 0, true), {failedCompletion}, {}}));
}

TEST(Exchange, tellsHowTheTransportEndedIt) {
    constexpr auto ok = TL_USB_OK, gone = TL_USB_ERROR_NO_DEVICE, io = TL_USB_ERROR_IO;
    const struct {
        std::int32_t open, write;
        std::vector<Read> reads;
        std::vector<std::int32_t> expected; // one a completion
    } rows[] = {
        {TL_USB_ERROR_ACCESS, ok, {}, {TL_USB_ERROR_ACCESS}},
        {ok, TL_USB_ERROR_BUSY, {timedOut}, {TL_USB_ERROR_BUSY}},
        {ok, ok, {timedOut}, {TL_USB_ERROR_TIMEOUT}},
        {ok, ok, {{.status = gone}, {.bytes = endHeader}}, {ok}}, // how the drain ends does not matter
        {ok, ok, {timedOut, {.bytes = replyHeader}, {.status = gone}}, {gone}},
        {ok, ok, {timedOut, {.bytes = replyHeader}, {.bytes = bytesOf("ABC")}, {.status = io}}, {ok, io}},
    };
    const auto record = sampleRecord();
    for (const auto &row : rows) {
        ScriptedTransport transport;
        transport.openStatus = row.open;
        transport.writeStatus = row.write;
        transport.reads = row.reads;
        LogLines log;
        std::vector<std::int32_t> statuses;
        const auto completion = makeBlock<void(const Ref<NSData> &, const Ref<NSData> &)>(
            [&](auto &, auto &) { statuses.push_back(record->transportStatus()); });
        record->sendACLWithPJL(dataOf(request), timeout, completion);
        EXPECT_EQ(statuses, row.expected) << row.open << " " << row.write << " " << row.reads.size();
    }
}

TEST(Exchange, doesWhatThePlainModelSays) {
    constexpr unsigned seed = 20110;
    ScriptMaker scripts(seed);
    std::size_t closed = 0, silent = 0, twice = 0, logged = 0;
    for (int round = 0; round < 6000; ++round) {
        ScriptedTransport transport;
        scripts.fill(transport);
        const Exchange expected = predictExchange(transport, request, timeout);
        ASSERT_EQ(exchangeWith(transport), expected)
            << "seed " << seed << ", round " << round << ": open " << transport.openStatus << ", write "
            << transport.writeStatus << ", reads " << testing::PrintToString(transport.reads);
        closed += expected.calls.back() == "close #1";
        silent += expected.completions.empty();
        twice += expected.completions.size() > 1;
        logged += !expected.log.empty();
    }
    // The scripts reach every end, not only the early ones.
    for (const std::size_t count : {closed, silent, twice, logged})
        EXPECT_GT(count, 100u);
}

TEST(Exchange, completionLetGoIsNotCalled) {
    ScriptedTransport transport;
    transport.reads = {timedOut, {.bytes = replyHeader}, {.bytes = {0x31, 0x30}}};
    LogLines log;
    Lines completions;
    auto completion = completionInto(completions);
    transport.onCall = [&](const std::string &call) {
        if (call.starts_with("write"))
            completion.reset();
    };
    const auto record = sampleRecord();
    record->sendACLWithPJL(dataOf(request), timeout, std::as_const(completion));
    EXPECT_EQ(completions, Lines{});
    EXPECT_EQ(log.take(), Lines{"len:2,size:2"});
    EXPECT_EQ(record->receiveCallback(), nullptr);
}

TEST(Exchange, callsTheLatestCompletionOfTheRecord) {
    ScriptedTransport transport;
    transport.reads = {timedOut, {.bytes = endHeader}};
    Lines early, late;
    const auto first = completionInto(early), second = completionInto(late);
    const auto record = sampleRecord();
    transport.onCall = [&](const std::string &call) {
        if (call.starts_with("write"))
            record->setReceiveCallback(second);
    };
    record->sendACLWithPJL(dataOf(request), timeout, first);
    EXPECT_EQ(early, Lines{});
    EXPECT_EQ(late, Lines{"<00acff2000010000> none"});
    EXPECT_EQ(record->receiveCallback(), second);
}

TEST(Exchange, outlivesTheLastHolderOfItsRecord) {
    ScriptedTransport transport;
    transport.reads = {timedOut, {.bytes = replyHeader}, {.bytes = {0x41}}};
    auto record = sampleRecord();
    const Weak<ZKUSB> watched = record;
    int calls = 0;
    const auto completion = makeBlock<void(const Ref<NSData> &, const Ref<NSData> &)>([&](auto &, auto &) {
        ++calls;
        record.reset();
        EXPECT_FALSE(watched.expired()) << "the exchange still needs it";
    });
    record->sendACLWithPJL(dataOf(request), timeout, completion);
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(watched.expired());
}

TEST(Exchange, twoAtATimeOnOneRecordDoNoHarm) {
    constexpr int rounds = 300;
    ScriptedTransport transport;
    transport.reads = {timedOut, {.bytes = replyHeader}, {.bytes = {0x31, 0x30}}};
    LogLines log;
    const auto record = sampleRecord();
    std::atomic<int> whole = 0;
    const auto work = [&] {
        const auto completion = makeBlock<void(const Ref<NSData> &, const Ref<NSData> &)>(
            [&](const Ref<NSData> &header, const Ref<NSData> &data) {
                whole += hex(header) == hex(replyHeader) && hex(data) == "<3130>";
            });
        for (int i = 0; i < rounds; ++i)
            record->sendACLWithPJL(dataOf(request), timeout, completion);
        return completion;
    };
    Ref<ExchangeCompletion> kept; // also serves the other thread's exchanges
    std::thread other([&] { kept = work(); });
    const auto own = work();
    other.join();
    EXPECT_EQ(whole, 2 * rounds);
    EXPECT_EQ(log.take(), Lines(2 * rounds, "len:2,size:2"));
    EXPECT_EQ(utf8(record->URI()), sampleUri);
}
