// What is told of the computer: from files as kernels write them, from hostile ones, and beside the system's
// own programs. docs/host.md quotes from here.
#include "Frameworks/QNCategoriesPro/Host/QNDevice.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/Foundation/Dates/NSDate.h" // IWYU pragma: keep: it is the complete type
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/Words.h"

#include <cstdio>

namespace {

using testing::Pair;

/// What a program of the system prints, in its own words.
std::string output(const std::string &command) {
    const std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen(("LC_ALL=C " + command).c_str(), "r"), pclose);
    std::string all;
    for (int one; (one = fgetc(pipe.get())) != EOF;)
        all += static_cast<char>(one);
    return all;
}

std::map<std::string, std::vector<std::string>> table(const std::string &text) {
    std::map<std::string, std::vector<std::string>> rows;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (const auto row = words(line); !row.empty())
            rows[row[0]].assign(row.begin() + 1, row.end());
    return rows;
}

/// A computer made of files.
class MadeUpDevice : public testing::Test {
protected:
    void write(const std::string &path, const std::string &contents) { root.put(path, contents); }
    static std::string row(const std::string &name, QNTraffic traffic) {
        return name + ": " + std::to_string(traffic.receivedBytes) + " " +
               std::to_string(traffic.receivedPackets) + " 0 0 0 0 0 0 " + std::to_string(traffic.sentBytes) +
               " " + std::to_string(traffic.sentPackets) + " 0 0 0 0 0 0\n";
    }

    const TemporaryFolder root;
    dispatch::ManualClock clock;
    const dispatch::ClockScope scope{clock};
    std::map<std::string, QNFileSystemSize> sizes;
    std::vector<std::string> asked;
    std::vector<qn::InterfaceAddress> addresses;
    std::optional<QNFileSystemSize> sizeAt(const std::string &place) {
        asked.push_back(place);
        const auto found = sizes.find(place);
        return found == sizes.end() ? std::nullopt : std::optional(found->second);
    }
    const QNDevice device{{.root = root.path(),
                           .fileSystemSizes = [this](const auto &place) { return sizeAt(place); },
                           .interfaceAddresses = [this] { return addresses; }}};
};

} // namespace

TEST(QNDevice, theManualsExample) {
    const QNDevice device;
    const auto before = device.network();
    EXPECT_GT(device.memory().available.value_or(1), 0u);
    for (const QNFileSystem &one : device.fileSystems()) {
        const auto size = one.size.value_or(QNFileSystemSize());
        EXPECT_LE(size.available, size.total) << text(one.mountPoint);
    }

    const auto after = device.network();
    const auto traffic = qn::trafficBetween(before, after, QNInterfaceKind::loopback).value_or(QNTraffic());
    EXPECT_GE(traffic.receivedBytes, traffic.receivedPackets);
}

TEST_F(MadeUpDevice, tellsNothingOfNothing) {
    EXPECT_FALSE(device.machine().manufacturer || device.machine().model);
    const QNSystem system = device.system();
    EXPECT_FALSE(system.name || system.version || system.kernel || system.startTime);
    EXPECT_FALSE(device.processorCount() || device.processors().all);
    const QNMemory memory = device.memory();
    EXPECT_FALSE(memory.total || memory.used || memory.available || memory.swapTotal || memory.swapUsed ||
                 memory.swapFree);
    EXPECT_TRUE(device.fileSystems().empty() && device.network().interfaces.empty() &&
                device.batteries().empty());
    const QNProcessorLoad load = qn::loadBetween(device.processors(), device.processors());
    EXPECT_TRUE(!load.total && load.cores.empty());
    EXPECT_EQ(qn::trafficOf(device.network(), QNInterfaceKind::wired), std::nullopt);
}

