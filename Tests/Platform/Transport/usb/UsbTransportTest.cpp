// Handles, transfers and the giving back of printers, on a bus and by a clock of the test's own.
#include "Platform/Transport/usb/UsbTransport.h"
#include "Platform/Dispatch/ManualClock.h"
#include "Platform/Transport/usb/AlternateSetting.h"
#include "Platform/Transport/usb/BulkTransfer.h"
#include "Platform/Transport/usb/StatusText.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <numeric>
#include <string>
#include <thread>

using namespace transport;
using namespace std::chrono_literals;
using std::chrono::milliseconds;
using testing::ElementsAre;
using Bytes = std::vector<uint8_t>;

namespace {

constexpr const char *uri = "usb://Zelkor/L200?serial=SN1";
constexpr const char *otherUri = "usb://Zelkor/L200?serial=SN2";

struct Packets {
    tl_usb_status status = TL_USB_OK;
    size_t count = 0;
};

// What the printer does, shared by all devices opened for it.
struct Wire {
    std::mutex mutex;
    std::deque<Packets> answers; // then nothing but time-outs
    std::deque<Packets> accepts; // then everything
    std::vector<size_t> chunks;
    Bytes written;
    int receives = 0;
    std::atomic<int> open = 0, opened = 0;
    std::atomic<bool> waits = false; // for a stop instead of a time-out
};

class FakeDevice final : public UsbDevice {
public:
    FakeDevice(Wire &wire, dispatch::ManualClock &clock) : wire_(wire), clock_(clock) {
        ++wire_.opened;
        ++wire_.open;
    }
    ~FakeDevice() override { --wire_.open; }

    size_t packetSize() const override { return 64; }

    Transferred send(std::span<const uint8_t> bytes, milliseconds, const std::stop_token &) override {
        const std::lock_guard lock(wire_.mutex);
        Packets accepted{.count = bytes.size()};
        if (!wire_.accepts.empty()) {
            accepted = wire_.accepts.front();
            wire_.accepts.pop_front();
        }
        wire_.chunks.push_back(bytes.size());
        wire_.written.insert(wire_.written.end(), bytes.begin(),
                             bytes.begin() + static_cast<std::ptrdiff_t>(accepted.count));
        return {accepted.status, accepted.count};
    }

    Transferred receive(std::span<uint8_t> buffer, milliseconds timeout,
                        const std::stop_token &stop) override {
        EXPECT_EQ(buffer.size() % packetSize(), 0u);
        while (wire_.waits) {
            if (stop.stop_requested()) {
                return {TL_USB_ERROR_CANCELLED, 0};
            }
            std::this_thread::yield();
        }
        const std::lock_guard lock(wire_.mutex);
        ++wire_.receives;
        if (wire_.answers.empty()) {
            clock_.advance(timeout);
            return {TL_USB_ERROR_TIMEOUT, 0};
        }
        Packets &answer = wire_.answers.front();
        const size_t count = std::min(answer.count, buffer.size());
        const bool done = count < buffer.size(); // else the transfer goes on, or an empty packet ends it
        std::iota(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count), uint8_t{1});
        const tl_usb_status status = answer.status;
        answer.count -= count;
        if (done) {
            wire_.answers.pop_front();
        }
        return {status, count};
    }

    Transferred portStatus(uint8_t &bits, milliseconds) override {
        bits = 0x18;
        return {TL_USB_OK, 1};
    }
    Transferred deviceId(std::span<uint8_t>, milliseconds) override { return {TL_USB_OK, 0}; }

private:
    Wire &wire_;
    dispatch::ManualClock &clock_;
};

AttachedPrinter attached(const std::string &serial, int address) {
    return {.identity = {"Zelkor", "L200", serial}, .bus = 1, .address = address};
}

class FakeBus final : public UsbBus {
public:
    explicit FakeBus(dispatch::ManualClock &clock) : clock_(clock) {}

    std::vector<AttachedPrinter> printers() override { return plugged; }
    tl_usb_status open(const AttachedPrinter &printer, std::unique_ptr<UsbDevice> &device) override {
        Wire &wire = printer.identity.serial == "SN1" ? first : second;
        EXPECT_EQ(wire.open, 0) << "two device files of one printer";
        device = std::make_unique<FakeDevice>(wire, clock_);
        return TL_USB_OK;
    }

    Wire first, second;
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
    tl_usb_status read(void *handle, size_t capacity = 64, milliseconds timeout = 100ms) {
        buffer.assign(capacity, 0);
        return usb.transfer(handle, {}, buffer, count, timeout);
    }
    // The watcher sees to it on its own time; only its end can be waited for.
    void awaitGivenBack(const Wire &wire) {
        clock.advance(HeldPrinter::idleTime);
        while (wire.open != 0) {
            std::this_thread::yield();
        }
    }

    dispatch::ManualClock clock;
    FakeBus bus{clock};
    UsbTransport usb{bus, clock};
    Bytes buffer;
    size_t count = 0;
};

} // namespace

