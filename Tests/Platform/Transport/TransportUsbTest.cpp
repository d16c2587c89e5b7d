// The USB transport library over emulated printers: what every transport does, and what only a bus can do.
#include "Tests/Platform/Transport/TransportTesting.h"
#include "Tests/Platform/Transport/UsbPorts.h"
#include "Tests/Support/Random.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using transport::Fault;

INSTANTIATE_TEST_SUITE_P(Usb, Transport, testing::Values(UsbPorts::make));

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int rounds = 200; // slow there, and others look after the memory
#else
constexpr int rounds = 10'000;
#endif

/// What this process has in use, as the kernel counts it.
struct Usage {
    ptrdiff_t files = entries("/proc/self/fd");
    ptrdiff_t threads = entries("/proc/self/task");
    ptrdiff_t pages = 0; // resident

    Usage() {
        ptrdiff_t all = 0;
        std::ifstream("/proc/self/statm") >> all >> pages;
    }
    static ptrdiff_t entries(const char *folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    }
};

void awaitThat(const std::function<bool()> &condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(patience_ms);
    while (!condition() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    EXPECT_TRUE(condition());
}

void expectNoGrowth(int cycles, const std::function<void()> &cycle) {
    cycle();
    cycle();
    const Usage before;
    for (int i = 0; i < cycles; ++i)
        cycle();
    // The emulation closes its ends on a thread of its own.
    awaitThat([&] {
        const Usage now;
        return now.files <= before.files && now.threads <= before.threads;
    });
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    constexpr ptrdiff_t slack = 256; // 1 MiB
    EXPECT_LE(Usage().pages, before.pages + slack);
#endif
}

/// The threshold as one exchange reads it; empty when it fails.
Bytes readOnce() {
    void *const handle = openPrinter();
    Bytes header, data;
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    EXPECT_EQ(receive(handle, header), TL_USB_OK);
    EXPECT_EQ(receive(handle, data), TL_USB_OK);
    return data;
}

/// The node of the kernel's printer driver: a terminal, as that can be kept for one program, too.
class PrintNode {
public:
    explicit PrintNode(UsbAddress printer)
        : interface_(UsbTestbed::shared().root() /
                     usbInterfaceFolder(printer, usbPrinterInterface).substr(1)),
          link_(UsbTestbed::shared().root() / "dev/usb/lp0"), terminal_(::posix_openpt(O_RDWR | O_NOCTTY)) {
        char name[64] = {};
        EXPECT_EQ(::grantpt(terminal_) + ::unlockpt(terminal_) + ::ptsname_r(terminal_, name, sizeof name),
                  0);
        program_ = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, name, O_RDWR | O_NOCTTY));
        EXPECT_GE(program_, 0);
        std::filesystem::create_directories(interface_ / "usbmisc/lp0");
        std::filesystem::create_directories(link_.parent_path());
        std::filesystem::create_symlink(name, link_);
    }
    ~PrintNode() {
        std::filesystem::remove_all(interface_ / "usbmisc");
        std::filesystem::remove(link_);
        ::close(program_);
        ::close(terminal_);
    }
    PrintNode(const PrintNode &) = delete;
    PrintNode &operator=(const PrintNode &) = delete;

    /// Whether a program prints through it.
    void setUsed(bool used) const {
        // Past the emulation, which is about to answer every ioctl itself.
        EXPECT_EQ(::syscall(SYS_ioctl, program_, used ? TIOCEXCL : TIOCNXCL), 0);
    }

private:
    const std::filesystem::path interface_, link_;
    const int terminal_;
    int program_ = -1;
};

/// While it lives, this thread may not open what is kept for one program: root may.
class WithoutPrivilege {
public:
    WithoutPrivilege() { set(false); }
    ~WithoutPrivilege() { set(true); }
    WithoutPrivilege(const WithoutPrivilege &) = delete;
    WithoutPrivilege &operator=(const WithoutPrivilege &) = delete;

private:
    static void set(bool allowed) {
        __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
        __user_cap_data_struct data[2] = {};
        EXPECT_EQ(::syscall(SYS_capget, &header, data), 0);
        constexpr std::uint32_t privilege = std::uint32_t{1} << CAP_SYS_ADMIN;
        data[0].effective = allowed ? data[0].permitted : data[0].effective & ~privilege;
        EXPECT_EQ(::syscall(SYS_capset, &header, data), 0);
    }
};

