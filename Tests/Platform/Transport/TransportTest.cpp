// What programs see of a transport library; compiled into the tests of each, which must not be told apart.
#include "Tests/Platform/Transport/TransportTesting.h"
#include "Tests/Support/OnThreads.h"

#include <bit>
#include <cstring>

using transport::Fault;

namespace {

/// One exchange: open, drain, write, read until a read fails.
std::string storyOf(const PrinterPorts &ports, const Bytes &request) {
    void *handle = nullptr;
    std::int32_t opened = TL_USB_OK;
    {
        const auto user = ports.ordinaryUser();
        opened = tl_usb_get_device_handle(uriOf("SN0001").c_str(), 2, &handle);
    }
    std::string story = "open " + std::to_string(opened);
    if (handle == nullptr)
        return story;
    story += " drain " + receiveAll(handle);
    story += " write " + std::to_string(send(handle, request));
    story += " read " + receiveAll(handle);
    return story + " close " + std::to_string(tl_usb_close_device_handle(handle));
}

} // namespace

TEST_P(Transport, listsRecordsByteForByte) {
    ports->plug(sampleLaser());
    ports->plug(sampleLaser({}, std::string(255, 's')));
    ports->plug({.manufacturer = "Other", .product = "P", .serial = "", .vid = 1, .pid = 2});
    tl_usb_device_info *list = nullptr;
    std::int32_t count = 0;
    ASSERT_EQ(tl_usb_get_devicelist_by_vid(0x5A4B, &list, &count), TL_USB_OK);
    ASSERT_EQ(count, 2);
    tl_usb_device_info expected[] = {{"SN0001", "Sample Laser", "Zelkor", 0x1234, 0x5A4B},
                                     {"", "Sample Laser", "Zelkor", 0x1234, 0x5A4B}};
    std::memset(expected[1].serial, 's', 255);
    EXPECT_EQ(std::memcmp(list, expected, sizeof expected), 0) << "to the last byte";
    EXPECT_EQ(countPrinters(1), 1);
}

TEST_P(Transport, seesPrintersComeAndGo) {
    EXPECT_EQ(countPrinters(), 0);
    ports->plug(sampleLaser());
    EXPECT_EQ(countPrinters(), 1);
    void *const handle = openPrinter();
    ports->unplug("SN0001");
    EXPECT_EQ(countPrinters(), 0);
    EXPECT_EQ(statusCall(), "-2 untouched");
    ports->plug(sampleLaser());
    EXPECT_EQ(countPrinters(), 1);
    EXPECT_EQ(send(openPrinter(), envelopes::readThreshold), TL_USB_OK);
    EXPECT_EQ(tl_usb_close_device_handle(handle), TL_USB_ERROR_INVALID) << "of the printer that was there";
}

TEST_P(Transport, readsWritesAndReadsBack) {
    ports->plug(sampleLaser());
    ports->plug(sampleLaser({}, "SN0002"));
    const auto one = [&](const Bytes &request) { return storyOf(*ports, request); };
    EXPECT_EQ(one(envelopes::writeThreshold5), "open 0 drain -5 write 0 read <00acff2000010000> -5 close 0");
    EXPECT_EQ(one(envelopes::readThreshold),
              "open 0 drain -5 write 0 read <00acff2100010001> <35> -5 close 0");
    EXPECT_EQ(ports->threshold("SN0001"), 5);
    EXPECT_EQ(ports->threshold("SN0002"), 3);

    void *const handle = openPrinter();
    Bytes header(8);
    std::int32_t length = 8;
    EXPECT_EQ(tl_usb_data_transfer_by_handle(handle, envelopes::readThreshold.data(), 105, patience_ms,
                                             header.data(), &length, 0),
              TL_USB_OK);
    EXPECT_EQ(length, 8);
}

