// The virtual printers through the C interface, as a program linked to it sees them.
#include "Platform/Transport/virtual/VirtualPrinterState.h"
#include "Platform/Transport/zkcomtl.h"
#include "Tests/Platform/Transport/Envelopes.h"
#include "Tests/Platform/Transport/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

extern "C" int from_c_finds(int32_t vid, uint16_t pid, const char *serial, const char *product,
                            const char *manufacturer);

using envelopes::Bytes;
using testing::HasSubstr;

namespace {

const char *const sampleUri = "usb://Zelkor/Sample%20Laser?serial=SN0001";

std::string printerFile(const std::string &more = {}, const std::string &serial = "SN0001") {
    return R"({"manufacturer": "Zelkor", "product": "Sample Laser", "vid": "0x5A4B", "pid": "0x1234", "serial": ")" +
           serial + R"(", "threshold": 3, "colour": "grey")" + more + "}";
}

int32_t send(void *handle, const Bytes &request) {
    return tl_usb_data_transfer_by_handle(handle, request.data(), static_cast<uint32_t>(request.size()),
                                          10000, nullptr, nullptr, 0);
}

int32_t receive(void *handle, Bytes &transfer, int32_t capacity = 4096) {
    transfer.assign(4096, 0xEE);
    int32_t length = capacity;
    const int32_t status =
        tl_usb_data_transfer_by_handle(handle, nullptr, 0, 10000, transfer.data(), &length, 0);
    EXPECT_TRUE(status == TL_USB_OK || length == 0);
    transfer.resize(static_cast<size_t>(length));
    return status;
}

void *openPrinter(const char *uri = sampleUri) {
    void *handle = nullptr;
    EXPECT_EQ(tl_usb_get_device_handle(uri, 2, &handle), TL_USB_OK);
    return handle;
}

// Printable transfers that a header is not taken for are shown as text.
std::string shown(const Bytes &transfer) {
    if (!transfer.empty() && transfer[0] == '@') {
        return "text";
    }
    std::ostringstream stream;
    for (const uint8_t byte : transfer) {
        stream << "0123456789ABCDEF"[byte >> 4] << "0123456789ABCDEF"[byte & 15];
    }
    return "<" + stream.str() + ">";
}

// One exchange: open, drain, write, read until a read fails.
std::string exchange(const Bytes &request) {
    void *handle = nullptr;
    std::ostringstream story;
    const int32_t opened = tl_usb_get_device_handle(sampleUri, 2, &handle);
    story << "open " << opened;
    if (handle == nullptr) {
        return story.str();
    }
    Bytes transfer;
    for (const char *word = " stale "; receive(handle, transfer) == TL_USB_OK; word = " ") {
        story << word << shown(transfer);
    }
    story << " write " << send(handle, request);
    int32_t status = TL_USB_OK;
    while ((status = receive(handle, transfer)) == TL_USB_OK) {
        story << " " << shown(transfer);
    }
    story << " end " << status;
    EXPECT_EQ(tl_usb_close_device_handle(handle), TL_USB_OK);
    return story.str();
}

std::string statusCall() {
    char untouched[] = "untouched";
    char *text = untouched;
    const int32_t status = tl_usb_get_printer_info(sampleUri, 0, 2, 2000, 1, &text);
    std::string result = std::to_string(status) + " " + text;
    if (text != untouched) {
        std::free(text);
    }
    return result;
}

class TransportVirtual : public testing::Test {
protected:
    TransportVirtual() { ::setenv("ZKCOMTL_PRINTERS", folder.path().c_str(), 1); }
    ~TransportVirtual() override { ::unsetenv("ZKCOMTL_PRINTERS"); }

    TemporaryFolder folder;
};

} // namespace

