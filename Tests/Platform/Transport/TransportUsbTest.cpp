// The USB transport library over emulated printers: what every transport does, and what only a bus can do.
#include "Tests/Platform/Transport/TransportTesting.h"
#include "Tests/Platform/Transport/UsbPorts.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

using transport::Fault;

INSTANTIATE_TEST_SUITE_P(Usb, Transport, testing::Values(UsbPorts::make));

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int rounds = 200; // slow there, and others look after the memory
#else
constexpr int rounds = 10'000;
#endif

/// What this process has in use, as the kernel counts it.
struct Usage {
    ptrdiff_t files = entries("/proc/self/fd");
    ptrdiff_t threads = entries("/proc/self/task");
    ptrdiff_t pages = 0; // resident

    Usage() {
        ptrdiff_t all = 0;
        std::ifstream("/proc/self/statm") >> all >> pages;
    }
    static ptrdiff_t entries(const char *folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    }
};

void awaitThat(const std::function<bool()> &condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(patience_ms);
    while (!condition() && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(condition());
}

void expectNoGrowth(int cycles, const std::function<void()> &cycle) {
    cycle();
    cycle();
    const Usage before;
    for (int i = 0; i < cycles; ++i) {
        cycle();
    }
    // The emulation closes its ends on a thread of its own.
    awaitThat([&] {
        const Usage now;
        return now.files <= before.files && now.threads <= before.threads;
    });
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    constexpr ptrdiff_t slack = 256; // 1 MiB
    EXPECT_LE(Usage().pages, before.pages + slack);
#endif
}

/// The threshold as one exchange reads it; empty when it fails.
Bytes readOnce() {
    void *const handle = openPrinter();
    Bytes header, data;
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    EXPECT_EQ(receive(handle, header), TL_USB_OK);
    EXPECT_EQ(receive(handle, data), TL_USB_OK);
    return data;
}

class TransportUsb : public testing::Test {
protected:
    TransportUsb() { ports.plug(sampleLaser()); }

    EmulatedUsbPrinter &printer() const { return ports.printer("SN0001"); }
    /// Closing is seen a moment after it.
    void awaitRest() const {
        awaitThat([this] { return printer().opens() == 0; });
    }
    void awaitRead() const {
        awaitThat([this] { return printer().pending() > 0; });
    }

    UsbPorts ports;
};

} // namespace

TEST_F(TransportUsb, givesThePrinterBackWhileItsHandleStaysOpen) {
    void *const handle = openPrinter();
    EXPECT_TRUE(printer().isClaimed());
    EXPECT_FALSE(printer().hasKernelDriver());
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    const auto start = std::chrono::steady_clock::now();
    awaitRest();
    EXPECT_GT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100))
        << "not at every call";
    EXPECT_FALSE(printer().isClaimed());
    EXPECT_TRUE(printer().hasKernelDriver());

    EXPECT_EQ(receiveAll(handle), "<00ACFF2100010001> <33> -5") << "the answer waited in the printer";
    EXPECT_TRUE(printer().isClaimed());
    EXPECT_EQ(tl_usb_close_device_handle(handle), TL_USB_OK);
    awaitRest();
    EXPECT_TRUE(printer().hasKernelDriver());
}

TEST_F(TransportUsb, asksForTheStatusBesideAnOpenHandle) {
    EXPECT_EQ(statusCall(), R"(0 {"printer_status":3,"selected":true,"paper_empty":false,"error":false,)"
                            R"("device_id":{"CMD":"PJL,ACL","MDL":"Sample Laser","MFG":"Zelkor"}})");
    awaitRest();
    EXPECT_TRUE(printer().hasKernelDriver());
    void *const handle = openPrinter();
    transport::VirtualPrinterState state = sampleLaser();
    state.printerStatus = 2;
    ports.plug(state);
    EXPECT_THAT(statusCall(), testing::HasSubstr("\"printer_status\":2"));
    ports.plug(sampleLaser({Fault::StatusFails}));
    EXPECT_EQ(statusCall(), "-9 untouched");
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
}

TEST_F(TransportUsb, takesALateAnswer) {
    void *const handle = openPrinter();
    printer().holdAnswers(true);
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    EXPECT_EQ(receiveAll(handle), "-5");
    std::thread late([this] {
        awaitRead();
        printer().holdAnswers(false);
    });
    Bytes header;
    EXPECT_EQ(receive(handle, header), TL_USB_OK);
    EXPECT_EQ(shown(header), "<00ACFF2100010001>");
    late.join();
}

TEST_F(TransportUsb, recoversFromAStall) {
    void *const handle = openPrinter();
    printer().stall(usbBulkOut);
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_ERROR_STALL);
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    printer().stall(usbBulkIn);
    EXPECT_EQ(receiveAll(handle), "-9");
    EXPECT_EQ(receiveAll(handle), "<00ACFF2100010001> <33> -5");
}

TEST_F(TransportUsb, endsAReadWhenItsPrinterOrItsHandleGoes) {
    for (const bool unplugs : {false, true}) {
        void *const handle = openPrinter();
        std::thread reader([&] { EXPECT_EQ(receiveAll(handle, patience_ms), unplugs ? "-2" : "-10"); });
        awaitRead();
        if (unplugs) {
            ports.unplug("SN0001");
        } else {
            EXPECT_EQ(tl_usb_close_device_handle(handle), TL_USB_OK);
        }
        reader.join();
    }
}

// As the manager does it: the handle of an exchange that went well is never closed.
TEST_F(TransportUsb, usesNoMoreAfterManyExchanges) {
    expectNoGrowth(rounds, [] { EXPECT_EQ(readOnce(), Bytes{'3'}); });
}

TEST_F(TransportUsb, usesNoMoreAfterManyPluggings) {
    expectNoGrowth(rounds / 10, [this] {
        EXPECT_EQ(countPrinters(), 1);
        EXPECT_EQ(readOnce(), Bytes{'3'});
        ports.unplug("SN0001");
        EXPECT_EQ(countPrinters(), 0);
        ports.plug(sampleLaser());
    });
}