TEST_F(MadeUpDevice, tellsMachineSystemMemoryAndBatteries) {
    write("sys/firmware/devicetree/base/model", std::string("Sample Board 4\0", 15));
    const std::array<const char *, 4> machines[] = {
        // vendor and product as they are in the files, manufacturer and model as they are told
        {"To Be Filled By O.E.M.\n", "", "(none)", "Sample Board 4"},
        {" Sample Inc. \nmore\n", "Ünit 5\n", "Sample Inc.", "Ünit 5"},
        {"Sample Inc.", "\xFF\n", "Sample Inc.", "Sample Board 4"}, // what is no text is not told
    };
    for (const auto &[vendor, product, manufacturer, model] : machines) {
        write("sys/class/dmi/id/sys_vendor", vendor);
        write("sys/class/dmi/id/product_name", product);
        EXPECT_EQ(text(device.machine().manufacturer), manufacturer);
        EXPECT_EQ(text(device.machine().model), model);
    }

    write("usr/lib/os-release", "NAME=\"Fallback\"\n");
    EXPECT_EQ(text(device.system().name), "Fallback");
    write("etc/os-release", "PRETTY_NAME=x\n#NAME=no\nNAME=\"Sample \\\"OS\\\"\"\nVERSION_ID='12'\n");
    write("proc/sys/kernel/osrelease", "6.1.0-18-amd64\n");
    write("proc/stat", "cpu  1 2 3 4 5 6 7 8 9 10\nbtime 1700000000\n");
    const QNSystem system = device.system();
    EXPECT_EQ(text(system.name) + " " + text(system.version), "Sample \"OS\" 12");
    EXPECT_EQ(text(system.kernel), "6.1.0-18-amd64");
    EXPECT_EQ(system.startTime->timeIntervalSince1970(), 1700000000);

    write("proc/meminfo",
          "MemTotal:  1000 kB\nMemFree: 1 kB\nMemAvailable:  400 kB\nSwapTotal: 0 kB\nSwapFree: 0 kB\n");
    const QNMemory whole = device.memory();
    EXPECT_TRUE(whole.total == 1024000u && whole.used == 614400u);
    EXPECT_TRUE(whole.swapTotal == 0u && whole.swapUsed == 0u) << "told, not absent";
    write("proc/meminfo", "MemTotal:  1000 kB\nMemAvailable:  -4 kB\nSwapTotal: 1 kB\nSwapFree: 2 kB\n");
    const QNMemory odd = device.memory();
    EXPECT_FALSE(odd.used || odd.available || odd.swapUsed);

    const std::array<const char *, 5> supplies[] = {
        {"AC", "Mains\n", "System", "100", "Full"},
        {"BAT0", "Battery\n", "System\n", "57\n", "Discharging\n"},
        {"BAT1", "Battery\n", "", "101\n", "Unknown\n"},
        {"mouse", "Battery\n", "Device\n", "90\n", "Discharging\n"}};
    for (const auto &[name, type, whose, capacity, status] : supplies) {
        const auto folder = std::string("sys/class/power_supply/") + name;
        write(folder + "/type", type);
        write(folder + "/scope", whose);
        write(folder + "/capacity", capacity);
        write(folder + "/status", status);
    }
    const auto batteries = device.batteries();
    ASSERT_EQ(batteries.size(), 2u);
    EXPECT_EQ(batteries[0].charge, 0.57);
    EXPECT_EQ(batteries[0].state, QNBatteryState::discharging);
    EXPECT_TRUE(!batteries[1].charge && !batteries[1].state);
}

