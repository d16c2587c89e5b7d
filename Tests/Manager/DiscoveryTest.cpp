#include "Manager/PrinterListCollector.h"
#include "Manager/ZKManager.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/RunLoop/NSRunLoop.h"
#include "Platform/Runtime/Object/Class.h"
#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Manager/ScriptedTransport.h"

#include <cstring>

namespace {

const std::string listCall = "list " + std::to_string(VENDOR_ID);

/// The one manager as a new one, its time in hand.
class Discovery : public testing::Test {
protected:
    ~Discovery() override {
        manager->zk_stopDiscoverPrinter();
        manager->setStopRepeatDiscover(false);
        manager->setCallback(nullptr);
        manager->setPrinterList(nullptr);
    }

    Ref<DiscoveryCallback> into(Lines &serials) {
        return makeBlock<void(const Ref<ZKUSB> &)>(
            [&](const Ref<ZKUSB> &record) { serials.push_back(utf8(record->serialNumber())); });
    }

    Lines listedSerials() const { return serialsOf(*manager->printerList()); }

    /// How many passes asked the transport since the last time.
    std::size_t passes() {
        const Lines calls = transport.takeCalls();
        EXPECT_EQ(calls, Lines(calls.size(), listCall));
        return calls.size();
    }

    /// Moves time, serves the mode and says how many passes that made.
    std::size_t passesAfter(dispatch::Instant::Duration time, NSRunLoopMode mode = NSDefaultRunLoopMode) {
        clock.advance(time);
        NSRunLoop::currentRunLoop()->runOnce(mode);
        return passes();
    }

    LogLines log;
    ScriptedTransport transport;
    dispatch::ManualClock clock;
    dispatch::ClockScope scope{clock};
    const Ref<ZKManager> manager = ZKManager::shared();
    Lines found;
};

} // namespace

TEST_F(Discovery, everyRoadLeadsToTheOneManager) {
    EXPECT_EQ(ZKManager::allocWithZone(), manager);
    EXPECT_EQ(manager->copy(), manager);
    EXPECT_EQ(class_createInstance(ZKManager::class_()), manager);
}

TEST_F(Discovery, printerListIsMadeOnceAndAssignedAsACopy) {
    Ref<ZKSafeMutableArray> elsewhere;
    std::thread reader([&] { elsewhere = manager->printerList(); });
    const auto list = manager->printerList();
    reader.join();
    EXPECT_EQ(list, elsewhere);

    const auto mine = make<ZKSafeMutableArray>();
    mine->addObject(recordOf("L200 Series", "A"));
    manager->setPrinterList(mine);
    mine->addObject(recordOf("L200 Series", "B"));
    EXPECT_EQ(listedSerials(), Lines{"A"});
}

TEST_F(Discovery, readsRecordsToTheirLastByte) {
    tl_usb_device_info full = deviceOf(std::string(256, 's'), "Büro-Drucker 打印机");
    std::memset(full.manufacturer, 'm', 256);
    full.pid = 0x1234;
    full.vid = 0xFFFE;
    transport.devices = {full, {"SN\0rest", "broken \xC3", "", 0, 0}}; // half a character

    manager->setCallback(makeBlock<void(const Ref<ZKUSB> &)>([&](const Ref<ZKUSB> &record) {
        for (const auto &text :
             {record->serialNumber(), record->printerType(), record->printerName(), record->manufacturer()})
            found.push_back(utf8(text));
        found.push_back(std::to_string(record->PID()) + " " + std::to_string(record->VID()));
    }));
    manager->discoverPrinter();
    EXPECT_THAT(found, ElementsAre(std::string(256, 's'), "Büro-Drucker 打印机", "Büro-Drucker 打印机",
                                   std::string(256, 'm'), "4660 65534", "SN", "none", "none", "", "0 0"));
}

TEST_F(Discovery, passEmptiesTheListAndCollectsAnew) {
    manager->setCallback(printerListCollector(manager->printerList()));
    const struct {
        std::vector<tl_usb_device_info> devices;
        std::optional<std::int32_t> count;
        bool givesList;
        Lines listed;
    } rows[] = {
        {{deviceOf("A"), deviceOf("B")}, {}, true, {"A", "B"}},
        {{deviceOf("C")}, {}, true, {"C"}},
        {{deviceOf("A"), deviceOf("B")}, 1, true, {"A"}},
        {{deviceOf("A")}, 0, true, {}},
        {{deviceOf("A")}, -1, true, {}},
        {{deviceOf("A")}, {}, false, {}},
    };
    for (const auto &row : rows) {
        transport.devices = row.devices;
        transport.deviceCount = row.count;
        transport.givesList = row.givesList;
        manager->discoverPrinter();
        EXPECT_EQ(listedSerials(), row.listed);
    }
    manager->setCallback(nullptr);
    transport.givesList = true;
    manager->discoverPrinter();
    EXPECT_EQ(listedSerials(), Lines{}) << "without callback nobody collects";
}

