// What goes on by itself: discovery, and the table that keeps itself current.
#include "Manager/ZKManager.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h" // IWYU pragma: keep: it is the complete type
#include "Tests/Support/NoThreadLeft.h"
#include "Tests/Window/WindowTesting.h"

#include <QTimer>

#include <filesystem>

namespace {

/// Stands between the table and its data source and counts.
class Counted : public NSTableViewDataSource {
public:
    explicit Counted(NSTableViewDataSource &source) : source_(source) {}
    NSInteger numberOfRowsInTableView(NSTableView &table) override {
        ++counts;
        printers = ZKManager::shared()->printerList()->count();
        return source_.numberOfRowsInTableView(table);
    }
    Ref<NSString> tableView(NSTableView &table, const NSTableColumn *column, NSInteger row) override {
        return source_.tableView(table, column, row);
    }
    int counts = 0;
    NSUInteger printers = 0; // in the list at the latest count

private:
    NSTableViewDataSource &source_;
};

long threads() {
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return std::distance(begin(tasks), end(tasks));
}

} // namespace

TEST_F(WindowTest, discoversEveryTwoSecondsButNotDuringTips) {
    plugLaser();
    open();
    EXPECT_EQ(passes(), 1);
    qt.elapse(2s);
    EXPECT_EQ(passes(), 2);
    addQueue("Laser", laserUri);
    const long before = passes();
    long during = 0;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (tip->isVisible())
            during = passes();
    });
    look.start(0);
    EXPECT_EQ(choose(0), Tips{reading});
    look.stop();
    EXPECT_EQ(during, before) << "not while a tip is up";
    QtTesting::settle();
    EXPECT_EQ(passes(), before + 1) << "the one that was missed, at once";
}

TEST_F(WindowTest, theTableIsReadAfterThePassThatWokeTheThread) {
    openWithLaser();
    Counted counted(*view);
    table->setDataSource(&counted);
    qt.advance(NSTableView::reloadPace);
    EXPECT_TRUE(QtTesting::eventually([&] { return counted.counts > 0; }));
    QtTesting::settle();
    EXPECT_EQ(counted.printers, 1);
    table->reloadData(); // arranged now, whether the view's thread has come to ask for it or not
    const int before = counted.counts;
    std::filesystem::remove(printers.file("SN0001.json"));
    qt.advance(2s);
    EXPECT_TRUE(QtTesting::eventually([&] { return counted.counts > before; }));
    EXPECT_EQ(counted.printers, 0) << "what the pass found out, at once";
    table->setDataSource(view);
}

TEST_F(WindowTest, theTableStaysCurrentForAThousandReloads) {
    open();
    addQueue("Queue", networkUri);
    Counted counted(*view);
    table->setDataSource(&counted);
    table->selectRow(0);
    const auto reload = [&] {
        const int before = counted.counts;
        qt.advance(NSTableView::reloadPace);
        EXPECT_TRUE(QtTesting::eventually([&] { return counted.counts > before; }));
    };
    reload();
    const long atStart = threads();
    long most = 0;
    const int first = counted.counts;
    for (int i = 0; i < 1000; ++i) {
        reload();
        most = std::max(most, threads());
    }
    EXPECT_EQ(counted.counts, first + 1000) << "one reload a pace, never two at a time";
    EXPECT_LE(most, atStart + 20) << "each ends when its reload is under way";
    EXPECT_EQ(logged("****printerName:"), 1) << "no reload selects anew";
    table->setDataSource(view);
}

TEST_F(WindowTest, theTableStaysCurrentWithoutAThread) {
    open();
    const dispatch::NoThreadLeft none;
    addQueue("At the desk", laserUri);
    EXPECT_EQ(table->model()->rowCount(), 1);
}
