// Selecting a printer: what is shown, said and asked for.
#include "Manager/ZKManager.h"
#include "Tests/Support/ListeningSocket.h"
#include "Tests/Support/PrivateCups.h"
#include "Tests/Window/WindowTesting.h"

#include <QAction>
#include <QTest>

#include <filesystem>
#include <poll.h>

namespace {

const std::string settings = "tips tips1 popUpBtns cofirmBtn";
const std::string warning = "tips errorTips";

const Tip notReady = {"Printer Status Tip", Indicator::none, 3};

class CupsWindowTest : public WindowTest {
    const PrivateCups cups_{true};
};

/// Sees the first time that a view is painted, and whether something held already then.
struct PaintWatch : QObject {
    PaintWatch(QWidget &view, std::function<bool()> condition) : condition_(std::move(condition)) {
        view.installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::Paint && !std::exchange(painted, true))
            conditionAtFirst = condition_();
        return false;
    }
    bool painted = false, conditionAtFirst = false;

private:
    std::function<bool()> condition_;
};

} // namespace

TEST_F(CupsWindowTest, showsTheQueuesAndWhatEachOfThemAnswers) {
    plugLaser(R"("threshold": 4)");
    open();
    EXPECT_EQ(table->model()->headerData(0, Qt::Horizontal).toString(), words("Printer Name"));
    QStringList choices, choiceWords, names;
    for (int i = 0; i < popUp->count(); ++i)
        choices += popUp->itemText(i);
    for (const char *key : {"Close", "Two Percent", "Three Percent", "Four Percent", "Five Percent",
                            "Six Percent", "Seven Percent", "Eight Percent", "Nine Percent", "Ten Percent"})
        choiceWords += words(key);
    EXPECT_EQ(choices, choiceWords);
    for (int row = 0; row < table->model()->rowCount(); ++row)
        names += table->model()->index(row, 0).data().toString();
    EXPECT_EQ(names.join(QLatin1Char('|')).toStdString(),
              "Büro — 打印机|L200 in the hall|Third floor|Zelkor_Plain|Sample Laser at the desk");
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(popUp->currentIndex(), 0);

    constexpr int l500 = 0, network = 2, laser = 4;
    const struct {
        std::string printer; // the laser's keys
        int row;
        Tips tips;
        std::string shown;
        int index;
    } steps[] = {
        {R"("threshold": 4)", network, {}, warning, 0},
        {R"("threshold": 4)", laser, {reading}, settings, 3},
        {R"("threshold": 6, "printer_status": 1)", laser, {reading}, settings, 5},
        {R"("threshold": 7, "printer_status": 2)", laser, {notReady}, settings, 5},
        {R"("threshold": 4)", network, {}, warning, 5},
        {fault("status_fails"), laser, {notReady}, settings, 5},
        {R"("threshold": 7)", l500, {notReady}, settings, 5}, // is not attached
        {fault("silent"), laser, {reading}, settings, 5},
        {R"("threshold": 0)", laser, {reading}, settings, 0},
    };
    long reads = 0;
    for (const auto &[printer, row, tips, parts, index] : steps) {
        plugLaser(printer);
        EXPECT_EQ(choose(row), tips) << printer;
        EXPECT_EQ(shown(), parts) << printer;
        EXPECT_EQ(popUp->currentIndex(), index) << printer;
        if (tips == Tips{reading})
            ++reads;
        EXPECT_EQ(logged("get honer sendACLWithPJL header:"), reads) << printer;
        table->clearSelection();
        QtTesting::settle();
        EXPECT_EQ(shown(), parts) << "deselecting changes nothing";
        EXPECT_FALSE(application.isRunningModal());
    }
}

