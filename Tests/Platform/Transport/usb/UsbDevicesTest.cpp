// Attached printers and what stands before them, from made-up /sys, /proc and /etc.
#include "Platform/Transport/usb/DeviceAccess.h"
#include "Platform/Transport/usb/DeviceId.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace transport;

namespace {

class Root : public TemporaryFolder {
public:
    void link(const std::string &name, const std::string &target) const {
        fs::create_directories(file(name).parent_path());
        fs::create_symlink(target, file(name));
    }
    void device(const std::string &name, const std::string &vendor, const std::string &address,
                const PrinterIdentity &identity) const {
        const std::string folder = "sys/bus/usb/devices/" + name + "/";
        put(folder + "idVendor", vendor + "\n");
        put(folder + "idProduct", "00fe\n");
        put(folder + "busnum", "1\n");
        put(folder + "devnum", address + "\n");
        put(folder + "manufacturer", identity.manufacturer + "\n");
        put(folder + "product", identity.product + " \n");
        if (!identity.serial.empty())
            put(folder + "serial", identity.serial + "\n");
    }
    void interface(const std::string &name, const std::string &kind, const std::string &driver = {},
                   const std::string &printNode = {}) const {
        const std::string folder = "sys/bus/usb/devices/" + name + "/";
        put(folder + "bInterfaceClass", kind + "\n");
        if (!driver.empty())
            link(folder + "driver", "../../../../bus/usb/drivers/" + driver);
        if (!printNode.empty())
            fs::create_directories(file(folder + "usbmisc/" + printNode));
    }
    /// What it has open is hidden when none is given.
    void process(const std::string &pid, const std::string &name, const std::string &arguments,
                 const std::vector<std::string> &open = {}) const {
        for (std::size_t i = 0; i < open.size(); ++i)
            link("proc/" + pid + "/fd/" + std::to_string(i), open[i]);
        put("proc/" + pid + "/comm", name + "\n");
        put("proc/" + pid + "/cmdline", arguments);
    }
};

} // namespace

TEST(UsbDevices, listsPrintersOfAVendor) {
    const Root root;
    EXPECT_THAT(attachedPrinters({}, root.path()), IsEmpty());
    root.device("1-2", "5a4b", "10", {"Zelkor", "L200 Series", "SN1"});
    root.interface("1-2:1.0", "ff");
    root.interface("1-2:1.1", "07", "usblp", "lp0");
    root.device("1-2.1", "5a4b", "9", {"", "L300", ""}); // behind the other one, if that were a hub
    root.interface("1-2.1:1.0", "07");
    root.put("sys/bus/usb/devices/1-2.1:1.0/ieee1284_id", "MFG:Zelkor;MDL:ZK 300;SN:X9;");
    root.device("1-3", "5a4b", "3", {"Zelkor", "Scanner", "SN3"});
    root.interface("1-3:1.0", "06");
    root.device("2-1", "1234", "4", {"Other", "P", "SN4"});
    root.interface("2-1:1.0", "07");
    root.device("2-2", "5a4b", "99999999999", {"Zelkor", "Broken", ""});
    root.interface("2-2:1.0", "07");
    root.put("sys/bus/usb/devices/usb1/idVendor", "1d6b\n");

    const auto printers = attachedPrinters(0x5A4B, root.path());
    ASSERT_THAT(printers, SizeIs(2));
    EXPECT_EQ(printers[0].identity, (PrinterIdentity{"", "L300", ""}));
    EXPECT_EQ(printers[0].node(), "/dev/bus/usb/001/009");
    EXPECT_EQ(printers[1].identity, (PrinterIdentity{"Zelkor", "L200 Series", "SN1"}));
    EXPECT_EQ(printers[1].pid, 0xFE);
    EXPECT_THAT(printers[1].interfaces, ElementsAre("1-2:1.1"));

    const auto all = attachedPrinters({}, root.path());
    EXPECT_THAT(all, SizeIs(3));
    // By the names of either kind; the device ID may know a serial number that the descriptors lack.
    const auto named = [&](const char *uri) {
        std::vector<int> addresses;
        for (const AttachedPrinter &printer : attachedPrintersNamed(uri, all))
            addresses.push_back(printer.address);
        return addresses;
    };
    EXPECT_THAT(named("usb://Zelkor/ZK%20300?serial=X9"), ElementsAre(9)) << "by its device ID";
    EXPECT_THAT(named("usb:///L300"), ElementsAre(9)) << "by its descriptors";
    EXPECT_THAT(named("usb://Zelkor/L300"), IsEmpty()) << "by some of both";
    EXPECT_THAT(named("usb://Zelkor/L200%20Series?serial=SN1&interface=1"), ElementsAre(10));
    EXPECT_THAT(named("usb://Zelkor/L200%20Series?serial=SN2"), IsEmpty());
}