TEST_F(TransportVirtual, ListsRecordsByteForByte) {
    folder.put("2.json", printerFile("", std::string(255, 's')));
    folder.put("1.json", printerFile());
    folder.put("3.json", R"({"manufacturer": "Other", "product": "P", "serial": "", "vid": 1, "pid": 2})");
    tl_usb_device_info *list = nullptr;
    int32_t count = 0;
    ASSERT_EQ(tl_usb_get_devicelist_by_vid(0x5A4B, &list, &count), TL_USB_OK);
    ASSERT_EQ(count, 2);
    std::string expected(size_t{2} * 772, '\0');
    for (size_t record = 0; record < 2; ++record) {
        const std::string serial = record == 0 ? "SN0001" : std::string(255, 's');
        expected.replace(record * 772, serial.size(), serial);
        expected.replace(record * 772 + 256, 12, "Sample Laser");
        expected.replace(record * 772 + 512, 6, "Zelkor");
        const std::array<uint16_t, 2> identifiers = {0x1234, 0x5A4B};
        std::memcpy(&expected[record * 772 + 768], identifiers.data(), 4);
    }
    EXPECT_EQ(std::string(reinterpret_cast<const char *>(list), expected.size()), expected);
    EXPECT_TRUE(from_c_finds(1, 2, "", "P", "Other"));
}

TEST_F(TransportVirtual, PluggingInAndUnpluggingIsAddingAndDeletingFiles) {
    const auto count = [] {
        tl_usb_device_info *list = std::bit_cast<tl_usb_device_info *>(uintptr_t{8});
        int32_t number = -1;
        EXPECT_EQ(tl_usb_get_devicelist_by_vid(0x5A4B, &list, &number), TL_USB_OK);
        EXPECT_EQ(list == nullptr, number == 0);
        return number;
    };
    EXPECT_EQ(count(), 0);
    folder.put("1.json", printerFile());
    EXPECT_EQ(count(), 1);
    void *const handle = openPrinter();
    std::filesystem::remove(folder.file("1.json"));
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_ERROR_NO_DEVICE);
    folder.put("1.json", printerFile());
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_ERROR_INVALID) << "plugged in anew";
    ::setenv("ZKCOMTL_PRINTERS", "", 1);
    EXPECT_EQ(count(), 0);
    ::unsetenv("ZKCOMTL_PRINTERS");
    EXPECT_EQ(count(), 0);
}

TEST_F(TransportVirtual, ReadsWritesAndReadsBack) {
    folder.put("1.json", printerFile());
    folder.put("2.json", printerFile("", "SN0002"));
    EXPECT_EQ(exchange(envelopes::readThreshold), "open 0 write 0 <00ACFF2100010001> <33> end -5");
    EXPECT_EQ(exchange(envelopes::writeThreshold5), "open 0 write 0 <00ACFF2000010000> end -5");
    EXPECT_EQ(exchange(envelopes::readThreshold), "open 0 write 0 <00ACFF2100010001> <35> end -5");
    EXPECT_THAT(folder.get("1.json"),
                testing::AllOf(HasSubstr("\"threshold\": 5"), HasSubstr("\"colour\": \"grey\"")));
    EXPECT_EQ(folder.get("2.json"), printerFile("", "SN0002"));

    void *const handle = openPrinter();
    Bytes header(8);
    int32_t length = 8;
    EXPECT_EQ(tl_usb_data_transfer_by_handle(handle, envelopes::readThreshold.data(), 105, 10000,
                                             header.data(), &length, 0),
              TL_USB_OK);
    EXPECT_EQ(length, 8);
}

