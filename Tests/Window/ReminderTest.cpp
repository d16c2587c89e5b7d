// The reminder: which choice shows a threshold, and what confirming a choice writes and says.
#include "Tests/Window/WindowTesting.h"

#include "Manager/ZKUSB.h"

#include <limits>

namespace {

const Tip success = {"Setting Success", Indicator::none, 2};
const Tip failure = {"Setting fail", Indicator::none, 2};
const Tip reading = {"Get Printer Status", Indicator::spins, 3};

class ReminderTest : public WindowTest {
protected:
    ReminderTest() {
        plugLaser();
        open();
        addQueue("Laser", laserUri);
    }
};

} // namespace

TEST_F(ReminderTest, everyThresholdHasItsChoice) {
    constexpr auto most = std::numeric_limits<std::int32_t>::max();
    constexpr auto least = std::numeric_limits<std::int32_t>::min();
    const std::pair<std::int32_t, int> rows[] = {{0, 0},  {1, 9},   {2, 1},    {3, 2},    {4, 3},  {5, 4},
                                                 {6, 5},  {7, 6},   {8, 7},    {9, 8},    {10, 9}, {11, 9},
                                                 {-1, 9}, {255, 9}, {most, 9}, {least, 9}};
    for (const auto &[threshold, index] : rows) {
        for (const int before : {4, -1}) {
            popUp->setCurrentIndex(before);
            view->changeTonerValueForUI(threshold);
            EXPECT_EQ(popUp->currentIndex(), index) << threshold;
        }
        popUp->setCurrentIndex(4);
        plugLaser("\"threshold\": " + std::to_string(threshold));
        EXPECT_EQ(choose(0), Tips{reading});
        EXPECT_EQ(popUp->currentIndex(), index) << threshold;
    }
}

TEST_F(ReminderTest, everyChoiceIsWritten) {
    EXPECT_EQ(clickConfirm(), Tips{}) << "no printer is bound yet";
    EXPECT_EQ(choose(0), Tips{reading});
    for (int index = 9; index >= 0; --index) {
        popUp->setCurrentIndex(index);
        EXPECT_EQ(clickConfirm(), Tips{success});
        EXPECT_EQ(thresholdOf("SN0001"), index == 0 ? 0 : index + 1);
        EXPECT_EQ(popUp->currentIndex(), index);
    }
    popUp->setCurrentIndex(9);
    EXPECT_EQ(clickConfirm(), Tips{success});
    popUp->setCurrentIndex(-1);
    EXPECT_EQ(clickConfirm(), Tips{success});
    EXPECT_EQ(thresholdOf("SN0001"), 0) << "nothing selected turns the reminder off";
    EXPECT_EQ(popUp->currentIndex(), -1);
    EXPECT_EQ(logged("get honer"), 2) << "a threshold is not read back";
}

TEST_F(ReminderTest, aWriteThatFailsSaysSoAndOneThatEndsSilentlyNothing) {
    EXPECT_EQ(choose(0), Tips{reading});
    const struct {
        const char *fault;
        Tips tips;
    } rows[] = {{"cannot_open", {}},           {"busy", {}},
                {"write_fails", {}},           {"silent", {}},
                {"unplug_after_open", {}},     {"unplug_after_write", {}},
                {"short_header", {failure}},   {"wrong_echo", {failure}},
                {"status_not_one", {failure}}, {"empty_data", {success}}};
    popUp->setCurrentIndex(6);
    for (const auto &[fault, tips] : rows) {
        plugLaser(std::string(R"("faults": [")") + fault + "\"]");
        EXPECT_EQ(clickConfirm(), tips) << fault;
        EXPECT_EQ(popUp->currentIndex(), 6) << fault;
        EXPECT_TRUE(confirm->isVisible() && confirm->isEnabled()) << fault;
    }
}

TEST_F(ReminderTest, twoQuickConfirmsBothWrite) {
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
