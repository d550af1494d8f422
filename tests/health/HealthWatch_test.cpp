// Which cameras are reported late, and when they are not.
#include "HealthHouse.h"

#include <QDir>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class HealthWatchTest : public HealthTest
{
protected:
    HealthWatchTest()
    {
        add(kOne);
        add(kTwo);
        start();
        notices_.clear(); // about this machine's disk, when that is full
    }
};

TEST_F(HealthWatchTest, TellsOnceOfACameraThatIsLateAndOnceWhenItIsBack)
{
    deliver(kOne, 3);
    clock_.advance(13min);
    EXPECT_FALSE(isLate(kOne));
    clock_.advance(3min);
    EXPECT_TRUE(isLate(kOne));
    clock_.advance(20min);
    ASSERT_EQ(notices_.size(), 1);
    EXPECT_TRUE(notices_.first().contains(QStringLiteral("0:1 cam/0/1/picture.jpg is late")));
    deliver(kOne, 1);
    clock_.advance(5s);
    ASSERT_EQ(notices_.size(), 2);
    EXPECT_TRUE(notices_.last().contains(QStringLiteral("is back")));
    EXPECT_FALSE(isLate(kOne));
}

TEST_F(HealthWatchTest, TellsTogetherOfThoseThatAreLateTogether)
{
    for (int i = 0; i < 3; ++i) {
        book_.addImage(kTwo, QStringLiteral("x"));
        deliver(kOne, 1);
    }
    clock_.advance(20min);
    ASSERT_EQ(notices_.size(), 1);
    EXPECT_TRUE(notices_.first().startsWith(QStringLiteral("2 cameras are late: 0:1 ")));
}

TEST_F(HealthWatchTest, JudgesNobodyBeforeAPassHasAskedHim)
{
    for (int i = 0; i < 3; ++i) {
        book_.addImage(kOne, QStringLiteral("x"));
        clock_.advance(1min);
    }
    clock_.advance(20min);
    EXPECT_FALSE(isLate(kOne));
    watch_.trust();
    clock_.advance(5s);
    EXPECT_TRUE(isLate(kOne));
}

TEST_F(HealthWatchTest, NeverCallsACameraLateForWhichThatIsChosen)
{
    HealthOptions(house_.settings).setNever(kOne, true);
    deliver(kOne, 3);
    clock_.advance(20min);
    EXPECT_EQ(notices_, QStringList());
}

TEST_F(HealthWatchTest, TakesTheNumberOfIntervalsThatIsSet)
{
    house_.settings.write(u"Health", u"LateTimes", u"20");
    deliver(kOne, 3);
    clock_.advance(18min);
    EXPECT_FALSE(isLate(kOne));
    clock_.advance(4min);
    EXPECT_TRUE(isLate(kOne));
}

TEST_F(HealthWatchTest, CallsNobodyLateBecauseTheClockIsSet)
{
    deliver(kOne, 3);
    clock_.setLocal(kFakeStart + 365 * 24h);
    clock_.advance(1min);
    EXPECT_FALSE(isLate(kOne));
    clock_.setLocal(kFakeStart - 365 * 24h);
    clock_.advance(1min);
    EXPECT_FALSE(isLate(kOne));
    clock_.advance(20min);
    EXPECT_TRUE(isLate(kOne));
}

TEST_F(HealthWatchTest, DoesNotCountTheTimeInWhichAGroupIsOff)
{
    deliver(kOne, 3);
    house_.settings.write(u"Liste0", u"LstAct", u"0");
    clock_.advance(20min);
    house_.settings.write(u"Liste0", u"LstAct", u"1");
    clock_.advance(10min);
    EXPECT_EQ(notices_, QStringList());
    clock_.advance(10min);
    EXPECT_TRUE(isLate(kOne));
}

TEST_F(HealthWatchTest, DoesNotCountTheTimeInWhichTheCaptureIsHeld)
{
    deliver(kOne, 3);
    house_.scheduler.suspend();
    clock_.advance(20min);
    house_.scheduler.resume();
    clock_.advance(5min);
    EXPECT_EQ(notices_, QStringList());
}

TEST_F(HealthWatchTest, TellsNotAgainOfALateCameraBecauseTheCaptureWasHeld)
{
    deliver(kOne, 3);
    clock_.advance(20min);
    house_.scheduler.suspend();
    clock_.advance(1min);
    EXPECT_TRUE(isLate(kOne));
    house_.scheduler.resume();
    clock_.advance(1min);
    EXPECT_EQ(notices_.size(), 1);
}

TEST_F(HealthWatchTest, TellsOfTheStorageFolderAndBlamesNoCameraForIt)
{
    deliver(kOne, 3);
    QDir(house_.tree.path(u"drives/c")).rename(QStringLiteral("in"), QStringLiteral("away"));
    house_.storage.testSA();
    clock_.advance(20min);
    ASSERT_EQ(notices_.size(), 1);
    EXPECT_TRUE(notices_.first().contains(QStringLiteral("is gone")));
    QDir(house_.tree.path(u"drives/c")).rename(QStringLiteral("away"), QStringLiteral("in"));
    house_.storage.testSA();
    clock_.advance(5min);
    ASSERT_EQ(notices_.size(), 2);
    EXPECT_TRUE(notices_.last().contains(QStringLiteral("is back")));
    EXPECT_FALSE(isLate(kOne));
}

TEST_F(HealthWatchTest, StopsTheCaptureOnAFullDiskOnlyWhenThatIsChosen)
{
    house_.settings.write(u"Health", u"LimitMB", u"999999999");
    clock_.advance(5s);
    EXPECT_TRUE(watch_.isDiskLow());
    EXPECT_FALSE(house_.scheduler.isSuspended());
    HealthOptions(house_.settings).set(HealthChoice::StopWhenFull, true);
    clock_.advance(5s);
    EXPECT_TRUE(house_.scheduler.isSuspended());
    house_.settings.write(u"Health", u"LimitMB", u"1");
    clock_.advance(5s);
    EXPECT_FALSE(house_.scheduler.isSuspended());
    EXPECT_FALSE(watch_.isDiskLow());
}

} // namespace
} // namespace velmora::test