TEST_F(Discovery, stopsBeforeAndBetween) {
    transport.devices = {deviceOf("A")};
    manager->setCallback(printerListCollector(manager->printerList()));
    manager->discoverPrinter();
    EXPECT_EQ(passes(), 1u);

    transport.devices = {deviceOf("B")};
    transport.onCall = [&](const std::string &) { manager->setStopRepeatDiscover(true); };
    manager->discoverPrinter();
    EXPECT_EQ(passes(), 1u);
    EXPECT_EQ(listedSerials(), Lines{"A"});
    manager->discoverPrinter();
    EXPECT_EQ(passes(), 0u);
    EXPECT_EQ(listedSerials(), Lines{"A"});
}

TEST_F(Discovery, callbackMayReplaceItselfAndStartAnotherPass) {
    transport.devices = {deviceOf("A"), deviceOf("B")};
    Lines later;
    manager->setCallback(makeBlock<void(const Ref<ZKUSB> &)>([&](const Ref<ZKUSB> &record) {
        found.push_back(utf8(record->serialNumber()));
        manager->zk_discoverPrinter(into(later));
    }));
    manager->discoverPrinter();
    EXPECT_EQ(found, Lines{"A"});
    EXPECT_EQ(later, (Lines{"A", "B", "B"})) << "the inner pass, then the rest of the outer one";
}

TEST_F(Discovery, passesAtOnceAndThenEveryTwoSecondsInTheDefaultModeOnly) {
    transport.devices = {deviceOf("A")};
    manager->zk_discoverPrinter(into(found));
    EXPECT_EQ(passes(), 1u);
    EXPECT_EQ(found, Lines{"A"});
    EXPECT_EQ(passesAfter(1999ms), 0u);
    EXPECT_EQ(passesAfter(1ms), 1u);
    EXPECT_EQ(passesAfter(2s), 1u);
    EXPECT_EQ(passesAfter(7s, NSModalPanelRunLoopMode), 0u);
    EXPECT_EQ(passesAfter(0s), 1u) << "one pass for all that were missed";
    EXPECT_EQ(passesAfter(999ms), 0u);
    EXPECT_EQ(passesAfter(1ms), 1u) << "the grid stays";

    manager->setStopRepeatDiscover(true);
    EXPECT_EQ(passesAfter(2s), 0u);
    manager->setStopRepeatDiscover(false);
    EXPECT_EQ(passesAfter(2s), 1u);

    const auto timer = manager->localTimer();
    manager->zk_stopDiscoverPrinter();
    EXPECT_FALSE(timer->isValid());
    EXPECT_EQ(manager->localTimer(), nullptr);
    EXPECT_TRUE(manager->stopRepeatDiscover());
    manager->setStopRepeatDiscover(false);
    EXPECT_EQ(passesAfter(10s), 0u);
}

TEST_F(Discovery, secondStartLeavesTheEarlierTimerRunning) {
    transport.devices = {deviceOf("A")};
    Lines replaced;
    manager->zk_discoverPrinter(into(replaced));
    const auto earlier = manager->localTimer();
    manager->setStopRepeatDiscover(true);
    manager->zk_discoverPrinter(into(found));
    EXPECT_TRUE(manager->stopRepeatDiscover());
    EXPECT_EQ(passes(), 1u) << "the second start is suppressed";
    EXPECT_NE(manager->localTimer(), earlier);

    manager->setStopRepeatDiscover(false);
    EXPECT_EQ(passesAfter(2s), 2u);
    EXPECT_EQ(replaced, Lines{"A"});
    EXPECT_EQ(found, (Lines{"A", "A"}));

    manager->zk_stopDiscoverPrinter();
    EXPECT_EQ(passesAfter(2s), 0u);
    EXPECT_TRUE(earlier->isValid());
    manager->setStopRepeatDiscover(false);
    EXPECT_EQ(passesAfter(2s), 1u) << "of the earlier timer";
    earlier->invalidate();
}
