// The reminder: what confirming a choice writes and says.
#include "Tests/Window/WindowTesting.h"

TEST_F(WindowTest, aChoiceIsWrittenAndNotReadBack) {
    openWithLaser();
    EXPECT_EQ(clickConfirm(), Tips{}) << "no printer is bound yet";
    EXPECT_EQ(choose(0), Tips{reading});
    const std::pair<int, int> rows[] = {{9, 10}, {-1, 0}}; // nothing selected turns the reminder off
    for (const auto &[index, threshold] : rows) {
        popUp->setCurrentIndex(index);
        EXPECT_EQ(clickConfirm(), Tips{success});
        EXPECT_EQ(thresholdOf("SN0001"), threshold);
        EXPECT_EQ(popUp->currentIndex(), index);
    }
    EXPECT_EQ(logged("get honer"), 2);
}

TEST_F(WindowTest, aWriteThatFailsSaysSoAndOneThatEndsSilentlyNothing) {
    openWithLaser();
    EXPECT_EQ(choose(0), Tips{reading});
    const Tip failure = {"Setting fail", Indicator::none, 2};
    const std::pair<const char *, Tips> rows[] = {
        {"write_fails", {}}, {"wrong_echo", {failure}}, {"empty_data", {success}}};
    popUp->setCurrentIndex(6);
    for (const auto &[fault, tips] : rows) {
        plugLaser(std::string(R"("faults": [")") + fault + "\"]");
        EXPECT_EQ(clickConfirm(), tips) << fault;
        EXPECT_EQ(popUp->currentIndex(), 6) << fault;
        EXPECT_TRUE(confirm->isVisible() && confirm->isEnabled()) << fault;
    }
}

TEST_F(WindowTest, twoQuickConfirmsBothWrite) {
    openWithLaser();
    EXPECT_EQ(choose(0), Tips{reading});
    popUp->setCurrentIndex(4);
    const Tips tips = tipsDuring([&] {
        confirm->click();
        confirm->click();
    });
    EXPECT_EQ(logged("pjl_tonerhint_set:OID_PLATFORM_CONSUMEABLE_HINT=5"), 2);
    EXPECT_EQ(thresholdOf("SN0001"), 5);
    // The completion of the later one serves both, unless it is over by the time the earlier one ends.
    ASSERT_FALSE(tips.empty());
    EXPECT_EQ(tips.front(), success);
    EXPECT_LE(tips.size(), 2u);
}