TEST_P(Transport, showsEveryFaultOfAnExchange) {
    using enum Fault;
    const struct {
        std::set<Fault> faults;
        const char *story;
    } cases[] = {
        {{CannotOpen}, "open -3"},
        {{Busy}, "open -4"},
        {{WriteFails}, "open 0 drain -5 write -6 read -5 close 0"},
        {{Silent}, "open 0 drain -5 write 0 read -5 close 0"},
        {{StaleOutput},
         "open 0 drain text <00acff2100010001> <39> -5 write 0 read <00acff2100010001> <33> -5 close 0"},
        {{JunkFirst}, "open 0 drain -5 write 0 read text text <00acff2100010001> <33> -5 close 0"},
        {{ShortHeader}, "open 0 drain -5 write 0 read <00acff21> <33> -5 close 0"},
        {{WrongLength}, "open 0 drain -5 write 0 read <00acff2100010007> <33> -5 close 0"},
        {{WrongEcho}, "open 0 drain -5 write 0 read <00acff2000010001> <33> -5 close 0"},
        {{StatusNotOne}, "open 0 drain -5 write 0 read <00acff2100020001> <33> -5 close 0"},
        {{EmptyData}, "open 0 drain -5 write 0 read <00acff2100010001> <> -5 close 0"},
        {{UnplugAfterOpen}, "open 0 drain -2 write -1 read -1 close -1"},
        {{UnplugAfterWrite}, "open 0 drain -5 write 0 read -2 close -1"},
        {{UnplugAfterHeader}, "open 0 drain -5 write 0 read <00acff2100010001> -2 close -1"},
        {{StaleOutput, JunkFirst, WrongEcho, StatusNotOne, UnplugAfterHeader},
         "open 0 drain text <00acff2100010001> <39> -5 write 0 read text text <00acff2000020001> -2 close "
         "-1"},
        {{}, "open 0 drain -5 write 0 read <00acff2100010001> <33> -5 close 0"},
    };
    // Seen elsewhere: what does not end, what is about the status, and what becomes of a threshold.
    std::set<Fault> shownFaults = {EndlessText,   EndlessReplies,  StatusFails,    StatusEmpty,
                                   StatusNotJson, StatusNotObject, KeepsThreshold, Overwritten};
    for (const auto &[faults, story] : cases) {
        ports->plug(sampleLaser(faults));
        std::string expected = story;
        if (const std::size_t empty = expected.find(" <>"); empty != std::string::npos && ports->isBus())
            expected.erase(empty, 3); // an empty packet is no transfer there
        EXPECT_EQ(storyOf(*ports, envelopes::readThreshold), expected);
        shownFaults.insert(faults.begin(), faults.end());
    }
    EXPECT_EQ(shownFaults.size(), transport::faultNames.size()) << "a fault without a case";
}

TEST_P(Transport, doesNotReadForEver) {
    using enum Fault;
    const struct {
        std::set<Fault> faults;
        std::int32_t drained, answered; // how the reads end
    } cases[] = {{{EndlessText, Silent}, TL_USB_ERROR_ENDLESS, TL_USB_ERROR_ENDLESS},
                 {{EndlessReplies, WrongLength, JunkFirst}, TL_USB_ERROR_TIMEOUT, TL_USB_ERROR_ENDLESS},
                 {{EndlessReplies, StaleOutput}, TL_USB_ERROR_ENDLESS, TL_USB_ERROR_ENDLESS}};
    for (const auto &[faults, drained, answered] : cases) {
        ports->plug(sampleLaser(faults));
        void *const handle = openPrinter();
        Bytes transfer;
        const auto lastStatus = [&] {
            int reads = 0;
            std::int32_t status = TL_USB_OK;
            while ((status = receive(handle, transfer, silence_ms)) == TL_USB_OK)
                ++reads;
            EXPECT_LE(reads, 1000);
            return status;
        };
        EXPECT_EQ(lastStatus(), drained);
        EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
        EXPECT_EQ(receive(handle, transfer), TL_USB_OK) << "the write gave leave to read again";
        EXPECT_EQ(lastStatus(), answered);
        EXPECT_EQ(receive(handle, transfer), TL_USB_ERROR_ENDLESS);
    }
}

TEST_P(Transport, toldOfAnUnpluggedPrinterOnce) {
    const char *const stories[] = {"-2 -1 -1 -1 -1 -1", "0 -2 -1 -1 -1 -1", "0 -5 -2 -1 -1 -1",
                                   "0 -5 0 -2 -1 -1",   "0 -5 0 0 -2 -1",   "0 -5 0 0 0 0"};
    for (std::size_t unplugged = 0; unplugged < std::size(stories); ++unplugged) {
        void *handle = nullptr;
        Bytes transfer;
        const std::function<std::int32_t()> calls[] = {
            [&] { return tl_usb_get_device_handle(uriOf("SN0001").c_str(), 2, &handle); },
            [&] { return receive(handle, transfer, silence_ms); },
            [&] { return send(handle, envelopes::readThreshold); },
            [&] { return receive(handle, transfer); },
            [&] { return receive(handle, transfer); },
            [&] { return tl_usb_close_device_handle(handle); },
        };
        ports->plug(sampleLaser());
        std::string story;
        for (std::size_t call = 0; call < std::size(calls); ++call) {
            if (call == unplugged)
                ports->unplug("SN0001");
            story += (call > 0 ? " " : "") + std::to_string(calls[call]());
        }
        EXPECT_EQ(story, stories[unplugged]) << "unplugged before call " << unplugged;
    }
}

