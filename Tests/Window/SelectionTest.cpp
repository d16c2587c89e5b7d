// Selecting a printer: what is shown, said and asked for.
#include "Manager/ZKManager.h"
#include "Tests/Support/PrivateCups.h"
#include "Tests/Window/WindowTesting.h"

namespace {

const std::string settings = "tips tips1 popUpBtns cofirmBtn";
const std::string warning = "tips errorTips";

const Tip notReady = {"Printer Status Tip", Indicator::none, 3};

class CupsWindowTest : public WindowTest {
    const PrivateCups cups_{true};
};

std::string fault(const std::string &name) {
    return R"("threshold": 7, "faults": [")" + name + "\"]";
}

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
              "Büro — 打印机|L200 in the hall|Third floor||Sample Laser at the desk");
    EXPECT_EQ(shown(), "tips");
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
        EXPECT_EQ(shown(), parts) << "deselecting changes nothing";
        EXPECT_FALSE(application.isRunningModal());
    }
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
