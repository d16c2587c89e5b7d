// The queries over the virtual transport library: every fault has its outcome.
#include "Manager/PrinterListCollector.h"
#include "Manager/PrinterStatus.h"
#include "Manager/RecordLookup.h"
#include "Manager/TonerHint.h"
#include "Manager/ZKManager.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Platform/Transport/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

using Readings = std::vector<TonerHintReading>;
using Writings = std::vector<TonerHintWriting>;

const TonerHintReading noReading = {TonerHintReading::Outcome::nothing};
const TonerHintReading rejected = {TonerHintReading::Outcome::rejected};

TonerHintReading threshold(std::int32_t value) {
    return {TonerHintReading::Outcome::threshold, value};
}

class VirtualPrinters : public testing::Test {
protected:
    VirtualPrinters() { ::setenv("ZKCOMTL_PRINTERS", folder.path().c_str(), 1); }

    void plug(const std::string &serial, const std::string &product, const std::string &faults = "") {
        folder.put(serial + ".json",
                   R"({"manufacturer": "Zelkor", "product": ")" + product + R"(", "serial": ")" + serial +
                       R"(", "vid": "0x5A4B", "pid": 1, "threshold": 3, "faults": [)" + faults + "]}");
    }

    static Readings read(const Ref<ZKUSB> &printer) {
        Readings readings;
        readTonerHint(printer, [&](const TonerHintReading &reading) { readings.push_back(reading); });
        return readings;
    }

    static Writings write(const Ref<ZKUSB> &printer, std::int64_t index) {
        Writings writings;
        writeTonerHint(printer, index, [&](TonerHintWriting writing) { writings.push_back(writing); });
        return writings;
    }

    const LogLines log;
    const TemporaryFolder folder;
};

} // namespace

TEST_F(VirtualPrinters, areFoundReadWrittenAndUnplugged) {
    const auto manager = ZKManager::shared();
    const auto list = manager->printerList();
    manager->setCallback(printerListCollector(list));
    plug("SN0001", "Sample Laser Series");
    plug("SN0002", "L200 Series");
    manager->discoverPrinter();
    ASSERT_EQ(list->count(), 2u);

    const auto printer = recordForDeviceUri(textOf("usb://Zelkor/L200%20Series?serial=SN0002"), list);
    ASSERT_NE(printer, nullptr);
    EXPECT_EQ(utf8(printer->serialNumber()), "SN0002");
    EXPECT_TRUE(readPrinterStatus(printer->URI()).isNormal());
    EXPECT_EQ(read(printer), Readings{threshold(3)});
    for (const auto &[index, value] : {std::pair(9, 10), {0, 0}, {1, 2}, {8, 9}}) {
        EXPECT_EQ(write(printer, index), Writings{TonerHintWriting::success});
        EXPECT_EQ(read(printer), Readings{threshold(value)});
    }
    const auto other = recordForDeviceUri(textOf(sampleUri), list);
    EXPECT_EQ(read(other), Readings{threshold(3)}) << "the other printer keeps its own";

    std::filesystem::remove(folder.file("SN0002.json"));
    EXPECT_EQ(read(printer), Readings{noReading});
    EXPECT_EQ(readPrinterStatus(printer->URI()).transportStatus, -2);
    manager->discoverPrinter();
    EXPECT_EQ(list->allObjects().size(), 1u);
    manager->setCallback(nullptr);
}

TEST_F(VirtualPrinters, everyFaultHasItsOutcome) {
    using enum TonerHintWriting;
    const struct {
        std::string fault;
        Readings read;
        Writings write;
        Readings readBack; // once the fault is gone: what did the write change?
    } rows[] = {
        {"", {threshold(3)}, {success}, {threshold(5)}},
        {"cannot_open", {noReading}, {nothing}, {threshold(3)}},
        {"busy", {noReading}, {nothing}, {threshold(3)}},
        {"write_fails", {noReading}, {nothing}, {threshold(3)}},
        {"silent", {noReading}, {nothing}, {threshold(3)}},
        {"stale_output", {threshold(3)}, {success}, {threshold(5)}},
        {"junk_first", {threshold(3)}, {success}, {threshold(5)}},
        {"short_header", {rejected}, {failure}, {threshold(5)}},
        {"wrong_length", {threshold(3), noReading}, {success}, {threshold(5)}},
        {"wrong_echo", {rejected}, {failure}, {threshold(5)}},
        {"status_not_one", {rejected}, {failure}, {threshold(5)}},
        {"empty_data", {rejected}, {success}, {threshold(5)}},
        {"unplug_after_open", {noReading}, {nothing}, {threshold(3)}},
        {"unplug_after_write", {noReading}, {nothing}, {threshold(5)}},
        {"unplug_after_header", {rejected}, {success}, {threshold(5)}},
    };
    const auto printer = sampleRecord();
    for (const auto &[fault, readings, writings, readBack] : rows) {
        SCOPED_TRACE(fault);
        plug("SN0001", "Sample Laser Series", fault.empty() ? "" : '"' + fault + '"');
        EXPECT_EQ(read(printer), readings);
        EXPECT_EQ(write(printer, 4), writings);
        std::string text = folder.get("SN0001.json");
        if (!fault.empty())
            text.erase(text.find('"' + fault + '"'), fault.size() + 2);
        folder.put("SN0001.json", text);
        EXPECT_EQ(read(printer), readBack);
    }
}

TEST_F(VirtualPrinters, everyStatusFaultHasItsOutcome) {
    using Outcome = PrinterStatus::Outcome;
    const struct {
        const char *fault;
        Outcome outcome;
        std::int32_t transportStatus;
    } rows[] = {
        {R"("busy")", Outcome::normal, 0},
        {R"("status_fails")", Outcome::noAnswer, -6},
        {R"("status_empty")", Outcome::unreadable, 0},
        {R"("status_not_json")", Outcome::unreadable, 0},
        {R"("status_not_object")", Outcome::notNormal, 0},
    };
    for (const auto &[fault, outcome, transportStatus] : rows) {
        plug("SN0001", "Sample Laser Series", fault);
        const PrinterStatus status = readPrinterStatus(textOf(sampleUri));
        EXPECT_EQ(status.outcome, outcome) << fault;
        EXPECT_EQ(status.transportStatus, transportStatus) << fault;
    }
}
