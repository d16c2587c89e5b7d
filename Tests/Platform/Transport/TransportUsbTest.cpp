// The USB transport library over emulated printers: what every transport does, and what only a bus can do.
#include "Tests/Platform/Transport/TransportTesting.h"
#include "Tests/Platform/Transport/UsbPorts.h"
#include "Tests/Support/Random.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <linux/capability.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
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
class PrintNode : NoCopies {
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

/// From now on this thread may not open what is kept for one program: root may.
void giveUpPrivilege() {
    __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
    __user_cap_data_struct data[2] = {};
    EXPECT_EQ(::syscall(SYS_capget, &header, data), 0);
    data[0].effective &= ~(std::uint32_t{1} << CAP_SYS_ADMIN);
    EXPECT_EQ(::syscall(SYS_capset, &header, data), 0);
}

class TransportUsb : public testing::Test {
protected:
    TransportUsb() { ports.plug(sampleLaser()); }

    EmulatedUsbPrinter &printer() const { return ports.printer("SN0001"); }
    /// Closing is seen a moment after it.
    void awaitRest() const {
        awaitThat([this] { return printer().opens() == 0; });
    }

    UsbPorts ports;
};

} // namespace

TEST_F(TransportUsb, givesThePrinterBackWhileItsHandleStaysOpen) {
    const auto start = std::chrono::steady_clock::now();
    void *const handle = openPrinter();
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    awaitRest();
    EXPECT_GT(std::chrono::steady_clock::now() - start, 100ms) << "not at every call";
    EXPECT_FALSE(printer().isClaimed());
    EXPECT_TRUE(printer().hasKernelDriver());

    EXPECT_EQ(receiveAll(handle), "<00acff2100010001> <33> -5") << "the answer waited in the printer";
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

TEST_F(TransportUsb, recoversFromAStall) {
    void *const handle = openPrinter();
    printer().stall(usbBulkOut);
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_ERROR_STALL);
    EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
    printer().stall(usbBulkIn);
    EXPECT_EQ(receiveAll(handle), "-9");
    EXPECT_EQ(receiveAll(handle), "<00acff2100010001> <33> -5");
}

TEST_F(TransportUsb, aReadEndsWithItsHandleALateAnswerOrItsPrinter) {
    void *handle = nullptr;
    const std::pair<const char *, std::function<void()>> ends[] = {
        {"-10", [&] { EXPECT_EQ(tl_usb_close_device_handle(handle), TL_USB_OK); }},
        {"<00acff2100010001>", [&] { printer().hold(Hold::answers, false); }},
        {"-2", [&] { ports.unplug("SN0001"); }},
    };
    for (const auto &[story, end] : ends) {
        handle = openPrinter();
        printer().hold(Hold::answers);
        EXPECT_EQ(send(handle, envelopes::readThreshold), TL_USB_OK);
        EXPECT_EQ(receiveAll(handle), "-5");
        std::thread reader([&, expected = story] {
            Bytes transfer;
            const std::int32_t status = receive(handle, transfer);
            EXPECT_EQ(status == TL_USB_OK ? shown(transfer) : std::to_string(status), expected);
        });
        awaitThat([this] { return printer().isAwaited(Hold::answers); });
        EXPECT_TRUE(printer().isClaimed());
        EXPECT_FALSE(printer().hasKernelDriver());
        end();
        reader.join();
    }
}

TEST_F(TransportUsb, boundsAWholeWrite) {
    void *const handle = openPrinter();
    printer().hold(Hold::requests);
    EXPECT_EQ(tl_usb_data_transfer_by_handle(handle, envelopes::readThreshold.data(), 105, silence_ms,
                                             nullptr, nullptr, 0),
              TL_USB_ERROR_TIMEOUT);
    printer().hold(Hold::requests, false);
    EXPECT_EQ(readOnce(), Bytes{'3'});
}

TEST_F(TransportUsb, tearsNoJobInTwo) {
    const PrintNode node(printer().address());
    giveUpPrivilege();
    node.setUsed(true);
    openPrinter("SN0001", TL_USB_ERROR_BUSY);
    EXPECT_EQ(statusCall(), "-4 untouched");
    EXPECT_TRUE(printer().hasKernelDriver());
    node.setUsed(false);
    EXPECT_EQ(readOnce(), Bytes{'3'});
    node.setUsed(true);
    EXPECT_EQ(readOnce(), Bytes{'3'}) << "the node is the job's only while the driver is there";
}

// A device may tell anything of itself.
TEST_F(TransportUsb, survivesAnyDescriptors) {
    Random random(15);
    const transport::VirtualPrinterState state = sampleLaser({}, "SN0002");
    int opened = 0, refused = 0;
    for (int round = 0; round < 60; ++round) {
        Bytes descriptors = usbDescriptors(state);
        const std::string rest = random.mutated({descriptors.begin() + 18, descriptors.end()}, "\t\x07\xFF");
        descriptors.resize(18);
        descriptors.insert(descriptors.end(), rest.begin(), rest.end());
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
