// The emulated printer as plain libusb sees it: an exchange, a printer pulled out, the claim.
#include "Tests/Platform/Transport/Envelopes.h"
#include "Tests/Support/UsbEmulation/UsbTestbed.h"

#include <gtest/gtest.h>
#include <libusb.h>
#include <memory>
#include <thread>

using envelopes::Bytes;

namespace {

constexpr unsigned patience_ms = 10'000;
constexpr unsigned silence_ms = 5;

class UsbEmulation : public testing::Test {
protected:
    UsbEmulation() {
        libusb_init(&context);
        device = libusb_open_device_with_vid_pid(context, 0x5A4B, 2);
        libusb_set_auto_detach_kernel_driver(device, 1);
    }
    ~UsbEmulation() override {
        libusb_close(device);
        libusb_exit(context);
    }

    int transfer(std::uint8_t endpoint, Bytes &bytes, unsigned timeout_ms) const {
        int length = 0;
        const int status = libusb_bulk_transfer(device, endpoint, bytes.data(),
                                                static_cast<int>(bytes.size()), &length, timeout_ms);
        bytes.resize(static_cast<size_t>(length));
        return status;
    }
    int write(Bytes request = envelopes::readThreshold) const {
        return transfer(usbBulkOut, request, patience_ms);
    }
    Bytes read(int expected, unsigned timeout_ms = patience_ms, size_t capacity = 512) const {
        Bytes bytes(capacity);
        EXPECT_EQ(transfer(usbBulkIn, bytes, timeout_ms), expected);
        return bytes;
    }

    UsbTestbed &ports = UsbTestbed::shared();
    const std::shared_ptr<EmulatedUsbPrinter> printer = ports.plug({.manufacturer = "Zelkor",
                                                                    .product = "L200",
                                                                    .serial = "SN0002",
                                                                    .vid = 0x5A4B,
                                                                    .pid = 2,
                                                                    .threshold = 3});
    libusb_context *context = nullptr;
    libusb_device_handle *device = nullptr;
};

} // namespace

TEST_F(UsbEmulation, answersLibusb) {
    ASSERT_NE(device, nullptr);
    EXPECT_EQ(write(), LIBUSB_ERROR_IO) << "not claimed yet";
    ASSERT_EQ(libusb_claim_interface(device, usbPrinterInterface), 0);
    EXPECT_FALSE(printer->hasKernelDriver());
    EXPECT_EQ(read(LIBUSB_ERROR_TIMEOUT, silence_ms), Bytes{});
    EXPECT_EQ(write(), 0);
    EXPECT_EQ(read(0), (Bytes{0, 0xAC, 0xFF, 0x21, 0, 1, 0, 1}));
    EXPECT_EQ(read(0), Bytes{'3'});
    EXPECT_EQ(write(envelopes::writeThreshold5), 0);
    EXPECT_EQ(printer->state().threshold, 5);
    EXPECT_EQ(read(LIBUSB_ERROR_OVERFLOW, patience_ms, 4), (Bytes{0, 0xAC, 0xFF, 0x20}));

    printer->stall(usbBulkIn);
    EXPECT_EQ(read(LIBUSB_ERROR_PIPE), Bytes{});
    EXPECT_EQ(libusb_clear_halt(device, usbBulkIn), 0);
    printer->holdAnswers(true);
    EXPECT_EQ(write(), 0);
    EXPECT_EQ(read(LIBUSB_ERROR_TIMEOUT, silence_ms), Bytes{});
    printer->holdAnswers(false);
    EXPECT_EQ(read(0).size(), 8u) << "late, but not lost";

    libusb_device_handle *second = nullptr;
    ASSERT_EQ(libusb_open(libusb_get_device(device), &second), 0);
    EXPECT_EQ(printer->opens(), 2u);
    EXPECT_EQ(libusb_claim_interface(second, usbPrinterInterface), LIBUSB_ERROR_BUSY);
    libusb_close(second);
    EXPECT_EQ(libusb_release_interface(device, usbPrinterInterface), 0);
    EXPECT_TRUE(printer->hasKernelDriver());
    ports.unplug(printer);
    EXPECT_EQ(libusb_claim_interface(device, usbPrinterInterface), LIBUSB_ERROR_NO_DEVICE);
    EXPECT_EQ(libusb_open_device_with_vid_pid(context, 0x5A4B, 2), nullptr);
}

TEST_F(UsbEmulation, endsWhatIsPendingWhenPulledOut) {
    ASSERT_EQ(libusb_claim_interface(device, usbPrinterInterface), 0);
    std::thread reader([&] { read(LIBUSB_ERROR_NO_DEVICE); });
    while (printer->pending() == 0) {
        std::this_thread::yield();
    }
    ports.unplug(printer);
    reader.join();
}