TEST_P(Transport, refusesUnusableArguments) {
    ports->plug(sampleLaser());
    void *handle = openPrinter();
    Bytes buffer(16);
    const auto isRefused = [&](std::uint32_t outLength, std::uint8_t *in, std::int32_t *inLength) {
        return tl_usb_data_transfer_by_handle(handle, nullptr, outLength, 100, in, inLength, 0) ==
               TL_USB_ERROR_INVALID;
    };
    std::int32_t length = 16;
    EXPECT_TRUE(isRefused(0, nullptr, &length) && isRefused(0, buffer.data(), nullptr));
    EXPECT_TRUE(isRefused(9, nullptr, nullptr));
    for (const std::int32_t capacity : {0, -1, INT32_MIN}) {
        length = capacity;
        EXPECT_TRUE(isRefused(0, buffer.data(), &length));
        EXPECT_EQ(length, 0);
    }

    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    Bytes header;
    EXPECT_EQ(receive(handle, header, patience_ms, 7), TL_USB_ERROR_OVERFLOW);
    EXPECT_EQ(receive(handle, header), TL_USB_OK);
    EXPECT_EQ(header, Bytes{'3'}) << "the rest of a cut transfer is lost";

    char *text = nullptr;
    tl_usb_device_info *list = nullptr;
    EXPECT_EQ(tl_usb_get_device_handle(nullptr, 2, &handle), TL_USB_ERROR_INVALID);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(tl_usb_get_device_handle(uriOf("SN0001").c_str(), 2, nullptr), TL_USB_ERROR_INVALID);
    openPrinter("SN9", TL_USB_ERROR_NO_DEVICE);
    EXPECT_EQ(tl_usb_get_printer_info(nullptr, 0, 2, 2000, 1, &text), TL_USB_ERROR_INVALID);
    EXPECT_EQ(tl_usb_get_printer_info(uriOf("SN0001").c_str(), 0, 2, 2000, 1, nullptr), TL_USB_ERROR_INVALID);
    EXPECT_EQ(tl_usb_get_devicelist_by_vid(0x5A4B, &list, nullptr), TL_USB_ERROR_INVALID);
    EXPECT_EQ(tl_usb_get_devicelist_by_vid(0x5A4B, nullptr, &length), TL_USB_ERROR_INVALID);
}

TEST_P(Transport, keepsOneOpenHandleAPrinterAndTakesNothingElseForOne) {
    ports->plug(sampleLaser());
    ports->plug(sampleLaser({}, "SN0002"));
    void *const other = openPrinter("SN0002");
    void *const retired = openPrinter();
    void *const last = openPrinter();
    for (void *const handle : {std::bit_cast<void *>(UINTPTR_MAX), static_cast<void *>(this), retired}) {
        Bytes transfer;
        EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_ERROR_INVALID);
        EXPECT_EQ(receive(handle, transfer), TL_USB_ERROR_INVALID);
        EXPECT_EQ(tl_usb_close_device_handle(handle), TL_USB_ERROR_INVALID);
    }
    EXPECT_EQ(tl_usb_close_device_handle(nullptr), TL_USB_ERROR_INVALID);
    EXPECT_EQ(send(last, envelopes::readThreshold), TL_USB_OK);
    EXPECT_EQ(send(other, envelopes::readThreshold), TL_USB_OK);
    EXPECT_EQ(tl_usb_close_device_handle(last), TL_USB_OK);
    EXPECT_EQ(tl_usb_close_device_handle(last), TL_USB_ERROR_INVALID);
}

TEST_P(Transport, servesThreadsAtOnce) {
    constexpr int threads = 3;
    for (int thread = 0; thread < threads; ++thread)
        ports->plug(sampleLaser({}, std::to_string(thread)));
    dispatch::onThreads(threads, [](int thread) {
        for (int i = 0; i < 50; ++i) {
            void *const handle = openPrinter(std::to_string(thread));
            Bytes transfer;
            EXPECT_EQ(send(handle, envelopes::writeThreshold5), TL_USB_OK);
            EXPECT_EQ(receive(handle, transfer), TL_USB_OK);
            EXPECT_EQ(shown(transfer), "<00acff2000010000>");
            countPrinters();
        }
    });
}