/// A program that is in the middle of a call when it is told to end.
class CallingProgram {
public:
    explicit CallingProgram(const char *call) {
        const std::string uri = uriOf("SN0001");
        const char *const arguments[] = {CALLING_PROGRAM, uri.c_str(), call, nullptr};
        EXPECT_EQ(
            ::posix_spawn(&pid_, arguments[0], nullptr, nullptr, const_cast<char **>(arguments), environ), 0);
    }
    /// The status it ends with.
    int end() const {
        int status = 0;
        EXPECT_EQ(::kill(pid_, SIGTERM), 0);
        EXPECT_EQ(::waitpid(pid_, &status, 0), pid_);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

private:
    pid_t pid_ = 0;
};

class TransportUsb : public testing::Test {
protected:
    TransportUsb() { ports.plug(sampleLaser()); }

    EmulatedUsbPrinter &printer() const { return ports.printer("SN0001"); }
    /// Closing is seen a moment after it.
    void awaitRest() const {
        awaitThat([this] { return printer().opens() == 0; });
    }
    void awaitRead() const {
        awaitThat([this] { return printer().pending() > 0; });
    }

    UsbPorts ports;
};

} // namespace

TEST_F(TransportUsb, givesThePrinterBackWhileItsHandleStaysOpen) {
    void *const handle = openPrinter();
    EXPECT_TRUE(printer().isClaimed());
    EXPECT_FALSE(printer().hasKernelDriver());
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    const auto start = std::chrono::steady_clock::now();
    awaitRest();
    EXPECT_GT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100))
        << "not at every call";
    EXPECT_FALSE(printer().isClaimed());
    EXPECT_TRUE(printer().hasKernelDriver());

    EXPECT_EQ(receiveAll(handle), "<00ACFF2100010001> <33> -5") << "the answer waited in the printer";
    EXPECT_TRUE(printer().isClaimed());
    EXPECT_EQ(tl_usb_close_device_handle(handle), TL_USB_OK);
    awaitRest();
    EXPECT_TRUE(printer().hasKernelDriver());
}

TEST_F(TransportUsb, asksForTheStatusBesideAnOpenHandle) {
    EXPECT_EQ(statusCall(), R"(0 {"printer_status":3,"selected":true,"paper_empty":false,"error":false,)"
                            R"("device_id":{"CMD":"PJL,ACL","MDL":"Sample Laser","MFG":"Zelkor"}})");
    awaitRest();
    EXPECT_TRUE(printer().hasKernelDriver());
    void *const handle = openPrinter();
    transport::VirtualPrinterState state = sampleLaser();
    state.printerStatus = 2;
    ports.plug(state);
    EXPECT_THAT(statusCall(), testing::HasSubstr("\"printer_status\":2"));
    ports.plug(sampleLaser({Fault::StatusFails}));
    EXPECT_EQ(statusCall(), "-9 untouched");
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
}

TEST_F(TransportUsb, takesALateAnswer) {
    void *const handle = openPrinter();
    printer().holdAnswers(true);
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    EXPECT_EQ(receiveAll(handle), "-5");
    std::thread late([this] {
        awaitRead();
        printer().holdAnswers(false);
    });
    Bytes header;
    EXPECT_EQ(receive(handle, header), TL_USB_OK);
    EXPECT_EQ(shown(header), "<00ACFF2100010001>");
    late.join();
}

TEST_F(TransportUsb, recoversFromAStall) {
    void *const handle = openPrinter();
    printer().stall(usbBulkOut);
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_ERROR_STALL);
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    printer().stall(usbBulkIn);
    EXPECT_EQ(receiveAll(handle), "-9");
    EXPECT_EQ(receiveAll(handle), "<00ACFF2100010001> <33> -5");
}

