// Handles, transfers and the giving back of printers, on a bus and by a clock of the test's own.
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/Locking/Mutex.h"
#include "Platform/Transport/Transport.h"
#include "Platform/Transport/usb/AlternateSetting.h"
#include "Platform/Transport/usb/BulkTransfer.h"
#include "Platform/Transport/usb/IdleClosingPrinter.h"
#include "Platform/Transport/usb/StatusText.h"
#include "Platform/Transport/usb/UsbPrinters.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/Random.h"

#include <numeric>

using namespace transport;
using std::chrono::milliseconds;

namespace {

constexpr const char *uri = "usb://Zelkor/L200?serial=SN1";
constexpr const char *otherUri = "usb://Zelkor/L200?serial=SN2";

struct Packets {
    tl_usb_status status = TL_USB_OK;
    std::size_t count = 0;
    milliseconds after{0}; // what the printer takes; more than the time-out: nothing comes of it
};

// What the printer does, shared by all devices opened for it.
struct Wire {
    // Held during a transfer. What follows the test changes between transfers, which nobody checks.
    locking::Mutex mutex;
    std::deque<Packets> answers; // then nothing but time-outs
    std::deque<Packets> accepts;
    std::function<Packets()> chatter;                                              // in place of the answers
    std::function<Packets()> appetite = [] { return Packets{.count = SIZE_MAX}; }; // then
    std::vector<std::size_t> chunks;
    Bytes written;
    int receives = 0;
    std::atomic<int> open = 0;
    std::atomic<bool> waits = false;       // for a stop instead of a time-out
    std::atomic<bool> statusWaits = false; // with the others
    std::atomic<int> waiting = 0;          // calls that do
};

class FakeDevice final : public UsbDevice {
public:
    FakeDevice(Wire &wire, dispatch::ManualClock &clock) : wire_(wire), clock_(clock) { ++wire_.open; }
    ~FakeDevice() override { --wire_.open; }

    std::size_t packetSize() const override { return 64; }

    Transferred send(std::span<const std::uint8_t> bytes, milliseconds timeout,
                     const std::stop_token &stop) override {
        if (isStopped(stop))
            return {TL_USB_ERROR_CANCELLED, 0};
        const locking::MutexLock lock(wire_.mutex);
        Packets accepted = wire_.appetite();
        if (!wire_.accepts.empty()) {
            accepted = wire_.accepts.front();
            wire_.accepts.pop_front();
        }
        accepted.count = std::min(accepted.count, bytes.size());
        wire_.chunks.push_back(bytes.size());
        if (!passes(accepted, timeout))
            return {TL_USB_ERROR_TIMEOUT, 0};
        wire_.written.insert(wire_.written.end(), bytes.begin(),
                             bytes.begin() + static_cast<std::ptrdiff_t>(accepted.count));
        return {accepted.status, accepted.count};
    }

    Transferred receive(std::span<std::uint8_t> buffer, milliseconds timeout,
                        const std::stop_token &stop) override {
        EXPECT_EQ(buffer.size() % packetSize(), 0u);
        if (isStopped(stop))
            return {TL_USB_ERROR_CANCELLED, 0};
        const locking::MutexLock lock(wire_.mutex);
        ++wire_.receives;
        if (wire_.chatter)
            wire_.answers.assign(1, wire_.chatter());
        if (wire_.answers.empty()) {
            clock_.advance(timeout);
            return {TL_USB_ERROR_TIMEOUT, 0};
        }
        Packets &answer = wire_.answers.front();
        if (!passes(answer, timeout))
            return {TL_USB_ERROR_TIMEOUT, 0};
        const std::size_t count = std::min(answer.count, buffer.size());
        const bool done = count < buffer.size(); // else the transfer goes on, or an empty packet ends it
        std::iota(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count), std::uint8_t{1});
        const tl_usb_status status = answer.status;
        answer.count -= count;
        if (done)
            wire_.answers.pop_front();
        return {status, count};
    }

