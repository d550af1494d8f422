// The order in which the scan walks through groups and cameras.
#include "browser/ScanWalk.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

ActiveGroups only(std::initializer_list<std::size_t> groups)
{
    ActiveGroups active{};
    for (const std::size_t group : groups) {
        active.at(group) = true;
    }
    return active;
}

const ActiveGroups kAll = only({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});

TEST(ScanWalk, TakesTheNextGroup)
{
    EXPECT_EQ(nextGroup(3, kAll), 4);
}

TEST(ScanWalk, GoesOnWithGroupZeroBehindGroupNine)
{
    EXPECT_EQ(nextGroup(9, kAll), 0);
}

TEST(ScanWalk, SkipsGroupsThatAreOff)
{
    EXPECT_EQ(nextGroup(2, only({2, 6})), 6);
}

TEST(ScanWalk, SkipsGroupsThatAreOffAcrossTheEnd)
{
    EXPECT_EQ(nextGroup(8, only({1, 8})), 1);
}

TEST(ScanWalk, ComesBackToTheOnlyGroupThatIsOn)
{
    EXPECT_EQ(nextGroup(5, only({5})), 5);
}

TEST(ScanWalk, LeavesAGroupThatIsOff)
{
    EXPECT_EQ(nextGroup(5, only({4})), 4);
}

TEST(ScanWalk, StaysAfterAFullTurnWithoutAGroupThatIsOn)
{
    for (int group = 0; group < kGroups; ++group) {
        EXPECT_EQ(nextGroup(group, {}), group);
    }
}

TEST(ScanWalk, TakesTheNextRowOfTheSameGroup)
{
    EXPECT_EQ(nextCamera({3, 8}, kAll), (CameraAddress{3, 9}));
}

TEST(ScanWalk, TakesTheNextRowOfAGroupThatIsOffToo)
{
    EXPECT_EQ(nextCamera({3, 0}, only({7})), (CameraAddress{3, 1}));
}

TEST(ScanWalk, GoesOnWithRowZeroOfTheNextGroupBehindRowNine)
{
    EXPECT_EQ(nextCamera({3, 9}, only({3, 6})), (CameraAddress{6, 0}));
}

TEST(ScanWalk, GoesFromTheLastCameraToTheFirstGroupThatIsOn)
{
    EXPECT_EQ(nextCamera({9, 9}, kAll), (CameraAddress{0, 0}));
    EXPECT_EQ(nextCamera({9, 9}, only({4, 9})), (CameraAddress{4, 0}));
}

TEST(ScanWalk, BeginsTheSameGroupAgainWhenNoneIsOn)
{
    EXPECT_EQ(nextCamera({6, 9}, {}), (CameraAddress{6, 0}));
}

} // namespace
} // namespace velmora