TEST_F(MadeUpDevice, tellsTheLoadBetweenTwoMoments) {
    write("sys/devices/system/cpu/online", "0-1,4\n");
    EXPECT_EQ(device.processorCount(), 3u);
    for (const char *nonsense : {"", "x", "1-", "3-1", "-1", "0,,1"}) {
        write("sys/devices/system/cpu/online", nonsense);
        EXPECT_EQ(device.processorCount(), std::nullopt) << nonsense;
    }
    //                 user nice system idle waiting irq softirq stolen guest
    write("proc/stat", "cpu  100 0 100 800 0 0 0 0 50 0\ncpu0 10 0 0 90 0 0 0 0\ncpu1 5 5 0 90\ncpux 1 2 3 "
                       "4\ncpu7\nintr 1 2 3\n");
    const auto before = device.processors();
    EXPECT_EQ(before.all, (QNProcessorTimes{200, 1000}));
    EXPECT_THAT(before.cores,
                ElementsAre(Pair(0, QNProcessorTimes{10, 100}), Pair(1, QNProcessorTimes{10, 100})));
    clock.advance(2s);
    write("proc/stat", "cpu  110 10 105 840 5 10 10 10 50 0\ncpu0 110 0 0 90 0 0 0 0\ncpu2 1 1 1 1\n");
    const auto load = qn::loadBetween(before, device.processors());
    EXPECT_EQ(load.seconds, 2);
    EXPECT_EQ(load.total, 0.55);
    EXPECT_THAT(load.cores, ElementsAre(Pair(0, 1.0))) << "1 was switched off, 2 on";
    EXPECT_EQ(qn::loadBetween(device.processors(), before).total, std::nullopt)
        << "time does not run backwards";
}

TEST_F(MadeUpDevice, tellsFileSystems) {
    write("proc/self/mounts", "proc /proc proc rw 0 0\n"
                              "/dev/sda1 /long/way ext4 rw 0 0\n"
                              "/dev/sda1 / ext4 rw 0 0\n"
                              "tmpfs /run tmpfs rw 0 0\n"
                              "tmpfs /a\\040b\\134\\9 tmpfs rw 0 0\n"
                              "old /mnt ext3 rw 0 0\n"
                              "new /mnt xfs rw 0 0\n"
                              "server:/export /net nfs4 rw 0 0\n"
                              "//server/share /share cifs rw 0 0\n"
                              "auto /auto autofs rw 0 0\n"
                              "program /program fuse.program rw 0 0\n"
                              "/dev/sdb1 /silent ext4 rw 0 0\n"
                              "broken\n");
    sizes = {{"/proc", {}},
             {"/", {100, 50, 40}},
             {"/run", {10, 9, 9}},
             {"/a b\\\\9", {20, 1, 1}},
             {"/mnt", {30, 2, 2}}};
    std::string seen;
    for (const QNFileSystem &one : device.fileSystems())
        seen += text(one.device) + " " + text(one.mountPoint) + " " + text(one.type) + " " +
                (one.size ? std::to_string(one.size->total) : "?") + "\n";
    EXPECT_EQ(seen, "/dev/sda1 / ext4 100\ntmpfs /run tmpfs 10\ntmpfs /a b\\\\9 tmpfs 20\nnew /mnt xfs 30\n"
                    "server:/export /net nfs4 ?\n//server/share /share cifs ?\nprogram /program fuse.program "
                    "?\n/dev/sdb1 /silent ext4 ?\n");
    for (const char *elsewhere : {"/net", "/share", "/auto", "/program"})
        EXPECT_THAT(asked, testing::Not(testing::Contains(elsewhere))) << "might never answer";
}

