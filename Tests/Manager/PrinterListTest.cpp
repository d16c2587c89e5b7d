#include "Manager/PrinterListCollector.h"
#include "Manager/SelectedPrinterLookup.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Tests/Manager/ManagerTesting.h"

namespace {

Lines collected(const Lines &serials) {
    const auto list = make<ZKSafeMutableArray>();
    for (const std::string &serial : serials)
        collectPrinter(recordOf("L200 Series", serial), list);
    return serialsOf(*list);
}

/// A printer is dropped only when its serial number is that of the last one and of no earlier one.
Lines collectedByRule(const Lines &serials) {
    Lines listed;
    for (const std::string &serial : serials)
        if (serial == "none" || listed.empty() || listed.back() != serial ||
            std::ranges::count(listed, serial) > 1)
            listed.push_back(serial);
    return listed;
}

} // namespace

TEST(PrinterListCollector, dropsAsTheRuleSaysForEverySequence) {
    const LogLines log;
    Lines serials;
    int sequences = 0;
    const auto walk = [&](const auto &self) -> void {
        ++sequences;
        EXPECT_EQ(collected(serials), collectedByRule(serials)) << testing::PrintToString(serials);
        if (serials.size() == 5)
            return;
        for (const char *const serial : {"none", "A", "B", "C"}) {
            serials.emplace_back(serial);
            self(self);
            serials.pop_back();
        }
    };
    walk(walk);
    EXPECT_EQ(sequences, 1365);
}

TEST(PrinterListCollector, logsWhatItScans) {
    LogLines log;
    const auto list = make<ZKSafeMutableArray>();
    const auto first = recordOf("L200 Series", "A"), second = recordOf("Sample Laser Series", "B");
    const auto third = recordOf("none", "A");
    third->setIp(u"192.0.2.1"_ns);
    const auto callback = printerListCollector(list);
    (*callback)(nullptr);
    EXPECT_EQ(log.take(), Lines{});
    (*callback)(first);
    EXPECT_EQ(log.take(), (Lines{"serialNumber:A", "printer:L200 Series", "ip:(null)", "------   -------"}));
    (*callback)(second);
    const std::string scanned = "------  " + utf8(first->description()) + " -------";
    EXPECT_EQ(log.take(), (Lines{"serialNumber:B", "printer:Sample Laser Series", "ip:(null)",
                                 "------   -------", scanned}));
    (*callback)(third);
    EXPECT_EQ(log.take(),
              (Lines{"serialNumber:A", "printer:(null)", "ip:192.0.2.1", "------   -------", scanned}))
        << "the scan ends at the first record with the serial number";
    EXPECT_EQ(list->count(), 3u);
}

TEST(SelectedPrinterLookup, findsTheFirstRecordWhoseTextsStandInTheUri) {
    const std::vector<Ref<ZKUSB>> records = {
        recordOf("none", "SN0001"),     recordOf("Sample Laser Series", "none"),
        recordOf("", "SN0001"),         recordOf("Sample Laser Series", ""),
        recordOf("L200 Series", "SN"),  recordOf("Sample Laser Series", "SN0001"),
        recordOf("Laser", "SN000"),     recordOf("Ink+1000", "F1"),
        recordOf("Bürodrucker", "ä 1"), recordOf("L200%20Series", "SN0009x"),
    };
    const auto list = make<ZKSafeMutableArray>();
    for (const auto &record : records)
        list->addObject(record);
    const struct {
        const char *uri;
        int match;
    } rows[] = {
        {sampleUri, 5},
        {"usb://Zelkor/L200%20Series?serial=SN0001", 4}, // part of the serial number is enough
        {"socket://host/SN0001/Sample%20Laser%20Series", 5},
        {"usb://Zelkor/Laser?serial=SN0001", 6},
        {"usb://Zelkor/Sample+Laser+Series?serial=SN0001", 6}, // no spaces, but "Laser"
        {"usb://Zelkor/L200+Series?serial=SN0002", -1},
        {"usb://Zelkor/L200 Series?serial=SN0002", -1},
        {"usb://Zelkor/l200%20series?serial=SN0002", -1},
        {"usb://Zelkor/L200%20Series?serial=sn0002", -1},
        {"usb://Fabrikat/Ink+1000?serial=F1", 7},
        {"usb://Fabrikat/Bürodrucker?serial=ä 1", 8}, // spaces of a serial number stay
        {"usb://Zelkor/L200%20Series?serial=SM0009x", -1},
        {"", -1},
        {"none", -1},
    };
    LogLines log;
    for (const auto &[uri, match] : rows) {
        const auto found = recordForDeviceUri(textOf(uri), list);
        EXPECT_EQ(found, match < 0 ? nullptr : records[static_cast<std::size_t>(match)]) << uri;
        EXPECT_EQ(log.take(), match < 0 ? Lines{} : Lines{std::string("deviceuri:") + uri});
    }
    EXPECT_EQ(recordForDeviceUri(textOf(sampleUri), make<ZKSafeMutableArray>()), nullptr);
}