TEST_F(CupsWindowTest, saysWhoseSettingsItShows) {
    plugLaser(R"("threshold": 4)");
    open();
    EXPECT_EQ(says("hint"), words("Printer List Description"));
    constexpr int l500 = 0, network = 2, laser = 4;
    EXPECT_EQ(choose(l500).size(), 1u);
    EXPECT_EQ(says("printerTitle"), QString());
    EXPECT_EQ(says("ownerNote"), words("No Printer, Not Attached"));
    EXPECT_EQ(says("levelNote"), words("Level Not Read"));
    EXPECT_EQ(says("hint"), QString());

    EXPECT_EQ(choose(laser), Tips{reading});
    EXPECT_EQ(says("printerTitle"), isolated(QStringLiteral("Sample Laser Series")));
    EXPECT_TRUE(says("serialNumber").contains(QStringLiteral("SN0001")));
    EXPECT_EQ(says("ownerNote"), QString());
    EXPECT_EQ(says("levelNote"), words("Level Read"));
    popUp->setCurrentIndex(6);
    EXPECT_EQ(says("levelNote"), words("Level Chosen"));
    EXPECT_EQ(clickConfirm(), Tips{success});
    EXPECT_EQ(says("levelNote"), words("Level Set"));

    EXPECT_EQ(choose(l500), Tips{notReady});
    EXPECT_EQ(says("printerTitle"), isolated(QStringLiteral("Sample Laser Series"))) << "still bound";
    EXPECT_EQ(says("ownerNote"),
              words("Other Printer, Not Attached").replace(QStringLiteral("%@"), says("printerTitle")));
    EXPECT_TRUE(popUp->accessibleDescription().contains(says("ownerNote"))) << "and is spoken";

    EXPECT_EQ(choose(network), Tips{});
    for (const char *label : {"printerTitle", "serialNumber", "ownerNote", "levelNote", "explanation"})
        EXPECT_EQ(says(label), QString()) << label;

    plugLaser(fault("silent"));
    EXPECT_EQ(choose(laser), Tips{reading});
    EXPECT_EQ(says("levelNote"), words("Level Not Read"));
    plugLaser(R"("threshold": 9)");
    EXPECT_EQ(tipsDuring([&] { part<QAction>("readAgainAction")->trigger(); }), Tips{reading});
    EXPECT_EQ(says("levelNote"), words("Level Read"));
    EXPECT_EQ(popUp->currentIndex(), 8) << "read again";

    const NSTableRow plain = table->lookOf(3), attached = table->lookOf(laser);
    EXPECT_TRUE(plain.isNameMuted && plain.more.contains(QStringLiteral("Zelkor_Plain")));
    EXPECT_EQ(attached.detail, words("USB, Attached"));
    plugLaser(fault("status_fails"));
    EXPECT_EQ(choose(laser), Tips{notReady});
    EXPECT_EQ(table->lookOf(laser).detail, words("USB, Not Ready"));
    EXPECT_EQ(says("ownerNote"), words("No Printer, Not Ready")) << "which are its own settings";
    std::filesystem::remove(printers.file("SN0001.json"));
    qt.elapse(2s);
    EXPECT_EQ(table->lookOf(laser).detail, words("USB, Not Attached")) << "within one pass";
    plugLaser();
    qt.elapse(2s);
    EXPECT_EQ(table->lookOf(laser).detail, words("USB, Attached")) << "it may be ready now";
}

TEST_F(WindowTest, anEmptyListSaysWhy) {
    open(); // without a print service
    EXPECT_EQ(table->placeholderText(), words("No Print Service"));
    EXPECT_EQ(table->accessibleDescription(), words("No Print Service"));
    EXPECT_EQ(part<QPushButton>("remedy")->text(), words("Read Again"));
    const PrivateCups cups(false);
    part<QPushButton>("remedy")->click();
    EXPECT_EQ(table->placeholderText(), words("Looking For Printers"));
    EXPECT_TRUE(QtTesting::eventually([&] { return view->areQueuesRead(); }));
    EXPECT_EQ(table->placeholderText(), words("No Printers"));
    EXPECT_EQ(logged("****numOfDests:"), 2);
}