TEST_F(MadeUpDevice, tellsInterfacesAndTheirTraffic) {
    const struct {
        const char *name, *type, *state;
        std::vector<const char *> files;
        QNInterfaceKind kind;
        std::optional<bool> isLinked;
    } rows[] = {{"br0", "1", "down", {}, QNInterfaceKind::other, false},
                {"can0", "280", "up", {"device/x"}, QNInterfaceKind::other, true},
                {"eth0", "1", "up", {"device/x"}, QNInterfaceKind::wired, true},
                {"eth1", "1", "lowerlayerdown", {"device/x"}, QNInterfaceKind::wired, false},
                {"lo", "772", "unknown", {"carrier"}, QNInterfaceKind::loopback, true},
                {"tap0", "1", "up", {"tun_flags"}, QNInterfaceKind::tunnel, true},
                {"tun0", "65534", "unknown", {"tun_flags"}, QNInterfaceKind::tunnel, std::nullopt},
                {"wg0", "65534", "unknown", {}, QNInterfaceKind::tunnel, std::nullopt},
                {"wlan0", "1", "up", {"device/x", "phy80211"}, QNInterfaceKind::wireless, true}};
    for (const auto &one : rows) {
        const auto folder = std::string("sys/class/net/") + one.name + "/";
        write(folder + "type", one.type + std::string("\n"));
        write(folder + "operstate", one.state + std::string("\n"));
        for (const char *file : one.files)
            write(folder + file, "1\n");
    }
    write("sys/class/net/bonding_masters", "\n");
    write("sys/class/net/eth0/address", "00:00:5e:00:53:01\n");
    write("sys/class/net/lo/address", "00:00:00:00:00:00\n");
    addresses = {{"eth0", false, "192.0.2.7"}, {"eth0", true, "2001:db8::7"}, {"gone0", false, "192.0.2.9"}};
    const std::string heading = "Inter-| Receive | Transmit\n face |bytes packets|bytes packets\n";
    write("proc/net/dev", heading + row("  lo", {1, 2, 3, 4}) + row("eth0", {100, 10, 200, 20}) +
                              row("eth1", {1000, 100, 2000, 200}) + row("wlan0", {5, 5, 5, 5}) +
                              "tun0: 1 2 three\nwg0: 1 -2\n");
    const auto before = device.network();
    ASSERT_EQ(before.interfaces.size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(text(before.interfaces[i].name), rows[i].name);
        EXPECT_EQ(before.interfaces[i].kind, rows[i].kind) << rows[i].name;
        EXPECT_EQ(before.interfaces[i].isLinked, rows[i].isLinked) << rows[i].name;
    }
    const QNNetworkInterface &wired = before.interfaces[2], &loopback = before.interfaces[4];
    EXPECT_EQ(text(wired.hardwareAddress), "00:00:5e:00:53:01");
    EXPECT_EQ(loopback.hardwareAddress, nullptr);
    ASSERT_TRUE(wired.IPv4Addresses.size() == 1 && wired.IPv6Addresses.size() == 1);
    EXPECT_EQ(text(wired.IPv4Addresses[0]) + " " + text(wired.IPv6Addresses[0]), "192.0.2.7 2001:db8::7");
    EXPECT_EQ(qn::trafficOf(before, QNInterfaceKind::wired), (QNTraffic{1100, 110, 2200, 220}));
    EXPECT_EQ(qn::trafficOf(before, QNInterfaceKind::tunnel), std::nullopt);

    clock.advance(1s);
    write("proc/net/dev", heading + row("lo", {2, 2, 3, 4}) + row("eth0", {150, 11, 200, 21}) +
                              row("eth1", {1, 1, 1, 1}) + row("new0", {9, 9, 9, 9}));
    const auto after = device.network();
    EXPECT_EQ(after.moment - before.moment, 1s);
    EXPECT_THAT(qn::trafficBetween(before, after),
                ElementsAre(Pair("eth0", QNTraffic{50, 1, 0, 1}), Pair("lo", QNTraffic{1, 0, 0, 0})))
        << "what began anew and what is gone is not known";
    EXPECT_EQ(qn::trafficBetween(before, after, QNInterfaceKind::wired), (QNTraffic{50, 1, 0, 1}));
    EXPECT_EQ(qn::trafficBetween(before, after, QNInterfaceKind::wireless), std::nullopt);
}