TEST(UsbDevices, tellsWhatStandsBetween) {
    const Root root;
    root.device("1-2", "5a4b", "7", {"Zelkor", "L200", "SN1"});
    root.interface("1-2:1.0", "07", "usbfs", "lp3");
    const auto printer = [&] { return attachedPrinters({}, root.path()).at(0); };
    const std::string node = "/dev/bus/usb/001/007";

    DeviceAccess access = deviceAccess(printer(), root.path());
    EXPECT_EQ(access.node, node);
    EXPECT_FALSE(access.nodeExists);
    EXPECT_FALSE(access.mayOpen);
    EXPECT_FALSE(access.udevRule);
    EXPECT_EQ(access.kernelDriver, "usbfs");
    EXPECT_THAT(access.holders, IsEmpty());

    // A queue may name the printer by a device ID, which the kernel cannot tell now.
    const auto isHeld = [&](const char *uri) {
        return accessToHeld(uri, attachedPrinters({}, root.path()), root.path()).has_value();
    };
    EXPECT_TRUE(isHeld("usb://ZK/L%20200?serial=SN1"));
    EXPECT_FALSE(isHeld("usb://ZK/L%20200?serial=SN2"));
    EXPECT_FALSE(isHeld("usb://ZK/L%20200"));
    root.put("sys/bus/usb/devices/1-2:1.0/ieee1284_id", "MFG:Zelkor;MDL:L200;");
    EXPECT_FALSE(isHeld("usb://ZK/L%20200?serial=SN1"));
    fs::remove(root.file("sys/bus/usb/devices/1-2:1.0/ieee1284_id"));

    root.put(node.substr(1), "");
    root.put("lib/udev/rules.d/70-zkutility.rules", "");
    root.process("30", "scan", "scan", {node});
    root.process("4", "cat", "cat", {"/dev/usb/lp3"});
    root.process("5", "cat", "cat", {"/dev/usb/lp0", "socket:[12]"});
    const std::string arguments = std::string("usb://Zelkor/L200?serial=SN1") + '\0' + "42" + '\0' + "anna";
    root.process("60", "usb", arguments, {"/dev/null", node});
    // What others have open is hidden from an ordinary user; what they are called is not.
    root.process("61", "usb", arguments);
    root.process("62", "usb", "usb://Zelkor/L200?serial=SN2");
    root.process("63", "ipp-usb", "ipp-usb");
    root.process("64", "usb", "/bin/usb");
    root.process(std::to_string(::getpid()), "test", "test", {node});
    access = deviceAccess(printer(), root.path());
    EXPECT_TRUE(access.nodeExists);
    EXPECT_TRUE(access.mayOpen);
    EXPECT_EQ(access.udevRule, root.path() / "lib/udev/rules.d/70-zkutility.rules");
    root.put("usr/local/lib/udev/rules.d/70-zkutility.rules", "");
    EXPECT_EQ(installedUdevRule(root.path()), root.path() / "usr/local/lib/udev/rules.d/70-zkutility.rules");
    root.link("etc/udev/rules.d/70-zkutility.rules", "/dev/null");
    EXPECT_FALSE(installedUdevRule(root.path())) << "switched off by the administrator";
    EXPECT_THAT(access.printNodes, ElementsAre(fs::path("/dev/usb/lp3")));
    EXPECT_TRUE(isOpenSomewhere(access.printNodes, root.path()));
    EXPECT_FALSE(isOpenSomewhere({"/dev/usb/lp9"}, root.path()));
    using Kind = HoldingProcess::Kind;
    EXPECT_THAT(access.holders, ElementsAre(HoldingProcess{4, "cat", Kind::other, true},
                                            HoldingProcess{30, "scan", Kind::other, true},
                                            HoldingProcess{60, "usb", Kind::cupsBackend, true},
                                            HoldingProcess{61, "usb", Kind::cupsBackend, false},
                                            HoldingProcess{63, "ipp-usb", Kind::ippUsb, false}));
}

TEST(UsbDevices, tellOnePluggingFromAnother) {
    const Root root;
    const auto plug = [&](const std::string &name, const char *address, const char *serial) {
        root.device(name, "5a4b", address, {"Zelkor", "L200", serial});
        return root.file("sys/bus/usb/devices/" + name);
    };
    const fs::path folder = plug("1-2", "7", "SN1");
    root.interface("1-2:1.0", "07");
    const AttachedPrinter first = attachedPrinters({}, root.path()).at(0);
    EXPECT_TRUE(isStillAttached(first, root.path()));
    using Texts = std::pair<const char *, const char *>;
    for (const auto &[address, serial] : {Texts("7", "SN1"), Texts("8", "SN1"), Texts("7", "SN2")}) {
        const fs::path next = plug("next", address, serial); // made while the former is there: another folder
        fs::rename(folder, root.file("former" + std::string(address) + serial));
        fs::rename(next, folder);
        EXPECT_FALSE(isStillAttached(first, root.path()));
        EXPECT_NE(attachedPrinters({}, root.path()).at(0).listed().plugging, first.listed().plugging);
    }
    fs::remove_all(folder);
    EXPECT_FALSE(isStillAttached(first, root.path()));
}

TEST(DeviceId, isReadWithinWhatWasReceived) {
    const auto text = [](std::vector<std::uint8_t> reply) { return std::string(deviceIdText(reply)); };
    EXPECT_EQ(text({0, 5, 'a', 'b', 'c', 'x'}), "abc");
    EXPECT_EQ(text({5, 0, 'a', 'b', 'c', 'x'}), "abc"); // little-endian
    EXPECT_EQ(text({0xFF, 0xFF, 'a', 'b'}), "ab");
    EXPECT_EQ(text({0, 0, 'a'}), "a");
    EXPECT_EQ(text({0, 2}), "");
    EXPECT_EQ(text({}), "");

    const DeviceId id =
        parseDeviceId(" MANUFACTURER: Zelkor ;MDL:L200: B;MDL:twice;;nothing;:x;SN:; ;CMD:PJL");
    EXPECT_EQ(id, (DeviceId{{"MANUFACTURER", "Zelkor"}, {"MDL", "L200: B"}, {"SN", ""}, {"CMD", "PJL"}}));
    EXPECT_EQ(identityOf(id), (PrinterIdentity{"Zelkor", "L200: B", ""}));
}
