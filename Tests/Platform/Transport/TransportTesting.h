// What the tests of the transport libraries share: the C interface in short, and printers to plug in.
#pragma once

#include "Platform/Transport/zkcomtl.h"
#include "Tests/Platform/Transport/PrinterPorts.h"
#include "Tests/Support/Envelopes.h"

constexpr std::int32_t patience_ms = 10'000; // for what comes
constexpr std::int32_t silence_ms = 20;      // for what does not: what is there is never late

inline transport::VirtualPrinterState sampleLaser(const std::set<transport::Fault> &faults = {},
                                                  const std::string &serial = "SN0001") {
    return {.manufacturer = "Zelkor",
            .product = "Sample Laser",
            .serial = serial,
            .vid = 0x5A4B,
            .pid = 0x1234,
            .threshold = 3,
            .faults = faults};
}

inline std::string uriOf(const std::string &serial) {
    return "usb://Zelkor/Sample%20Laser?serial=" + serial;
}

inline void *openPrinter(const std::string &serial = "SN0001", std::int32_t expected = TL_USB_OK) {
    void *handle = nullptr;
    EXPECT_EQ(tl_usb_get_device_handle(uriOf(serial).c_str(), 2, &handle), expected);
    EXPECT_EQ(handle == nullptr, expected != TL_USB_OK);
    return handle;
}

inline std::int32_t send(void *handle, const Bytes &request) {
    return tl_usb_data_transfer_by_handle(handle, request.data(), static_cast<std::uint32_t>(request.size()),
                                          patience_ms, nullptr, nullptr, 0);
}

inline std::int32_t receive(void *handle, Bytes &transfer, std::int32_t timeout_ms = patience_ms,
                            std::int32_t capacity = 4096) {
    transfer.assign(4096, 0xEE);
    std::int32_t length = capacity;
    const std::int32_t status =
        tl_usb_data_transfer_by_handle(handle, nullptr, 0, timeout_ms, transfer.data(), &length, 0);
    EXPECT_TRUE(status == TL_USB_OK || length == 0);
    transfer.resize(static_cast<std::size_t>(length));
    return status;
}

/// Printable transfers that a header is not taken for are shown as text.
inline std::string shown(const Bytes &transfer) {
    return !transfer.empty() && transfer[0] == '@' ? "text" : hex(transfer);
}

/// Everything that comes until a read fails, and how that failed.
inline std::string receiveAll(void *handle, std::int32_t timeout_ms = silence_ms) {
    std::string story;
    Bytes transfer;
    std::int32_t status = TL_USB_OK;
    while ((status = receive(handle, transfer, timeout_ms)) == TL_USB_OK)
        story += shown(transfer) + " ";
    return story + std::to_string(status);
}

inline std::string statusCall(const std::string &serial = "SN0001") {
    char untouched[] = "untouched";
    char *text = untouched;
    const std::int32_t status = tl_usb_get_printer_info(uriOf(serial).c_str(), 0, 2, patience_ms, 1, &text);
    std::string result = std::to_string(status) + " " + text;
    if (text != untouched)
        std::free(text);
    return result;
}

inline std::int32_t countPrinters(std::int32_t vid = 0x5A4B) {
    tl_usb_device_info *list = nullptr;
    std::int32_t number = -1;
    EXPECT_EQ(tl_usb_get_devicelist_by_vid(vid, &list, &number), TL_USB_OK);
    EXPECT_EQ(list == nullptr, number == 0);
    return number;
}

/// What every transport library does alike; instantiated for each.
class Transport : public testing::TestWithParam<PrinterPortsFactory> {
protected:
    const std::unique_ptr<PrinterPorts> ports = GetParam()();
};