TEST_F(MadeUpDevice, bearsWhateverIsInTheFiles) {
    Random random(1);
    auto pieces = words(R"(cpu cpu0 : 1 18446744073709551615 -1 MemTotal: kB \ \04 \777 / " NAME= eth0 btime
                           0-4294967295 tmpfs ' , 99999999999999999999 MemAvailable:)");
    pieces.insert(pieces.end(), {" ", "\n", "\t", "\xFF", std::string(1, '\0')});
    const auto files = words(R"(
        proc/stat proc/meminfo proc/net/dev proc/self/mounts etc/os-release sys/class/net/eth0/type
        sys/class/net/eth0/operstate sys/devices/system/cpu/online sys/class/power_supply/B/type
        sys/class/dmi/id/sys_vendor)");
    for (int round = 0; round < 60; ++round) {
        for (const std::string &file : files)
            write(file, random.text(pieces, 30));
        device.machine();
        device.system();
        const QNMemory memory = device.memory();
        EXPECT_TRUE(!memory.used || *memory.used <= *memory.total);
        const auto reading = device.processors();
        EXPECT_TRUE(!reading.all || reading.all->busy <= reading.all->total || reading.all->total < 1u << 20);
        device.processorCount();
        device.fileSystems();
        device.network();
        device.batteries();
    }
}

TEST(QNDevice, saysWhatTheSystemsOwnProgramsSay) {
    const QNDevice device;
    const auto free = table(output("free --bytes"));
    const QNMemory memory = device.memory();
    ASSERT_TRUE(memory.total && memory.used && memory.swapTotal);
    EXPECT_EQ(std::to_string(*memory.total), free.at("Mem:")[0]);
    EXPECT_EQ(std::to_string(*memory.swapTotal), free.at("Swap:")[0]);
    EXPECT_NEAR(static_cast<double>(*memory.available), std::stod(free.at("Mem:")[5]),
                static_cast<double>(*memory.total) / 4);

    const std::string processors = output("lscpu --parse=CPU | grep --invert-match '#'");
    EXPECT_EQ(device.processorCount(), std::ranges::count(processors, '\n'));

    // Of several places of one device, other ones may be shown there.
    std::set<std::string> theirs, ours;
    for (const auto &[place, row] : table(output("df --local --block-size=1 --output=target,size,fstype")))
        if (place.starts_with('/') && !row[1].starts_with("fuse."))
            theirs.insert(row[0] + " " + row[1]);
    for (const QNFileSystem &one : device.fileSystems())
        if (one.size)
            ours.insert(std::to_string(one.size->total) + " " + text(one.type));
    EXPECT_EQ(ours, theirs);

    const auto before = device.network();
    const auto links = output("ip -statistics -oneline link");
    const auto after = device.network();
    const auto addresses = output("ip -oneline address");
    for (std::size_t i = 0; i < after.interfaces.size(); ++i) {
        const QNNetworkInterface &one = after.interfaces[i];
        const std::size_t begin = links.find(": " + text(one.name));
        ASSERT_NE(begin, links.npos) << text(one.name);
        const std::string line = links.substr(begin, links.find('\n', begin) - begin);
        EXPECT_TRUE(!one.hardwareAddress || line.find(text(one.hardwareAddress)) != line.npos);
        EXPECT_EQ(line.find("LOOPBACK") != line.npos, one.kind == QNInterfaceKind::loopback);
        for (const auto &list : {one.IPv4Addresses, one.IPv6Addresses})
            for (const auto &address : list)
                EXPECT_NE(addresses.find(" " + text(address) + "/"), addresses.npos) << text(address);
        // "RX:  bytes packets …\      26286789    2439 …"
        const auto received = std::stoull(line.substr(line.find('\\', line.find("RX:")) + 1));
        EXPECT_LE(before.interfaces.at(i).traffic.value().receivedBytes, received);
        EXPECT_LE(received, one.traffic.value().receivedBytes);
        const auto sent = std::stoull(line.substr(line.find('\\', line.find("TX:")) + 1));
        EXPECT_LE(before.interfaces.at(i).traffic.value().sentBytes, sent);
        EXPECT_LE(sent, one.traffic.value().sentBytes);
    }
    std::size_t count = 0;
    for (const QNNetworkInterface &one : device.network().interfaces)
        count += one.IPv4Addresses.size() + one.IPv6Addresses.size();
    EXPECT_EQ(count, static_cast<std::size_t>(std::ranges::count(addresses, '\n')));
}
