// The queries over the USB transport library and an emulated printer.
#include "Manager/PrinterListCollector.h"
#include "Manager/PrinterStatus.h"
#include "Manager/RecordLookup.h"
#include "Manager/TonerHint.h"
#include "Manager/ZKManager.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Platform/Transport/UsbPorts.h"

#include <gtest/gtest.h>

namespace {

transport::VirtualPrinterState l200(const std::set<transport::Fault> &faults = {}) {
    return {.manufacturer = "Zelkor",
            .product = "L200 Series",
            .serial = "SN0002",
            .vid = VENDOR_ID,
            .pid = 2,
            .threshold = 3,
            .faults = faults};
}

TonerHintReading read(const Ref<ZKUSB> &printer) {
    TonerHintReading last;
    readTonerHint(printer, [&](const TonerHintReading &reading) { last = reading; });
    return last;
}

TonerHintWriting write(const Ref<ZKUSB> &printer, std::int64_t index) {
    TonerHintWriting last = TonerHintWriting::nothing;
    writeTonerHint(printer, index, [&](TonerHintWriting writing) { last = writing; });
    return last;
}

TonerHintReading threshold(std::int32_t value) {
    return {TonerHintReading::Outcome::threshold, value};
}

} // namespace

TEST(UsbPrinters, areFoundReadWrittenAndUnplugged) {
    const LogLines log;
    UsbPorts ports;
    ports.plug(l200());
    ports.plug({.manufacturer = "Zelkor",
                .product = "Sample Laser Series",
                .serial = "SN0001",
                .vid = VENDOR_ID,
                .pid = 1,
                .threshold = 7});
    const auto manager = ZKManager::shared();
    const auto list = manager->printerList();
    manager->setCallback(printerListCollector(list));
    manager->discoverPrinter();
    ASSERT_EQ(list->count(), 2u);
    const auto printer = recordForDeviceUri(textOf("usb://Zelkor/L200%20Series?serial=SN0002"), list);
    ASSERT_NE(printer, nullptr);

    EXPECT_TRUE(readPrinterStatus(printer->URI()).isNormal());
    EXPECT_EQ(read(printer), threshold(3));
    EXPECT_EQ(write(printer, 4), TonerHintWriting::success);
    EXPECT_EQ(read(printer), threshold(5));
    EXPECT_EQ(read(recordForDeviceUri(textOf(sampleUri), list)), threshold(7)) << "the other keeps its own";

    ports.plug(l200({transport::Fault::Busy}));
    ports.unplug("SN0001");
    EXPECT_EQ(readPrinterStatus(textOf(sampleUri)).transportStatus, TL_USB_ERROR_NO_DEVICE);
    manager->discoverPrinter();
    EXPECT_EQ(list->count(), 1u);
    manager->setCallback(nullptr);
}

TEST(UsbPrinters, failAsTheirFaultsHaveIt) {
    using enum transport::Fault;
    using Outcome = TonerHintReading::Outcome;
    const LogLines log;
    UsbPorts ports;
    const struct {
        transport::Fault fault;
        Outcome reading;
        TonerHintWriting writing;
    } rows[] = {
        {Busy, Outcome::nothing, TonerHintWriting::nothing},
        {WriteFails, Outcome::nothing, TonerHintWriting::nothing},
        {StaleOutput, Outcome::threshold, TonerHintWriting::success},
        {JunkFirst, Outcome::threshold, TonerHintWriting::success},
        {ShortHeader, Outcome::rejected, TonerHintWriting::failure},
        {WrongEcho, Outcome::rejected, TonerHintWriting::failure},
        {StatusNotOne, Outcome::rejected, TonerHintWriting::failure},
        {UnplugAfterOpen, Outcome::nothing, TonerHintWriting::nothing},
        {UnplugAfterWrite, Outcome::nothing, TonerHintWriting::nothing},
        {UnplugAfterHeader, Outcome::rejected, TonerHintWriting::success},
    };
    const auto printer = recordOf("L200 Series", "SN0002");
    for (const auto &[fault, reading, writing] : rows) {
        SCOPED_TRACE(static_cast<int>(fault));
        ports.plug(l200({fault}));
        EXPECT_EQ(read(printer).outcome, reading);
        ports.plug(l200({fault}));
        EXPECT_EQ(write(printer, 4), writing);
    }
}
