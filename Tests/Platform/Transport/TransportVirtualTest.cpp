// The virtual transport library: what every transport does, and the status texts that only files can have.
#include "Tests/Platform/Transport/FolderPorts.h"
#include "Tests/Platform/Transport/TransportTesting.h"

#include <gtest/gtest.h>

using transport::Fault;

INSTANTIATE_TEST_SUITE_P(Virtual, Transport, testing::Values(FolderPorts::make));

TEST(TransportVirtual, TakesItsPrintersFromAFolderOrHasNone) {
    FolderPorts ports;
    ports.plug(sampleLaser());
    EXPECT_EQ(countPrinters(), 1);
    ::setenv("ZKCOMTL_PRINTERS", "", 1);
    EXPECT_EQ(countPrinters(), 0);
    ::unsetenv("ZKCOMTL_PRINTERS");
    EXPECT_EQ(countPrinters(), 0);
}

TEST(TransportVirtual, KeepsTheOtherKeysOfAFile) {
    const TemporaryFolder folder;
    ::setenv("ZKCOMTL_PRINTERS", folder.path().c_str(), 1);
    folder.put("1.json", R"({"manufacturer": "Zelkor", "product": "Sample Laser", "serial": "SN0001",
                             "vid": "0x5A4B", "pid": 1, "threshold": 3, "colour": "grey"})");
    EXPECT_EQ(send(openPrinter(), envelopes::writeThreshold5), TL_USB_OK);
    EXPECT_NE(folder.get("1.json").find("\"threshold\": 5"), std::string::npos);
    EXPECT_NE(folder.get("1.json").find("\"colour\": \"grey\""), std::string::npos);
}

TEST(TransportVirtual, ShowsEveryFaultOfTheStatus) {
    FolderPorts ports;
    const struct {
        std::set<Fault> faults;
        const char *status;
    } cases[] = {
        {{Fault::Busy, Fault::CannotOpen}, R"(0 {"printer_status": 3})"},
        {{Fault::StatusFails}, "-6 untouched"},
        {{Fault::StatusEmpty}, "0 "},
        {{Fault::StatusNotJson}, "0 READY"},
        {{Fault::StatusNotObject}, "0 [3]"},
    };
    for (const auto &[faults, status] : cases) {
        ports.plug(sampleLaser(faults));
        EXPECT_EQ(statusCall(), status);
    }
    transport::VirtualPrinterState printer = sampleLaser();
    printer.printerStatus = 7;
    ports.plug(printer);
    EXPECT_EQ(statusCall(), R"(0 {"printer_status": 7})");

    const TemporaryFolder folder;
    ::setenv("ZKCOMTL_PRINTERS", folder.path().c_str(), 1);
    folder.put("1.json",
               R"({"manufacturer": "Zelkor", "product": "Sample Laser", "serial": "SN0001", "vid": 1,
                             "pid": 1, "status_text": "{\"printer_status\":\"3\"}"})");
    EXPECT_EQ(statusCall(), R"(0 {"printer_status":"3"})");
    folder.put("1.json", "{}");
    EXPECT_EQ(statusCall(), "-2 untouched");
}
