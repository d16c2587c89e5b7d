// The reminder: what confirming a choice writes and says.
#include "Tests/Window/WindowTesting.h"

TEST_F(WindowTest, aWriteSaysHowItEndsUnlessItEndsSilently) {
    openWithLaser();
    EXPECT_EQ(clickConfirm(), Tips{}) << "no printer is bound yet";
    EXPECT_EQ(choose(0), Tips{reading});
    const Tip failure = {"Setting fail", Indicator::none, 2};
    const std::pair<const char *, Tips> rows[] = {
        {"write_fails", {}}, {"wrong_echo", {failure}}, {"empty_data", {success}}};
    popUp->setCurrentIndex(6);
    for (const auto &[name, tips] : rows) {
        plugLaser(fault(name));
        EXPECT_EQ(clickConfirm(), tips) << name;
        EXPECT_EQ(popUp->currentIndex(), 6) << name;
        EXPECT_TRUE(confirm->isVisible() && confirm->isEnabled()) << name;
    }
    plugLaser(R"("threshold": 7)");
    popUp->setCurrentIndex(-1);
    EXPECT_EQ(clickConfirm(), Tips{success});
    EXPECT_EQ(thresholdOf("SN0001"), 0) << "nothing selected turns the reminder off";
    EXPECT_EQ(popUp->currentIndex(), -1);
    EXPECT_EQ(logged("get honer"), 2) << "read when it was selected, and not after a write";
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
    // The completion of the one that began later serves both; where that is over first, nobody is told.
    EXPECT_LE(tips.size(), 2u);
    if (!tips.empty())
        EXPECT_EQ(tips.front(), success);
}
