// Holding the capture for a while, and the time left until the next cycle.
#include "CaptureTest.h"

#include <QDir>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr CameraAddress kFirst{0, 0};
constexpr CameraAddress kSecond{0, 1};

class Suspend : public CaptureTest
{
protected:
    void suspend() { suspension_ = house_.scheduler.suspend(); }

    void resume() { house_.scheduler.resume(suspension_); }

    void removeStorage() const
    {
        ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    }

    /// A pass that is held after its first camera.
    void beginHeldPass()
    {
        add(kFirst, delayedReply(1s));
        add(kSecond);
        house_.beginTick();
        suspend();
        clock_.advance(5s);
    }

    void beginLastTick()
    {
        house_.scope.launch(house_.scheduler.lastTick());
        clock_.advance(10ms);
    }

    Suspension suspension_{}; // the latest
};

TEST_F(Suspend, StopsTheTimer)
{
    ASSERT_TRUE(house_.timer.isActive());
    EXPECT_FALSE(house_.scheduler.isSuspended());
    suspend();
    EXPECT_TRUE(house_.scheduler.isSuspended());
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Suspend, EndsWithResume)
{
    suspend();
    resume();
    EXPECT_FALSE(house_.scheduler.isSuspended());
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Suspend, LetsNoTickThrough)
{
    house_.log.setOn(true);
    add(kFirst);
    suspend();
    house_.tick();
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(house_.scheduler.ticksLeft(), 5);
    EXPECT_EQ(house_.logText(), QString());
}

TEST_F(Suspend, LeavesARequestedCheckToALaterTick)
{
    house_.storage.requestCheck();
    suspend();
    house_.tick();
    EXPECT_TRUE(house_.storage.isCheckRequested());
    resume();
    house_.tick();
    EXPECT_FALSE(house_.storage.isCheckRequested());
}

TEST_F(Suspend, IsNotEndedByALoadedCamera)
{
    add(kFirst);
    suspend();
    house_.load(kFirst);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Suspend, IsNotEndedByAStorageCheck)
{
    suspend();
    house_.storage.testSA();
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Suspend, IsNotEndedByTheStorageBoxThatIsLeft)
{
    suspend();
    house_.storage.beginEdit();
    house_.storage.putInForce();
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Suspend, IsNotEndedByTheReturnOfTheStorageFolder)
{
    removeStorage();
    house_.storage.recheck();
    suspend();
    house_.tree.makeFolder(u"drives/c/in");
    house_.storage.recheck();
    EXPECT_EQ(house_.storage.lastCheck(), StorageCheck::Found);
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Suspend, IsNotEndedByTheEndOfAPass)
{
    add({9, 9}, delayedReply(1s));
    house_.beginTick();
    suspend();
    clock_.advance(5s);
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("9:9")});
    EXPECT_FALSE(house_.timer.isActive());
    resume();
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Suspend, HoldsThePassInFrontOfItsNextCamera)
{
    beginHeldPass();
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
    EXPECT_NE(house_.scope.running(), 0);
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Suspend, LetsThePassGoOnAfterwards)
{
    beginHeldPass();
    resume();
    clock_.advance(10ms);
    EXPECT_EQ(house_.stored(), (QStringList{QStringLiteral("0:0"), QStringLiteral("0:1")}));
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(fetches(), 2);
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Suspend, LetsThePassSeeWhatHasChangedMeanwhile)
{
    beginHeldPass();
    house_.table.setUrl(kSecond, QString());
    resume();
    clock_.advance(10ms);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
}

