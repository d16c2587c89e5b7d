#include "Tests/Manager/ExchangeModel.h"
#include "Tests/Support/Random.h"

namespace {

using Read = ScriptedTransport::Read;

constexpr std::int32_t timeout = 5000;
const Bytes request = {0x01, 0x02, 0x03};
const Read timedOut{.status = TL_USB_ERROR_TIMEOUT};
const Bytes replyHeader = {0x00, 0xAC, 0xFF, 0x21, 0x00, 0x01, 0x00, 0x02}; // announces 2 bytes
const Bytes endHeader = {0x00, 0xAC, 0xFF, 0x20, 0x00, 0x01, 0x00, 0x00};   // announces none

Ref<ExchangeCompletion> completionInto(Lines &lines, const ZKUSB &record) {
    return makeBlock<void(const Ref<NSData> &, const Ref<NSData> &)>(
        [&](const Ref<NSData> &header, const Ref<NSData> &data) {
            lines.push_back("complete " + hex(header) + " " + hex(data) + " " +
                            std::to_string(record.transportStatus()));
        });
}

/// What an exchange does, in the words of the model.
Lines storyOf(ScriptedTransport &transport) {
    Lines story;
    LogLines log;
    transport.onCall = [&](const std::string &call) { story.push_back(call); };
    const auto record = sampleRecord();
    const auto completion = completionInto(story, *record);
    record->sendACLWithPJL(dataOf(request), timeout, completion);
    for (const std::string &line : log.take())
        story.push_back("log " + line);
    return story;
}

/// Scripts by chance, with bytes and lengths that lead into every branch.
class ScriptMaker : Random {
public:
    using Random::Random;

    void fill(ScriptedTransport &transport) {
        transport.openStatus = oneIn(12) ? pick({TL_USB_ERROR_NO_DEVICE, 1}) : TL_USB_OK;
        transport.givesHandle = !oneIn(12);
        transport.writeStatus = oneIn(12) ? TL_USB_ERROR_IO : TL_USB_OK;
        for (int stale = pick({0, 1, 2}); stale > 0; --stale)
            transport.reads.push_back({.bytes = transfer().bytes});
        transport.reads.push_back(
            {.status = pick({TL_USB_ERROR_TIMEOUT, TL_USB_ERROR_NO_DEVICE, 7}), .bytes = transfer().bytes});
        for (int replies = pick({0, 1, 2, 3, 4, 5, 6}); replies > 0; --replies) {
            transport.reads.push_back(transfer());
            if (!oneIn(3)) { // a reply whose data often, but not always, has the announced length
                const std::uint8_t length = byte({1, 2, 3, 9});
                transport.reads.push_back({.bytes = {0x00, 0xAC, 0xFF, 0x21, 0x00, 0x01, 0x00, length}});
                transport.reads.push_back(transfer());
                transport.reads.back().bytes.resize(byte({1, 2, 3, 9}), 0x56);
            }
        }
    }

private:
    int pick(std::initializer_list<int> choices) { return of(choices); }
    std::uint8_t byte(std::initializer_list<int> choices) { return static_cast<std::uint8_t>(pick(choices)); }

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
};

} // namespace

TEST(Exchange, doesWhatThePlainModelSays) {
    ScriptMaker scripts(20110);
    std::size_t closed = 0, silent = 0, twice = 0, logged = 0, wrongTwice = 0;
    for (int round = 0; round < 6000; ++round) {
        ScriptedTransport transport;
        scripts.fill(transport);
        const Lines expected = predictExchange(transport, request, timeout);
        ASSERT_EQ(storyOf(transport), expected) << "round " << round;
        const auto completions = std::ranges::count_if(
            expected, [](const std::string &event) { return event.starts_with("complete"); });
        ASSERT_LE(completions, 2);
        closed += std::ranges::count(expected, "close #1") > 0;
        silent += completions == 0;
        twice += completions == 2;
        logged += expected.back().starts_with("log");
        wrongTwice += completions == 2 && std::ranges::count(expected.back(), '<') == 2; // header and data
    }
    // The scripts reach every end, not only the early ones.
    for (const std::size_t count : {closed, silent, twice, logged, wrongTwice})
        EXPECT_GT(count, 40u);
}

TEST(Exchange, completionLetGoIsNotCalled) {
    ScriptedTransport transport;
    transport.reads = {timedOut, {.bytes = replyHeader}, {.bytes = {0x31, 0x30}}};
    LogLines log;
    Lines completions;
    const auto record = sampleRecord();
    auto completion = completionInto(completions, *record);
    transport.onCall = [&](const std::string &call) {
        if (call.starts_with("write"))
            completion.reset();
    };
    record->sendACLWithPJL(dataOf(request), timeout, std::as_const(completion));
    EXPECT_EQ(completions, Lines{});
    EXPECT_EQ(log.take(), Lines{"len:2,size:2"});
    EXPECT_EQ(record->receiveCallback(), nullptr);
}

TEST(Exchange, callsTheLatestCompletionOfTheRecord) {
    ScriptedTransport transport;
    transport.reads = {timedOut, {.bytes = endHeader}};
    Lines early, late;
    const auto record = sampleRecord();
    const auto first = completionInto(early, *record), second = completionInto(late, *record);
    transport.onCall = [&](const std::string &call) {
        if (call.starts_with("write"))
            record->setReceiveCallback(second);
    };
    record->sendACLWithPJL(dataOf(request), timeout, first);
    EXPECT_EQ(early, Lines{});
    EXPECT_EQ(late, Lines{"complete <00acff2000010000> none 0"});
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
