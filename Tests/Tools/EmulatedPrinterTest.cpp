// The command line over the installed kind of transport, with emulated USB ports: a process of its own, which
// finds them as every child of this program does.
#include "Tests/Support/UsbEmulation/UsbTestbed.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace {

struct Outcome {
    int status;
    std::string output; // of both streams
};

Outcome run(const std::string &arguments) {
    const std::string command = "LD_PRELOAD=" PRELOAD " LD_LIBRARY_PATH=" TRANSPORT_FOLDER
                                " CUPS_SERVER=/nowhere " ZKPRINTER " " +
                                arguments + " 2>&1";
    FILE *const stream = ::popen(command.c_str(), "r");
    std::string output;
    for (int byte; stream && (byte = std::fgetc(stream)) != EOF;)
        output += static_cast<char>(byte);
    return {stream ? WEXITSTATUS(::pclose(stream)) : -1, output};
}

} // namespace

TEST(EmulatedPrinter, isReachedOrSaidWhyNot) {
    auto &ports = UsbTestbed::shared();
    transport::VirtualPrinterState state{.manufacturer = "Zelkor",
                                         .product = "L200 Series",
                                         .serial = "XK00047110815",
                                         .vid = 0x5A4B,
                                         .pid = 2,
                                         .threshold = 3};
    const auto printer = ports.plug(state);
    const std::string reminder = "reminder 'usb://Zelkor/L200%20Series?serial=XK00047110815' ";
    EXPECT_EQ(run(reminder + "7").status, 0);
    EXPECT_EQ(printer->state().threshold, 7);

    const Outcome report = run("diagnose --json");
    EXPECT_EQ(report.status, 0);
    for (const char *part : {R"("transport":")" TRANSPORT_FOLDER "/libzkcomtl.so.1.0.0", "serial=XK0…15",
                             R"("usbIdentifier":"5a4b:0002","node":"/dev/bus/usb/001/001","permissions":"0)",
                             R"("mayOpen":true,)", R"("holders":[],"state":)"})
        EXPECT_NE(report.output.find(part), std::string::npos) << part << "\n" << report.output;
    EXPECT_EQ(report.output.find("47110"), std::string::npos) << report.output;

    const std::pair<transport::Fault, int> faults[] = {{transport::Fault::Busy, 11},
                                                       {transport::Fault::WriteFails, 13},
                                                       {transport::Fault::UnplugAfterOpen, 12}};
    for (const auto &[fault, status] : faults) {
        state.faults = {fault};
        printer->setState(state);
        const Outcome outcome = run(reminder);
        EXPECT_EQ(outcome.status, status) << outcome.output;
    }
    ports.unplug(printer);
    EXPECT_EQ(run(reminder).status, 5);
}