TEST_F(Suspend, HoldsAPassThatHasNotBegun)
{
    add(kFirst);
    house_.scope.launch(house_.scheduler.Timer_Timer());
    suspend();
    clock_.advance(5s);
    EXPECT_EQ(fetches(), 0);
    resume();
    clock_.advance(10ms);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Suspend, Nests)
{
    const Suspension outer = house_.scheduler.suspend();
    suspend();
    resume();
    EXPECT_TRUE(house_.scheduler.isSuspended());
    EXPECT_FALSE(house_.timer.isActive());
    house_.scheduler.resume(outer);
    EXPECT_FALSE(house_.scheduler.isSuspended());
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Suspend, GivesTheOldestReasonThatIsLeft)
{
    const QString disk = QStringLiteral("the disk");
    const QString user = QStringLiteral("the user");
    suspend(); // says nothing
    const Suspension first = house_.scheduler.suspend(disk);
    const Suspension second = house_.scheduler.suspend(user);
    const Suspension third = house_.scheduler.suspend(disk);
    EXPECT_EQ(house_.scheduler.standstill(), disk);
    house_.scheduler.resume(first);
    EXPECT_EQ(house_.scheduler.standstill(), user);
    house_.scheduler.resume(second);
    EXPECT_EQ(house_.scheduler.standstill(), disk);
    house_.scheduler.resume(third);
    EXPECT_EQ(house_.scheduler.standstill(), QString());
    EXPECT_TRUE(house_.scheduler.isSuspended());
}

using Resume = Suspend;

TEST_F(Resume, DoesNothingWithoutASuspension)
{
    house_.timer.stop();
    resume();
    EXPECT_FALSE(house_.timer.isActive());
    suspend();
    EXPECT_TRUE(house_.scheduler.isSuspended());
}

TEST_F(Resume, EndsNoOtherSuspensionWhenItIsRepeated)
{
    suspend();
    resume();
    [[maybe_unused]] const Suspension other = house_.scheduler.suspend();
    resume();
    EXPECT_TRUE(house_.scheduler.isSuspended());
}

TEST_F(Resume, LeavesTheTimerStoppedWithoutStorageFolder)
{
    suspend();
    removeStorage();
    house_.storage.testSA();
    resume();
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Resume, LeavesTheTimerStoppedWhileTheStorageBoxIsEdited)
{
    suspend();
    house_.storage.beginEdit();
    resume();
    EXPECT_FALSE(house_.timer.isActive());
    house_.storage.putInForce();
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Resume, LeavesTheTimerToThePassThatRuns)
{
    add(kFirst, delayedReply(1s));
    house_.beginTick();
    suspend();
    resume();
    EXPECT_FALSE(house_.timer.isActive());
    clock_.advance(1s);
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Suspend, EndsWithGivingUp)
{
    beginHeldPass();
    house_.scheduler.giveUp();
    clock_.advance(10ms);
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
}

TEST_F(Suspend, DoesNotHoldTheLastTickUp)
{
    add(kFirst);
    suspend();
    beginLastTick();
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(fetches(), 0);
}

TEST_F(Suspend, LetsThePassThatWaitsEndAtTheLastTick)
{
    beginHeldPass();
    beginLastTick();
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Suspend, LeavesTheTimerStoppedAfterTheLastTick)
{
    suspend();
    beginLastTick();
    resume();
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Resume, BringsTheLastTickBack)
{
    add(kFirst);
    suspend();
    resume();
    beginLastTick();
    EXPECT_EQ(fetches(), 1);
}

struct CycleRow
{
    const char *name;
    int before;
    QString shown;
};

void PrintTo(const CycleRow &row, std::ostream *out)
{
    *out << row.name;
}

class NextCycle : public CaptureTest, public testing::WithParamInterface<CycleRow>
{
};

TEST_P(NextCycle, StaysOnShowAfterThePass)
{
    add(kFirst);
    house_.status.set(Caption::NextCycle, QStringLiteral("from before"));
    house_.scheduler.setTickCounter(GetParam().before);
    house_.tick();
    EXPECT_EQ(house_.status.text(Caption::NextCycle), GetParam().shown);
    EXPECT_EQ(house_.status.text(Caption::Countdown), QString());
}

const CycleRow kCycles[] = {
    {"AtZero", 60, QStringLiteral("60")},    {"AtOne", 0, QStringLiteral("59")},
    {"AtFiftySix", 55, QStringLiteral("4")}, {"AtFiftyEight", 57, QStringLiteral("2")},
    {"AtFiftyNine", 58, QString()},          {"AtSixty", 59, QString()},
};

INSTANTIATE_TEST_SUITE_P(Scheduler, NextCycle, testing::ValuesIn(kCycles),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
} // namespace velmora::test