    Transferred portStatus(std::uint8_t &bits, milliseconds, const std::stop_token &stop) override {
        if (wire_.statusWaits && isStopped(stop))
            return {TL_USB_ERROR_CANCELLED, 0};
        bits = 0x18;
        return {TL_USB_OK, 1};
    }
    Transferred deviceId(std::span<std::uint8_t>, milliseconds, const std::stop_token &) override {
        return {TL_USB_OK, 0};
    }

private:
    bool isStopped(const std::stop_token &stop) {
        wire_.waiting += wire_.waits ? 1 : 0;
        while (wire_.waits) {
            if (stop.stop_requested()) {
                --wire_.waiting;
                return true;
            }
            std::this_thread::yield();
        }
        return false;
    }
    bool passes(const Packets &packets, milliseconds timeout) {
        clock_.advance(std::min(packets.after, timeout));
        return packets.after <= timeout;
    }

    Wire &wire_;
    dispatch::ManualClock &clock_;
};

AttachedPrinter attached(const std::string &serial, int address) {
    return {.identity = {"Zelkor", "L200", serial}, .bus = 1, .address = address};
}

class FakeBus final : public UsbBus {
public:
    explicit FakeBus(dispatch::ManualClock &clock) : clock_(clock) {}

    std::vector<AttachedPrinter> printers() override {
        ++looks;
        return plugged;
    }
    bool isAttached(const AttachedPrinter &printer) override {
        return std::ranges::any_of(plugged, [&](const auto &p) { return p.isSamePlugging(printer); });
    }
    tl_usb_status open(const AttachedPrinter &printer, std::unique_ptr<UsbDevice> &device) override {
        Wire &wire = printer.identity.serial == "SN1" ? first : second;
        if (&wire == &first && slowOpening) {
            openingSlowly = true;
            awaitThat([this] { return !slowOpening; });
        }
        if (!isAttached(printer))
            return TL_USB_ERROR_NO_DEVICE;
        EXPECT_EQ(wire.open, 0) << "two device files of one printer";
        device = std::make_unique<FakeDevice>(wire, clock_);
        return TL_USB_OK;
    }

    Wire first, second;
    std::atomic<int> looks = 0;
    std::atomic<bool> slowOpening = false, openingSlowly = false;                    // of the first
    std::vector<AttachedPrinter> plugged = {attached("SN1", 5), attached("SN2", 6)}; // in one thread's hands

private:
    dispatch::ManualClock &clock_;
};

class UsbTransportTest : public testing::Test {
protected:
    void *opened(const char *which = uri) {
        void *handle = nullptr;
        EXPECT_EQ(usb.open(which, handle), TL_USB_OK);
        EXPECT_NE(handle, nullptr);
        return handle;
    }
    tl_usb_status read(void *handle, std::size_t capacity = 64, milliseconds timeout = 100ms) {
        buffer.assign(capacity, 0);
        return usb.transfer(handle, {}, buffer, count, timeout);
    }
    // The watcher sees to it on its own time; only its end can be waited for.
    void awaitGivenBack(const Wire &wire) {
        clock.advance(IdleClosingPrinter::idleTime);
        awaitThat([&] { return wire.open == 0; });
    }

    dispatch::ManualClock clock;
    FakeBus bus{clock};
    UsbPrinters printers{bus, clock};
    Transport usb{printers, clock};
    Bytes buffer;
    std::size_t count = 0;
};

} // namespace

TEST_F(UsbTransportTest, writesWholeOrFails) {
    const Bytes request(40000, 7);
    bus.first.accepts = {{.count = 16384}, {.status = TL_USB_ERROR_TIMEOUT, .count = 100}};
    void *const handle = opened();
    EXPECT_EQ(usb.transfer(handle, request, {}, count, 10ms), TL_USB_OK);
    EXPECT_EQ(bus.first.written, request);
    EXPECT_THAT(bus.first.chunks, ElementsAre(16384, 16384, 16384, 7132));
    for (const tl_usb_status failure : {TL_USB_ERROR_TIMEOUT, TL_USB_ERROR_STALL, TL_USB_ERROR_IO}) {
        bus.first.accepts = {{.count = 16384}, {.status = failure}};
        EXPECT_EQ(usb.transfer(handle, request, {}, count, 10ms), failure);
    }
    bus.first.accepts = {{.count = 0}};
    EXPECT_EQ(usb.transfer(handle, request, {}, count, 10ms), TL_USB_ERROR_IO) << "no progress, no end";

    bus.first.appetite = [] { return Packets{.count = 1, .after = 9s}; };
    const dispatch::Instant start = clock.now();
    EXPECT_EQ(usb.transfer(handle, request, {}, count, 10s), TL_USB_ERROR_TIMEOUT);
    EXPECT_EQ(clock.now() - start, 10s) << "for the whole write";
}

