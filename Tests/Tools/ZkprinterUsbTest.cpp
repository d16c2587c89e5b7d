// The command line as a process with the USB transport library, from the queue to the emulated printer and
// back.
#include "Tests/Platform/Transport/UsbPorts.h"
#include "Tests/Support/PrivateCups.h"

#include <csignal>
#include <cstdio>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

using testing::MatchesRegex;

namespace {

transport::VirtualPrinterState l200(const std::string &serial) {
    return {.manufacturer = "Zelkor",
            .product = "L200 Series",
            .serial = serial,
            .vid = VENDOR_ID,
            .pid = 2,
            .threshold = 3};
}

/// The printer of the queue after that of l200("SN0002").
transport::VirtualPrinterState laser() {
    auto state = l200("SN0001");
    state.product = "Sample Laser Series";
    return state;
}

/// What a shell makes the program of.
std::string commandOf(const std::string &arguments) {
    return "ASAN_OPTIONS=verify_asan_link_order=0 LD_LIBRARY_PATH=" USB_TRANSPORT " LD_PRELOAD=" PRELOAD
           " exec " ZKPRINTER " " +
           arguments + " 2>&1";
}

/// The program's output.
FILE *start(const std::string &arguments) {
    return ::popen(commandOf(arguments).c_str(), "r");
}

pid_t startAside(const std::string &arguments) {
    const std::string command = commandOf(arguments);
    const pid_t process = ::fork();
    if (process == 0) {
        ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        ::_exit(127);
    }
    return process;
}

/// -1 when a signal ended it.
int exitStatusOf(pid_t process) {
    int status = 0;
    EXPECT_EQ(::waitpid(process, &status, 0), process);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Whether a signal was sent to the process that none of its threads has taken yet.
bool hasPendingSignal(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("ShdPnd:"))
            return line.find_first_of("123456789abcdef", 7) != std::string::npos;
    return false;
}

/// The exit status and what the program printed.
std::string zkprinter(const std::string &arguments) {
    FILE *const output = start(arguments);
    std::string text;
    for (int byte; output && (byte = std::fgetc(output)) != EOF;)
        text += static_cast<char>(byte);
    return std::to_string(WEXITSTATUS(output ? ::pclose(output) : -1)) + " " + text;
}

} // namespace

TEST(ZkprinterUsb, readsWritesAndReadsBackThroughAQueue) {
    const PrivateCups cups(true);
    UsbPorts ports;
    EXPECT_THAT(zkprinter("status Zelkor_L200"), StartsWith("5 ")) << "not attached";
    ports.plug(l200("SN0002"));
    EXPECT_THAT(zkprinter("list"), HasSubstr("Zelkor_L200"));
    EXPECT_THAT(zkprinter("devices"), HasSubstr("SN0002"));
    EXPECT_THAT(zkprinter("status Zelkor_L200"), StartsWith("0 "));
    EXPECT_EQ(zkprinter("reminder Zelkor_L200"),
              "0 The low-toner reminder of \"Zelkor_L200\" is set to 3 %.\n");
    EXPECT_EQ(zkprinter("reminder Zelkor_L200 5"),
              "0 The low-toner reminder of \"Zelkor_L200\" is now set to 5 %.\n");
    EXPECT_EQ(ports.threshold("SN0002"), 5);
    EXPECT_EQ(zkprinter("reminder Zelkor_L200"),
              "0 The low-toner reminder of \"Zelkor_L200\" is set to 5 %.\n");
    EXPECT_TRUE(ports.printer("SN0002").hasKernelDriver());
}

TEST(ZkprinterUsb, tellsPrintersApartByAllOfTheirNames) {
    auto &ports = UsbTestbed::shared();
    const std::string uri = "usb://Zelkor/L200%20Series?serial=", longest(255, 'S');
    const auto longSerial = ports.plug(l200(longest + "more than a device record has room for"));
    EXPECT_THAT(zkprinter("devices"), HasSubstr(uri + longest + "\n"));
    for (const std::string &serial : {longest, longSerial->state().serial})
        EXPECT_THAT(zkprinter("reminder '" + uri + serial + "'"), StartsWith("0 "));
    EXPECT_THAT(zkprinter("reminder '" + uri + longest + "m' 5"), StartsWith("5 "));
    EXPECT_THAT(zkprinter("reminder '" + uri + std::string(254, 'S') + "' 5"), StartsWith("5 "));

    const auto twin = ports.plug(l200("SN0002")), otherTwin = ports.plug(l200("SN0002"));
    for (const char *const command : {"status", "reminder"})
        EXPECT_THAT(zkprinter(command + (" '" + uri) + "SN0002'"), StartsWith("14 "));
    ports.unplug(otherTwin);
    EXPECT_THAT(zkprinter("reminder '" + uri + "SN0002' 5"), StartsWith("0 "));
    EXPECT_EQ(longSerial->state().threshold, 3);
    ports.unplug(twin);
    ports.unplug(longSerial);
}

