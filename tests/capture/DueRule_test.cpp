// When a camera in automatic mode is due: days and time of day are compared separately.
#include "capture/DueRule.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr WallTime kNow = std::chrono::local_days{std::chrono::year{2006} / 3 / 7} + 14h;

struct DueRow
{
    const char *name;
    BestTime bestTime;
    std::chrono::seconds elapsed; // since the last image
    int counter;
    bool due;
};

void PrintTo(const DueRow &row, std::ostream *out)
{
    *out << row.name;
}

class IsAutomaticDue : public testing::TestWithParam<DueRow>
{
};

TEST_P(IsAutomaticDue, ComparesDaysAndTimeOfDay)
{
    const DueRow &row = GetParam();
    EXPECT_EQ(isAutomaticDue({row.bestTime, kNow - row.elapsed, row.counter, kNow}), row.due);
}

constexpr auto kDay = 24h;

constexpr DueRow kRows[] = {
    {"ASecondTooEarly", {0, 10, 0}, 9min + 59s, 0, false},
    {"OnTheSecond", {0, 10, 0}, 10min, 0, true},
    {"ASecondLater", {0, 10, 0}, 10min + 1s, 0, true},
    {"OneSecondBestTime", {0, 0, 1}, 1s, 0, true},
    {"NothingElapsed", {0, 0, 1}, 0s, 0, false},
    {"TwentyThreeHours", {23, 59, 59}, kDay - 1s, 0, true},
    {"TwentyThreeHoursAfterADay", {23, 59, 59}, kDay, 0, false},
    {"AfterADayTheTimeOfDayBeginsAgain", {0, 10, 0}, kDay + 9min, 0, false},
    {"AfterADayAndTheTimeOfDay", {0, 10, 0}, kDay + 10min, 0, true},
    {"ADayExactly", {24, 0, 0}, kDay, 0, true},
    {"ADayLessASecond", {24, 0, 0}, kDay - 1s, 0, false},
    {"TwentySixHoursAfterTwoDaysAndOneHour", {26, 0, 0}, 2 * kDay + 1h, 0, false},
    {"TwentySixHoursAfterADayAndTwoHours", {26, 0, 0}, kDay + 2h, 0, true},
    {"TwentySixHoursAfterTwoDaysAndTwoHours", {26, 0, 0}, 2 * kDay + 2h, 0, true},
    {"TwentySixHoursALittleTooEarly", {26, 0, 0}, kDay + 2h - 1s, 0, false},
    {"TwentySixHoursAfterThreeHours", {26, 0, 0}, 3h, 0, false},
    {"MinutesAndSecondsOfALongTime", {50, 30, 15}, 2 * kDay + 2h + 30min + 15s, 0, true},
    {"NinetyNineHoursALittleTooEarly", {99, 59, 59}, 4 * kDay + 3h + 59min + 58s, 0, false},
    {"NinetyNineHoursOnTheSecond", {99, 59, 59}, 4 * kDay + 3h + 59min + 59s, 0, true},
    {"CounterPutsItOffASecond", {0, 10, 0}, 10min, 1, false},
    {"CounterAndASecondMore", {0, 10, 0}, 10min + 1s, 1, true},
    {"CounterAtOnce", {0, 0, 1}, 0s, 1, false},
    {"CounterCanSaveADay", {23, 59, 59}, kDay, 1, true},
};

INSTANTIATE_TEST_SUITE_P(DueRule, IsAutomaticDue, testing::ValuesIn(kRows),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(IsAutomaticDue, CountsFromTheZeroDateWithoutALastImage)
{
    const BestTime beforeTimeOfDay{13, 59, 59};
    const BestTime behindTimeOfDay{14, 0, 1};
    EXPECT_TRUE(isAutomaticDue({beforeTimeOfDay, std::nullopt, 0, kNow}));
    EXPECT_FALSE(isAutomaticDue({behindTimeOfDay, std::nullopt, 0, kNow}));
}

TEST(IsAutomaticDue, TakesALastImageFromTheFutureAsUnknown)
{
    EXPECT_TRUE(isAutomaticDue({{0, 10, 0}, kNow + 1s, 0, kNow}));
    EXPECT_TRUE(isAutomaticDue({{0, 10, 0}, kNow + 365 * kDay, 0, kNow}));
}

} // namespace
} // namespace velmora::test