TEST_F(TransportUsb, endsAReadWhenItsPrinterOrItsHandleGoes) {
    for (const bool unplugs : {false, true}) {
        void *const handle = openPrinter();
        std::thread reader([&] { EXPECT_EQ(receiveAll(handle, patience_ms), unplugs ? "-2" : "-10"); });
        awaitRead();
        if (unplugs)
            ports.unplug("SN0001");
        else
            EXPECT_EQ(tl_usb_close_device_handle(handle), TL_USB_OK);
        reader.join();
    }
}

TEST_F(TransportUsb, boundsAWholeWrite) {
    void *const handle = openPrinter();
    printer().holdRequests(true);
    EXPECT_EQ(tl_usb_data_transfer_by_handle(handle, envelopes::readThreshold.data(), 105, silence_ms,
                                             nullptr, nullptr, 0),
              TL_USB_ERROR_TIMEOUT);
    printer().holdRequests(false);
    EXPECT_EQ(readOnce(), Bytes{'3'});
}

TEST_F(TransportUsb, tearsNoJobInTwo) {
    const PrintNode node(printer().address());
    const WithoutPrivilege user;
    node.setUsed(true);
    openPrinter("SN0001", TL_USB_ERROR_BUSY);
    EXPECT_EQ(statusCall(), "-4 untouched");
    EXPECT_TRUE(printer().hasKernelDriver());
    node.setUsed(false);
    EXPECT_EQ(readOnce(), Bytes{'3'});
    node.setUsed(true);
    EXPECT_EQ(readOnce(), Bytes{'3'}) << "the node is the job's only while the driver is there";
}

TEST_F(TransportUsb, givesThePrinterBackWhenItsProgramEndsInACall) {
    for (const char *const call : {"read", "write", "status"}) {
        printer().holdAnswers(true);
        printer().holdRequests(std::string(call) != "read");
        const CallingProgram program(call);
        awaitThat([this] { return printer().pending() > 0; });
        EXPECT_TRUE(printer().isClaimed());
        EXPECT_EQ(program.end(), 128 + SIGTERM) << call;
        awaitRest();
        EXPECT_TRUE(printer().hasKernelDriver()) << call;
    }
}

// A device may tell anything of itself.
TEST_F(TransportUsb, survivesAnyDescriptors) {
    Random random(15);
    const transport::VirtualPrinterState state = sampleLaser({}, "SN0002");
    int opened = 0, refused = 0;
    for (int round = 0; round < 60; ++round) {
        Bytes descriptors = usbDescriptors(state);
        for (std::size_t edits = 1 + random() % 3; edits > 0; --edits)
            descriptors[18 + random.below(descriptors.size() - 18)] = static_cast<std::uint8_t>(random());
        descriptors.resize(random() % 4 == 0 ? 18 + random() % (descriptors.size() - 17)
                                             : descriptors.size());
        const auto device = UsbTestbed::shared().plug(state, descriptors);
        void *handle = nullptr;
        const std::int32_t status = tl_usb_get_device_handle(uriOf("SN0002").c_str(), 2, &handle);
        EXPECT_EQ(status == TL_USB_OK, handle != nullptr) << round;
        ++(handle != nullptr ? opened : refused);
        tl_usb_close_device_handle(handle);
        UsbTestbed::shared().unplug(device);
    }
    EXPECT_GT(opened, 0);
    EXPECT_GT(refused, 0);
}

// As the manager does it: the handle of an exchange that went well is never closed.
TEST_F(TransportUsb, usesNoMoreAfterManyExchanges) {
    expectNoGrowth(rounds, [] { EXPECT_EQ(readOnce(), Bytes{'3'}); });
}

TEST_F(TransportUsb, usesNoMoreAfterManyPluggings) {
    expectNoGrowth(rounds / 20, [this] {
        EXPECT_EQ(countPrinters(), 1);
        EXPECT_EQ(readOnce(), Bytes{'3'});
        const EmulatedUsbPrinter &gone = printer();
        ports.unplug("SN0001");
        EXPECT_EQ(countPrinters(), 0);
        awaitThat([&] { return gone.opens() == 0; });
        ports.plug(sampleLaser());
    });
}
