// The command line as a process with the USB transport library, from the queue to the emulated printer and
// back.
#include "Tests/Platform/Transport/UsbPorts.h"
#include "Tests/Support/PrivateCups.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>

namespace {

/// The exit status and what the program printed.
std::string zkprinter(const std::string &arguments) {
    FILE *const output = ::popen(("ASAN_OPTIONS=verify_asan_link_order=0 LD_LIBRARY_PATH=" USB_TRANSPORT
                                  " LD_PRELOAD=" PRELOAD " " ZKPRINTER " " +
                                  arguments + " 2>&1")
                                     .c_str(),
                                 "r");
    std::string text;
    for (int byte; output && (byte = std::fgetc(output)) != EOF;) {
        text += static_cast<char>(byte);
    }
    return std::to_string(WEXITSTATUS(output ? ::pclose(output) : -1)) + " " + text;
}

} // namespace

TEST(ZkprinterUsb, readsWritesAndReadsBackThroughAQueue) {
    const PrivateCups cups(true);
    UsbPorts ports;
    EXPECT_EQ(zkprinter("status Zelkor_L200").substr(0, 1), "5") << "not attached";
    ports.plug({.manufacturer = "Zelkor",
                .product = "L200 Series",
                .serial = "SN0002",
                .vid = VENDOR_ID,
                .pid = 2,
                .threshold = 3});
    EXPECT_NE(zkprinter("list").find("Zelkor_L200"), std::string::npos);
    EXPECT_NE(zkprinter("devices").find("SN0002"), std::string::npos);
    EXPECT_EQ(zkprinter("status Zelkor_L200").substr(0, 1), "0");
    EXPECT_EQ(zkprinter("reminder Zelkor_L200"),
              "0 The low-toner reminder of \"Zelkor_L200\" is set to 3 %.\n");
    EXPECT_EQ(zkprinter("reminder Zelkor_L200 5"),
              "0 The low-toner reminder of \"Zelkor_L200\" is now set to 5 %.\n");
    EXPECT_EQ(ports.threshold("SN0002"), 5);
    EXPECT_EQ(zkprinter("reminder Zelkor_L200"),
              "0 The low-toner reminder of \"Zelkor_L200\" is set to 5 %.\n");
    EXPECT_TRUE(ports.printer("SN0002").hasKernelDriver());
    ports.plug({.manufacturer = "Zelkor",
                .product = "L200 Series",
                .serial = "SN0002",
                .vid = VENDOR_ID,
                .pid = 2,
                .faults = {transport::Fault::Busy}});
    EXPECT_EQ(zkprinter("reminder Zelkor_L200").substr(0, 1), "6");
}
