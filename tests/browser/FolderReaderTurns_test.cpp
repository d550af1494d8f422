// Reading very full folders: events are handled meanwhile, a stop ends it, and nothing is read in
// vain.
#include "NameLists.h"
#include "Reading.h"
#include "support/BusyClock.h"
#include "support/FakeClock.h"
#include "support/FolderChanges.h"
#include "support/TempTree.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace velmora {
namespace {

constexpr int kFew = 5'000;
constexpr int kMany = 100'000;

class FolderReaderTurns : public testing::Test
{
protected:
    void fill(int images) const { test::makeImages(tree.path(), images); }

    // Requests a stop at the yield of this number.
    void stopAt(int number)
    {
        clock.setOnYield([this, number](int yield) {
            if (yield == number) {
                stop.request_stop();
            }
        });
    }

    test::TempTree tree;
    test::FakeClock still_;
    test::BusyClock clock{still_, std::chrono::milliseconds{10}}; // work yields after each piece
    test::Reading reading{clock};
    std::stop_source stop;
};

TEST_F(FolderReaderTurns, EventsRunWhileAFullFolderIsRead)
{
    fill(kMany);
    test::FakeClock still; // by which the work takes no time at all
    test::Reading plain(still);
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&turns] { ++turns; });
    timer.start();
    EXPECT_EQ(plain.names(tree.path())->count(), kMany);
    EXPECT_GE(turns, 3);
    turns = 0;
    EXPECT_TRUE(plain.newestName(tree.path()).startsWith("20060314_"));
    EXPECT_GE(turns, 2);
}

TEST_F(FolderReaderTurns, YieldsAfterEachPieceThatTookLong)
{
    fill(kFew);
    EXPECT_EQ(reading.names(tree.path())->count(), kFew);
    EXPECT_GE(clock.takeYields(), 8);
}

TEST_F(FolderReaderTurns, YieldsNotAtAllForAnUnchangedFolder)
{
    fill(kFew);
    reading.keptNames(tree.path());
    clock.takeYields();
    EXPECT_EQ(reading.names(tree.path())->count(), kFew);
    EXPECT_EQ(clock.takeYields(), 0);
}

TEST_F(FolderReaderTurns, AStopEndsAReadingEarly)
{
    fill(kFew);
    stopAt(2);
    EXPECT_EQ(reading.names(tree.path(), stop.get_token()), nullptr);
    EXPECT_EQ(clock.takeYields(), 2);
}

TEST_F(FolderReaderTurns, AStopEndsASortingEarly)
{
    fill(kFew);
    reading.names(tree.path());
    const int yields = clock.takeYields();
    stopAt(yields);
    test::Reading other(clock);
    EXPECT_EQ(other.names(tree.path(), stop.get_token()), nullptr);
    EXPECT_EQ(clock.takeYields(), yields);
}

TEST_F(FolderReaderTurns, AnAbandonedReadingLeavesNothingBehind)
{
    fill(kFew);
    stopAt(2);
    reading.names(tree.path(), stop.get_token());
    reading.newest(tree.path(), stop.get_token());
    EXPECT_EQ(reading.names(tree.path())->count(), kFew);
    EXPECT_FALSE(reading.newestName(tree.path()).isEmpty());
}

TEST_F(FolderReaderTurns, AStopEndsTheSearchForTheNewestEarly)
{
    fill(kFew);
    stopAt(2);
    EXPECT_FALSE(reading.newest(tree.path(), stop.get_token()).has_value());
    EXPECT_EQ(clock.takeYields(), 2);
}

TEST_F(FolderReaderTurns, AStopEndsTheLookAtADaysFilesEarly)
{
    fill(1'000); // one day: most of the work
    EXPECT_TRUE(reading.newest(tree.path()).has_value());
    const int yields = clock.takeYields();
    stopAt(yields);
    test::Reading other(clock);
    EXPECT_FALSE(other.newest(tree.path(), stop.get_token()).has_value());
    EXPECT_EQ(clock.takeYields(), yields);
}

TEST_F(FolderReaderTurns, TheNewestOfAnUnchangedFolderNeedsNoReading)
{
    fill(24 * 60 * 3 + 10); // ten images on the last day
    reading.keptNames(tree.path());
    clock.takeYields();
    EXPECT_TRUE(reading.newestName(tree.path()).startsWith("20060104_"));
    EXPECT_GE(clock.takeYields(), 4);
    EXPECT_TRUE(reading.newestName(tree.path()).startsWith("20060104_"));
    EXPECT_EQ(clock.takeYields(), 0);
}

TEST_F(FolderReaderTurns, ANewestDayIsReadAgainThatChangedWhileItWasRead)
{
    fill(kFew);
    reading.keptNames(tree.path());
    clock.setOnYield([this](int yield) {
        if (yield == 1) {
            test::makeFile(tree.path(), "20070101_0000000101.jpg");
        }
    });
    clock.takeYields();
    reading.newest(tree.path());
    EXPECT_EQ(reading.newestName(tree.path()), "20070101_0000000101.jpg");
}

TEST_F(FolderReaderTurns, AListIsReadAgainThatChangedWhileItWasRead)
{
    fill(kFew);
    reading.keptNames(tree.path());
    test::Reading other(clock);
    clock.setOnYield([this](int yield) {
        if (yield == 1) {
            test::makeFile(tree.path(), "20070101_0000000101.jpg");
        }
    });
    clock.takeYields();
    other.names(tree.path());
    EXPECT_EQ(other.names(tree.path())->count(), kFew + 1);
}

} // namespace
} // namespace velmora