TEST(ZkprinterUsb, saysWhatIsInTheWay) {
    ::setenv("CUPS_SERVER", "/nowhere", 1);
    auto &ports = UsbTestbed::shared();
    transport::VirtualPrinterState state = l200("XK00047110815");
    const auto printer = ports.plug(state);
    const std::string report = zkprinter("diagnose --json");
    const std::string node = usbNodePath(printer->address());
    for (const std::string &part :
         {std::string(R"("transport":")" USB_TRANSPORT "/libzkcomtl.so.1.0.0"), std::string("serial=XK0…15"),
          R"("usbIdentifier":"5a4b:0002","node":")" + node + R"(","permissions":"0)",
          std::string(R"("mayOpen":true,)"), std::string(R"("holders":[],"state":)")})
        EXPECT_THAT(report, HasSubstr(part));
    EXPECT_THAT(report, StartsWith("8 "));
    EXPECT_THAT(report, testing::Not(HasSubstr("47110")));

    const std::string reminder = "reminder 'usb://Zelkor/L200%20Series?serial=XK00047110815'";
    state.faults = {transport::Fault::Busy};
    printer->setState(state);
    EXPECT_THAT(zkprinter(reminder), StartsWith("11 "));
    ports.unplug(printer);
    EXPECT_THAT(zkprinter(reminder), StartsWith("5 "));
}

TEST(ZkprinterUsb, watchMissesNoReplugAndEndsWithItsReader) {
    auto &ports = UsbTestbed::shared();
    FILE *const output = start("devices --watch");
    ASSERT_NE(output, nullptr);
    const auto line = [&] {
        char text[256] = {};
        return std::string(std::fgets(text, sizeof text, output) ? text : "nothing");
    };
    auto printer = ports.plug(l200("SN0002"));
    EXPECT_THAT(line(), MatchesRegex("attached +usb://Zelkor/L200%20Series.serial=SN0002\n"));
    for (int replug = 0; replug < 5; ++replug) {
        ports.unplug(printer); // and in again before anybody can look
        printer = ports.plug(l200("SN0002"));
        EXPECT_THAT(line(), StartsWith("detached "));
        EXPECT_THAT(line(), StartsWith("attached "));
    }
    EXPECT_EQ(::pclose(output), 0);
    ports.unplug(printer);
}

TEST(ZkprinterUsb, asksThePrintersOfAllQueuesSideBySide) {
    const PrivateCups cups(true);
    auto &ports = UsbTestbed::shared();
    const auto silent = ports.plug(l200("SN0002")), other = ports.plug(laser());
    silent->hold(Hold::answers);
    const pid_t process = startAside("reminder --all 5 >/dev/null");
    awaitThat([&] { return silent->isAwaited(Hold::answers) && other->state().threshold == 5; });
    EXPECT_EQ(silent->state().threshold, 3);
    silent->hold(Hold::answers, false);
    EXPECT_EQ(exitStatusOf(process), 18) << "two printers are not attached";
    EXPECT_EQ(silent->state().threshold, 5);
    ports.unplug(silent);
    ports.unplug(other);
}

TEST(ZkprinterUsb, givesThePrinterBackWhenItIsEnded) {
    auto &ports = UsbTestbed::shared();
    const auto printer = ports.plug(l200("SN0002"));
    const std::string uri = "'usb://Zelkor/L200%20Series?serial=SN0002'", reminder = "reminder " + uri;
    const auto expectGivenBack = [&] {
        awaitThat([&] { return printer->opens() == 0; }); // seen a moment later
        EXPECT_TRUE(printer->hasKernelDriver());
    };
    const std::tuple<int, Hold, std::string> calls[] = {{SIGINT, Hold::answers, reminder},
                                                        {SIGTERM, Hold::requests, reminder + " 5"},
                                                        {SIGHUP, Hold::requests, "status " + uri},
                                                        {SIGQUIT, Hold::answers, reminder + " 5"}};
    for (const auto &[signal, held, call] : calls) {
        SCOPED_TRACE(call);
        printer->hold(held);
        const pid_t process = startAside(call);
        awaitThat([&, what = held] { return printer->isAwaited(what); });
        EXPECT_FALSE(printer->hasKernelDriver());
        ::kill(process, signal);
        EXPECT_EQ(exitStatusOf(process), 128 + signal);
        expectGivenBack();
    }
    EXPECT_THAT(zkprinter("--timeout 0.2 " + reminder), StartsWith("15 "));
    expectGivenBack();

    // A signal does not hurry what gives it back already.
    printer->hold(Hold::release);
    pid_t process = 0;
    for (double seconds = 0.2; !printer->isAwaited(Hold::release); seconds *= 4) { // until it gets that far
        process = startAside("--timeout " + std::to_string(seconds) + " " + reminder);
        awaitThat([&] {
            return printer->isAwaited(Hold::release) || ::waitpid(process, nullptr, WNOHANG) == process;
        });
    }
    ::kill(process, SIGINT);
    awaitThat([&] { return !hasPendingSignal(process); });
    EXPECT_EQ(::waitpid(process, nullptr, WNOHANG), 0);
    printer->hold(Hold::release, false);
    EXPECT_EQ(exitStatusOf(process), 15);
    expectGivenBack();
    ports.unplug(printer);
}