// The steps of an exchange, with printers that send what and when they like, for ever.
TEST_F(UsbTransportTest, endsEveryExchange) {
    Random random(480);
    const auto pick = [&](auto... choices) { return std::vector{choices...}[random() % sizeof...(choices)]; };
    int endless = 0, silent = 0, overlong = 0;
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        const milliseconds timeout = pick(1000ms, 3000ms, 10'000ms);
        const milliseconds slowest = pick(1ms, 50ms, 99ms, 1000ms, 9000ms, 12'000ms);
        const std::size_t shortest = pick(1u, 8u, 64u, 4096u, 9000u);
        const auto talk = [&] {
            return Packets{.count = shortest + random() % 64,
                           .after = 1ms + milliseconds(random.below(1u << 31)) % slowest};
        };
        bus.first.chatter = {};
        bus.first.answers.clear();
        void *const handle = opened();
        bus.first.chatter = talk;
        bus.first.appetite = talk;
        dispatch::Instant start = clock.now();
        int reads = 0;
        const auto readToTheEnd = [&](milliseconds limit) {
            tl_usb_status status = TL_USB_OK;
            for (reads = 0; status == TL_USB_OK; ++reads)
                status = read(handle, 4096, limit);
            endless += status == TL_USB_ERROR_ENDLESS;
            silent += status == TL_USB_ERROR_TIMEOUT;
            overlong += status == TL_USB_ERROR_OVERFLOW;
            if (status == TL_USB_ERROR_ENDLESS)
                EXPECT_EQ(read(handle, 4096, limit), TL_USB_ERROR_ENDLESS) << "and stays so";
            EXPECT_LE(reads, 1001);
        };
        readToTheEnd(100ms);
        EXPECT_LE(clock.now() - start, 5000ms);
        start = clock.now();
        const tl_usb_status written = usb.transfer(handle, Bytes(200, 1), {}, count, timeout);
        EXPECT_TRUE(written == TL_USB_OK || written == TL_USB_ERROR_TIMEOUT) << written;
        EXPECT_LE(clock.now() - start, timeout);
        start = clock.now();
        readToTheEnd(timeout);
        EXPECT_LE(clock.now() - start, 2 * timeout);
    }
    for (const int reached : {endless, silent, overlong})
        EXPECT_GT(reached, 20);
}

TEST_F(UsbTransportTest, letsAReaderTakeItsTimeWithAPrinterThatPauses) {
    void *const handle = opened();
    for (int i = 0; i < 3000; ++i) {
        bus.first.answers = {{.count = 8}};
        ASSERT_EQ(read(handle), TL_USB_OK) << i;
        ASSERT_EQ(read(handle), TL_USB_ERROR_TIMEOUT) << i;
    }
    EXPECT_EQ(read(handle, 64, 60s), TL_USB_ERROR_TIMEOUT) << "a silent printer is no endless one";
    bus.first.chatter = [] { return Packets{.count = 8}; };
    for (int run = 0; run < 3; ++run) {
        for (int i = 0; i < 1000; ++i)
            ASSERT_EQ(read(handle), TL_USB_OK) << i;
        EXPECT_EQ(read(handle), TL_USB_ERROR_ENDLESS);
        EXPECT_EQ(usb.transfer(handle, Bytes(3, 1), {}, count, 10ms), TL_USB_OK) << "and all begins anew";
    }
}

TEST_F(UsbTransportTest, readsOneTransfer) {
    const struct {
        Packets answer;
        std::size_t capacity;
        tl_usb_status status;
        std::size_t count, copied;
    } cases[] = {
        {{.count = 8}, 4096, TL_USB_OK, 8, 8},
        {{.count = 64}, 64, TL_USB_OK, 64, 64},     // fills the buffer, an empty packet ends it
        {{.count = 100}, 100, TL_USB_OK, 100, 100}, // the last packet ends beyond the buffer
        {{.count = 101}, 100, TL_USB_ERROR_OVERFLOW, 0, 100},
        {{.count = 5000}, 4096, TL_USB_ERROR_OVERFLOW, 0, 4096}, // in a packet that was not asked for
        {{.status = TL_USB_ERROR_TIMEOUT, .count = 3}, 64, TL_USB_OK, 3, 3}, // broke off
        {{.status = TL_USB_ERROR_STALL}, 64, TL_USB_ERROR_STALL, 0, 0},
        {{.status = TL_USB_ERROR_IO, .count = 3}, 64, TL_USB_ERROR_IO, 0, 0},
    };
    void *const handle = opened();
    for (const auto &[answer, capacity, status, length, copied] : cases) {
        bus.first.answers = {answer, {.count = 2}};
        EXPECT_EQ(read(handle, capacity), status) << answer.count;
        EXPECT_EQ(count, length) << answer.count;
        Bytes expected(capacity, 0);
        // The fake counts anew in each packet run it is asked for.
        std::iota(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(copied), std::uint8_t{1});
        EXPECT_EQ(buffer, expected) << answer.count;
        EXPECT_EQ(read(handle, 7), TL_USB_OK);
        EXPECT_EQ(count, 2u) << "the next transfer is whole";
    }
    EXPECT_EQ(read(handle), TL_USB_ERROR_TIMEOUT);
}

TEST_F(UsbTransportTest, waitsThroughEmptyPacketsAtLeisure) {
    clock.setAutoAdvance(true); // without a handle, no other thread waits on it
    FakeDevice device(bus.first, clock);
    buffer.resize(64);
    const auto receive = [&] {
        return readTransfer(device, buffer, count, 10s, std::stop_source().get_token(), clock);
    };
    bus.first.answers = {{}, {}, {.count = 5}};
    EXPECT_EQ(receive(), TL_USB_OK);
    EXPECT_EQ(count, 5u);

    bus.first.answers.resize(1000);
    const dispatch::Instant start = clock.now();
    EXPECT_EQ(receive(), TL_USB_ERROR_TIMEOUT);
    EXPECT_EQ(clock.now() - start, 10s);
    EXPECT_LT(bus.first.receives, 700);
}

TEST_F(UsbTransportTest, looksAtTheBusOncePerSelection) {
    const auto select = [&] {
        std::string text;
        EXPECT_EQ(usb.status(uri, 2s, text), TL_USB_OK);
        bus.first.answers = {{.count = 1}};
        EXPECT_EQ(read(opened()), TL_USB_OK);
    };
    select();
    EXPECT_EQ(bus.looks, 1);
    clock.advance(UsbPrinters::recent);
    select();
    EXPECT_EQ(bus.looks, 2);
    awaitGivenBack(bus.first);
    bus.plugged = {attached("SN2", 6), attached("SN1", 9)};
    select();
    EXPECT_EQ(bus.looks, 3) << "what had been seen was true no more";
    bus.plugged = {attached("SN2", 6), attached("SN1", 10)};
    opened();
    EXPECT_EQ(bus.looks, 4) << "nor of what was open";
}

TEST_F(UsbTransportTest, freesWhatAnUnpluggedPrinterLeft) {
    std::string text;
    EXPECT_EQ(usb.status(uri, 2s, text), TL_USB_OK);
    EXPECT_EQ(bus.first.open, 0) << "a status call keeps nothing";
    void *const idle = opened();
    bus.plugged = {attached("SN2", 6)};
    EXPECT_EQ(usb.list(0).size(), 1u);
    EXPECT_EQ(bus.first.open, 0) << "noticed by the next look";
    bus.plugged = {attached("SN1", 7), attached("SN2", 6)};
    EXPECT_EQ(read(idle), TL_USB_ERROR_INVALID);

    AttachedPrinter anew = attached("SN1", 7); // at its old address
    anew.folder = 1;
    for (const AttachedPrinter &other : {anew, attached("SN9", 7)}) {
        bus.plugged = {attached("SN1", 7)};
        usb.list(0);
        void *const replugged = opened();
        awaitGivenBack(bus.first);
        bus.plugged = {other};
        EXPECT_EQ(read(replugged), TL_USB_ERROR_NO_DEVICE);
        EXPECT_EQ(bus.first.open, 0);
    }
}

TEST_F(UsbTransportTest, noPrinterWaitsForAnother) {
    void *const other = opened(otherUri);
    bus.slowOpening = true;
    std::thread opening([&] { opened(); });
    awaitThat([&] { return bus.openingSlowly.load(); });
    awaitGivenBack(bus.second);
    EXPECT_EQ(read(other), TL_USB_ERROR_TIMEOUT);
    EXPECT_EQ(usb.list(0).size(), 2u);
    EXPECT_EQ(usb.close(other), TL_USB_OK);
    EXPECT_EQ(bus.second.open, 0);
    void *const again = opened(otherUri);
    std::thread ending([&] { usb.shutDown(); });
    awaitThat([&] { return bus.second.open == 0; });
    bus.slowOpening = false;
    opening.join();
    ending.join();
    EXPECT_EQ(bus.first.open, 0);
    EXPECT_EQ(usb.close(again), TL_USB_ERROR_INVALID);
}

TEST_F(UsbTransportTest, cancelsCallsInProgress) {
    Bytes own(64);
    std::size_t length = 0;
    std::string text;
    void *handle = nullptr, *later = nullptr;
    const std::function<tl_usb_status(Transport &)> calls[] = {
        [&](Transport &transport) { return transport.transfer(handle, {}, own, length, 10s); },
        [&](Transport &transport) { return transport.transfer(handle, own, {}, length, 10s); },
        [&](Transport &transport) { return transport.status(uri, 10s, text); },
    };
    const auto cancelled = [&](const auto &call, Transport &transport, const std::function<void()> &how) {
        bus.first.waits = true;
        std::thread caller([&] { EXPECT_EQ(call(transport), TL_USB_ERROR_CANCELLED); });
        awaitThat([&] { return bus.first.waiting > 0; });
        how();
        caller.join();
        bus.first.waits = false;
    };
    for (const auto &call : {calls[0], calls[1]}) {
        handle = opened();
        cancelled(call, usb, [&] {
            EXPECT_EQ(usb.status(uri, 10ms, text), TL_USB_OK) << "does not wait for the transfer";
            EXPECT_EQ(usb.close(handle), TL_USB_OK);
        });
        EXPECT_EQ(bus.first.open, 0);
        handle = opened();
        cancelled(call, usb, [&] { later = opened(); });
        EXPECT_EQ(usb.close(later), TL_USB_OK);
    }
    bus.first.statusWaits = true;
    for (const auto &call : calls) {
        Transport ending(printers, clock);
        EXPECT_EQ(ending.open(uri, handle), TL_USB_OK);
        cancelled(call, ending, [&] { ending.shutDown(); });
        EXPECT_EQ(bus.first.open, 0);
        EXPECT_EQ(ending.open(uri, handle), TL_USB_ERROR_CANCELLED);
    }
}

TEST(StatusText, isNormalOnlyWhenAllIsWell) {
    for (int bits = 0; bits < 256; ++bits) {
        const std::string text = statusText(static_cast<std::uint8_t>(bits), {});
        const bool normal = (bits & 0x38) == 0x18;
        EXPECT_NE(text.find(normal ? R"("printer_status":3,)" : R"("printer_status":2,)"), std::string::npos)
            << bits;
    }
    EXPECT_NE(statusText(0x18, {{"A\"\n", "\xC3\xA9\xFF\xE2\x82z"}})
                  .find("{\"A\\\"\\n\":\"\xC3\xA9\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz\"}"),
              std::string::npos);
}

TEST(AlternateSetting, prefersTwoWayAndNeverIppOverUsb) {
    const auto setting = [](std::uint8_t interface, std::uint8_t protocol, std::uint8_t bulkIn = 0x81,
                            std::uint8_t kind = 7) {
        AlternateSetting made{.interface = interface, .interfaceClass = kind, .subclass = 1};
        made.protocol = protocol;
        made.bulkIn = bulkIn;
        made.bulkOut = 1;
        return made;
    };
    const struct {
        std::vector<AlternateSetting> settings;
        int interface; // -1: none
    } cases[] = {
        {{}, -1},
        {{setting(0, 4)}, -1},
        {{setting(0, 3)}, -1},
        {{setting(0, 2, 0)}, -1},
        {{setting(0, 2, 0x81, 0xFF)}, -1},
        {{setting(0, 4), setting(1, 1), setting(2, 2), setting(3, 2)}, 2},
        {{setting(0, 2, 0), setting(1, 1)}, 1},
    };
    for (const auto &[settings, interface] : cases) {
        const auto chosen = printerSetting(settings);
        EXPECT_EQ(chosen ? chosen->interface : -1, interface) << testing::PrintToString(settings.size());
    }
}