TEST_F(WindowTest, isPaintedBeforeItAsksAPrintServiceThatNeverAnswers) {
    const ListeningSocket service(printers.file("no-server"));
    const auto isAsked = [&] {
        pollfd calls = {service.number, POLLIN, 0};
        return ::poll(&calls, 1, 0) == 1;
    };
    show();
    PaintWatch watch(*table->viewport(), isAsked);
    EXPECT_TRUE(QtTesting::eventually(isAsked));
    EXPECT_TRUE(watch.painted && !watch.conditionAtFirst);
    EXPECT_EQ(table->placeholderText(), words("Looking For Printers"));
    EXPECT_FALSE(view->areQueuesRead());
    EXPECT_TRUE(QtTesting::eventually([&] {
        qt.advance(1s);
        return view->areQueuesRead();
    }));
    EXPECT_EQ(table->placeholderText(), words("No Print Service"));
    EXPECT_EQ(part<QPushButton>("remedy")->text(), words("Read Again"));
}

TEST_F(WindowTest, aLongListCanBeNarrowed) {
    open();
    auto &search = *part<QWidget>("search");
    for (int i = 0; i < 13; ++i)
        addQueue(("Laser " + std::to_string(i)).c_str(), networkUri);
    part<QPushButton>("remedy")->click(); // which looks at the list anew
    EXPECT_TRUE(QtTesting::eventually([&] { return view->areQueuesRead(); }));
    EXPECT_TRUE(search.isVisible());
    view->find();
    QTest::keyClicks(&search, QStringLiteral("r 1"));
    EXPECT_EQ(table->firstShownRow(), 1);
    EXPECT_TRUE(table->isRowHidden(2) && !table->isRowHidden(12));
    QTest::keyClicks(&search, QStringLiteral("x"));
    EXPECT_EQ(table->firstShownRow(), -1);
    EXPECT_EQ(table->placeholderText(), words("No Match"));
    QTest::keyClick(&search, Qt::Key_Escape);
    EXPECT_EQ(table->firstShownRow(), 0);

    addQueue("三楼打印机", networkUri);
    QTest::keyClicks(&search, QStringLiteral("dyj"));
    EXPECT_EQ(table->firstShownRow(), 13);
    QTest::keyClick(&search, Qt::Key_Escape);
    QApplication::setKeyboardInputInterval(3'600'000); // however slow the machine is
    QTest::keyClicks(table, QStringLiteral("sanl"));
    EXPECT_EQ(table->selectedRow(), 13) << "Chinese by its sound";
}

TEST_F(WindowTest, aRejectedReadIsSaidInASecondTip) {
    openWithLaser(fault("wrong_echo"));
    const Tip rejected = {"Get Printer Toner", Indicator::none, 3};
    Tips tips = choose(0);
    ASSERT_FALSE(tips.empty());
    if (tips.front().seconds == 0) // when the answer was not quicker than the eye
        tips.erase(tips.begin());
    EXPECT_EQ(tips, (Tips{rejected, {"", Indicator::none, 3}}));
    EXPECT_EQ(popUp->currentIndex(), 0);
    EXPECT_EQ(shown(), settings);
}

TEST_F(WindowTest, aPrinterThatIsNotFoundLeavesTheEarlierOneBound) {
    openWithLaser(R"("threshold": 4)");
    addQueue("New", l200Uri);
    ZKManager::shared()->setStopRepeatDiscover(true);
    plug("SN0002", "L200 Series", R"("threshold": 9)"); // ready, but never discovered
    EXPECT_EQ(choose(1), Tips{reading});
    EXPECT_EQ(view->usbPrinter(), nullptr);
    EXPECT_EQ(popUp->currentIndex(), 0);
    EXPECT_EQ(clickConfirm(), Tips{}) << "nobody to write to";

    EXPECT_EQ(choose(0), Tips{reading});
    ZKUSB *const laser = view->usbPrinter().get();
    ASSERT_NE(laser, nullptr);
    popUp->setCurrentIndex(0);
    EXPECT_EQ(choose(1), Tips{reading});
    EXPECT_EQ(view->usbPrinter().get(), laser);
    EXPECT_EQ(popUp->currentIndex(), 3) << "the laser's threshold";
    popUp->setCurrentIndex(9);
    EXPECT_EQ(clickConfirm(), Tips{success});
    EXPECT_EQ(thresholdOf("SN0001"), 10);
    EXPECT_EQ(thresholdOf("SN0002"), 9);
}