TEST_F(UsbTransportTest, WritesWholeOrFails) {
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
}

TEST_F(UsbTransportTest, ReadsOneTransfer) {
    const struct {
        Packets answer;
        size_t capacity;
        tl_usb_status status;
        size_t count, copied;
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
        std::iota(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(copied), uint8_t{1});
        EXPECT_EQ(buffer, expected) << answer.count;
        EXPECT_EQ(read(handle, 7), TL_USB_OK);
        EXPECT_EQ(count, 2u) << "the next transfer is whole";
    }
    EXPECT_EQ(read(handle), TL_USB_ERROR_TIMEOUT);
}

TEST_F(UsbTransportTest, WaitsThroughEmptyPacketsAtLeisure) {
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

TEST_F(UsbTransportTest, GivesBackAfterUseAndTakesAgain) {
    void *const handle = opened();
    opened(otherUri);
    for (int exchange = 0; exchange < 3; ++exchange) {
        bus.first.answers = {{.count = 1}};
        EXPECT_EQ(read(handle), TL_USB_OK);
        EXPECT_EQ(bus.first.open, 1);
        awaitGivenBack(bus.first);
    }
    EXPECT_EQ(bus.first.opened, 3);
    EXPECT_EQ(usb.retireIdle(clock.now()), std::nullopt);

    usb.close(opened());
    EXPECT_EQ(bus.first.open, 0) << "closing does not wait for idleness";
    std::string text;
    EXPECT_EQ(usb.status(uri, 2s, text), TL_USB_OK);
    EXPECT_EQ(bus.first.open, 0) << "nor does a status call";
}

TEST_F(UsbTransportTest, FreesWhatAnUnpluggedPrinterLeft) {
    void *const idle = opened();
    bus.plugged = {attached("SN2", 6)};
    opened(otherUri);
    EXPECT_EQ(bus.first.open, 0) << "noticed by the next opening";
    bus.plugged = {attached("SN1", 7), attached("SN2", 6)};
    EXPECT_EQ(read(idle), TL_USB_ERROR_INVALID);

    void *const replugged = opened();
    awaitGivenBack(bus.first);
    bus.plugged = {attached("SN1", 8), attached("SN9", 7)}; // its address has another printer now
    EXPECT_EQ(read(replugged), TL_USB_ERROR_NO_DEVICE);
    EXPECT_EQ(bus.first.open, 0);
}

TEST_F(UsbTransportTest, CancelsACallInProgress) {
    const auto reads = [this](void *handle) {
        return std::thread([this, handle] {
            Bytes own(64);
            size_t length = 1;
            EXPECT_EQ(usb.transfer(handle, Bytes(3, 1), own, length, 10s), TL_USB_ERROR_CANCELLED);
            EXPECT_EQ(length, 0u);
        });
    };
    const auto awaitWrites = [this](size_t writes) {
        for (size_t written = 0; written < writes; std::this_thread::yield()) {
            const std::lock_guard lock(bus.first.mutex);
            written = bus.first.chunks.size();
        }
    };
    bus.first.waits = true;
    void *handle = opened();
    std::thread closed = reads(handle);
    awaitWrites(1);
    std::string text;
    EXPECT_EQ(usb.status(uri, 10ms, text), TL_USB_OK) << "does not wait for the transfer";
    EXPECT_EQ(usb.close(handle), TL_USB_OK);
    closed.join();
    EXPECT_EQ(bus.first.open, 0);

    std::thread retired = reads(opened());
    awaitWrites(2);
    handle = opened();
    retired.join();

    std::thread ended = reads(handle);
    awaitWrites(3);
    usb.shutDown();
    ended.join();
    EXPECT_EQ(bus.first.open, 0);
    EXPECT_EQ(usb.open(uri, handle), TL_USB_ERROR_CANCELLED);
}

TEST(StatusText, IsNormalOnlyWhenAllIsWell) {
    for (int bits = 0; bits < 256; ++bits) {
        const std::string text = statusText(static_cast<uint8_t>(bits), {});
        const bool normal = (bits & 0x38) == 0x18;
        EXPECT_NE(text.find(normal ? R"("printer_status":3,)" : R"("printer_status":2,)"), std::string::npos)
            << bits;
    }
    EXPECT_NE(statusText(0x18, {{"A\"\n", "\xC3\xA9\xFF\xE2\x82z"}})
                  .find("{\"A\\\"\\n\":\"\xC3\xA9\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz\"}"),
              std::string::npos);
}

TEST(AlternateSetting, PrefersTwoWayAndNeverIppOverUsb) {
    const auto setting = [](uint8_t interface, uint8_t protocol, uint8_t bulkIn = 0x81, uint8_t kind = 7) {
        return AlternateSetting{.interface = interface,
                                .interfaceClass = kind,
                                .subclass = 1,
                                .protocol = protocol,
                                .bulkIn = bulkIn,
                                .bulkOut = 1,
                                .packetSize = 512};
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