TEST_F(TransportVirtual, ShowsEveryFault) {
    const struct {
        std::set<std::string> faults;
        const char *story;
        const char *status = "0 {\"printer_status\": 3}";
    } cases[] = {
        {{"cannot_open"}, "open -3"},
        {{"busy"}, "open -4"},
        {{"write_fails"}, "open 0 write -6 end -5"},
        {{"silent"}, "open 0 write 0 end -5"},
        {{"stale_output"},
         "open 0 stale text <00ACFF2100010001> <39> write 0 <00ACFF2100010001> <33> end -5"},
        {{"junk_first"}, "open 0 write 0 text text <00ACFF2100010001> <33> end -5"},
        {{"short_header"}, "open 0 write 0 <00ACFF21> <33> end -5"},
        {{"wrong_length"}, "open 0 write 0 <00ACFF2100010007> <33> end -5"},
        {{"wrong_echo"}, "open 0 write 0 <00ACFF2000010001> <33> end -5"},
        {{"status_not_one"}, "open 0 write 0 <00ACFF2100020001> <33> end -5"},
        {{"empty_data"}, "open 0 write 0 <00ACFF2100010001> <> end -5"},
        {{"unplug_after_open"}, "open 0 write -2 end -2"},
        {{"unplug_after_write"}, "open 0 write 0 end -2"},
        {{"unplug_after_header"}, "open 0 write 0 <00ACFF2100010001> end -2"},
        {{"stale_output", "junk_first", "wrong_echo", "status_not_one", "unplug_after_header"},
         "open 0 stale text <00ACFF2100010001> <39> write 0 text text <00ACFF2000020001> end -2"},
        {{"status_fails"}, "open 0 write 0 <00ACFF2100010001> <33> end -5", "-6 untouched"},
        {{"status_empty"}, "open 0 write 0 <00ACFF2100010001> <33> end -5", "0 "},
        {{"status_not_json"}, "open 0 write 0 <00ACFF2100010001> <33> end -5", "0 READY"},
        {{"status_not_object"}, "open 0 write 0 <00ACFF2100010001> <33> end -5", "0 [3]"},
    };
    std::set<std::string> shownFaults;
    for (const auto &[faults, story, status] : cases) {
        std::string list;
        for (const std::string &fault : faults) {
            list += (list.empty() ? "\"" : ", \"") + fault + "\"";
        }
        SCOPED_TRACE(list);
        folder.put("1.json", printerFile(", \"faults\": [" + list + "]"));
        EXPECT_EQ(exchange(envelopes::readThreshold), story);
        EXPECT_EQ(statusCall(), status);
        shownFaults.insert(faults.begin(), faults.end());
    }
    EXPECT_EQ(shownFaults.size(), transport::faultNames.size()) << "a fault without a case";

    folder.put("1.json", printerFile(R"(, "printer_status": 7)"));
    EXPECT_EQ(statusCall(), "0 {\"printer_status\": 7}");
    folder.put("1.json", printerFile(R"(, "status_text": "{\"printer_status\":\"3\"}")"));
    EXPECT_EQ(statusCall(), "0 {\"printer_status\":\"3\"}");
    folder.put("1.json", "{}");
    EXPECT_EQ(statusCall(), "-2 untouched");
}

TEST_F(TransportVirtual, RefusesUnusableArguments) {
    folder.put("1.json", printerFile());
    void *handle = openPrinter();
    Bytes buffer(16);
    const auto transfer = [&](const uint8_t *out, uint32_t outLength, uint8_t *in, int32_t *inLength) {
        return tl_usb_data_transfer_by_handle(handle, out, outLength, 100, in, inLength, 0);
    };
    for (const int32_t capacity : {0, -1, INT32_MIN}) {
        int32_t length = capacity;
        EXPECT_EQ(transfer(nullptr, 0, buffer.data(), &length), TL_USB_ERROR_INVALID);
        EXPECT_EQ(length, 0);
    }
    int32_t length = 16;
    EXPECT_EQ(transfer(nullptr, 0, nullptr, &length), TL_USB_ERROR_INVALID);
    EXPECT_EQ(transfer(nullptr, 0, buffer.data(), nullptr), TL_USB_ERROR_INVALID);
    EXPECT_EQ(transfer(nullptr, 9, nullptr, nullptr), TL_USB_ERROR_INVALID);

    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    Bytes header;
    EXPECT_EQ(receive(handle, header, 7), TL_USB_ERROR_OVERFLOW);
    EXPECT_EQ(receive(handle, header), TL_USB_OK);
    EXPECT_EQ(header, Bytes{'3'}) << "the rest of a cut transfer is lost";

    char *text = nullptr;
    tl_usb_device_info *list = nullptr;
    EXPECT_EQ(tl_usb_get_device_handle(nullptr, 2, &handle), TL_USB_ERROR_INVALID);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(tl_usb_get_device_handle(sampleUri, 2, nullptr), TL_USB_ERROR_INVALID);
    EXPECT_EQ(tl_usb_get_device_handle("usb://Zelkor/Sample%20Laser?serial=SN9", 2, &handle),
              TL_USB_ERROR_NO_DEVICE);
    EXPECT_EQ(tl_usb_get_printer_info(nullptr, 0, 2, 2000, 1, &text), TL_USB_ERROR_INVALID);
    EXPECT_EQ(tl_usb_get_printer_info(sampleUri, 0, 2, 2000, 1, nullptr), TL_USB_ERROR_INVALID);
    EXPECT_EQ(tl_usb_get_devicelist_by_vid(0x5A4B, &list, nullptr), TL_USB_ERROR_INVALID);
    EXPECT_EQ(tl_usb_get_devicelist_by_vid(0x5A4B, nullptr, &length), TL_USB_ERROR_INVALID);
}

TEST_F(TransportVirtual, HandlesThatAreNotOpenDoNoHarm) {
    folder.put("1.json", printerFile());
    void *const closed = openPrinter();
    EXPECT_EQ(tl_usb_close_device_handle(closed), TL_USB_OK);
    int onStack = 0;
    void *const garbage[] = {nullptr, closed, &onStack, std::bit_cast<void *>(UINTPTR_MAX)};
    for (void *const handle : garbage) {
        Bytes transfer;
        EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_ERROR_INVALID);
        EXPECT_EQ(receive(handle, transfer), TL_USB_ERROR_INVALID);
        EXPECT_EQ(tl_usb_close_device_handle(handle), TL_USB_ERROR_INVALID);
    }
}

TEST_F(TransportVirtual, KeepsOneOpenHandleAPrinter) {
    folder.put("1.json", printerFile());
    folder.put("2.json", printerFile("", "SN0002"));
    void *const other = openPrinter("usb://Zelkor/Sample%20Laser?serial=SN0002");
    std::vector<void *> handles(10'000);
    std::ranges::generate(handles, [] { return openPrinter(); });
    void *const last = handles.back();
    handles.pop_back();
    for (void *const handle : handles) {
        ASSERT_EQ(tl_usb_close_device_handle(handle), TL_USB_ERROR_INVALID);
    }
    EXPECT_EQ(send(last, envelopes::readThreshold), TL_USB_OK);
    EXPECT_EQ(send(other, envelopes::readThreshold), TL_USB_OK);
}

TEST_F(TransportVirtual, ServesThreadsAtOnce) {
    std::atomic<int> good = 0;
    std::vector<std::thread> threads;
    for (const std::string serial : {"A", "B", "C"}) {
        folder.put(serial + ".json", printerFile("", serial));
        threads.emplace_back([serial, &good] {
            for (int i = 0; i < 50; ++i) {
                void *const handle = openPrinter(("usb://Zelkor/Sample%20Laser?serial=" + serial).c_str());
                Bytes transfer;
                good += send(handle, envelopes::writeThreshold5) == TL_USB_OK &&
                        receive(handle, transfer) == TL_USB_OK && shown(transfer) == "<00ACFF2000010000>";
                tl_usb_device_info *list = nullptr;
                int32_t count = 0;
                tl_usb_get_devicelist_by_vid(0x5A4B, &list, &count);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(good, 150);
}
