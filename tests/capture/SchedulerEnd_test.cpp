// The end of the program: a last pass, and giving it up.
#include "CaptureTest.h"

#include <QDir>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr CameraAddress kCamera{0, 0};

class LastTick : public CaptureTest
{
protected:
    void beginLastTick()
    {
        house_.scope.launch(house_.scheduler.lastTick());
        clock_.advance(0ms);
    }
};

TEST_F(LastTick, LoadsFixedCameras)
{
    add(kCamera);
    house_.tick();
    beginLastTick();
    EXPECT_EQ(fetches(), 2);
    EXPECT_EQ(house_.scheduler.ticksLeft(), 0);
}

TEST_F(LastTick, LeavesTheTimerStopped)
{
    add(kCamera);
    beginLastTick();
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(LastTick, WaitsForThePassThatRuns)
{
    add(kCamera, delayedReply(2s));
    house_.beginTick();
    beginLastTick();
    clock_.advance(1s);
    EXPECT_EQ(fetches(), 1);
    clock_.advance(5s);
    EXPECT_EQ(fetches(), 2);
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(LastTick, LoadsNothingWhileTheLampIsRed)
{
    add(kCamera);
    ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    house_.storage.testSA();
    beginLastTick();
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(house_.scope.running(), 0);
}

TEST_F(LastTick, IsBoundedByTheTimeout)
{
    for (int row = 0; row < kRows; ++row) {
        add({0, row}, delayedReply(1h));
    }
    beginLastTick();
    clock_.advance(5s);
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(house_.failed().size(), 10);
}

TEST_F(LastTick, IsGivenUpAtOnce)
{
    for (int row = 0; row < kRows; ++row) {
        add({0, row}, delayedReply(4s));
    }
    beginLastTick();
    clock_.advance(1s);
    house_.scheduler.giveUp();
    clock_.advance(0ms);
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(source_.stopped().size(), 10);
    EXPECT_EQ(house_.stored() + house_.failed(), QStringList());
}

TEST_F(LastTick, DoesNotComeAfterGivingUp)
{
    add(kCamera);
    house_.scheduler.giveUp();
    beginLastTick();
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(LastTick, DoesNotComeWhenGivenUpWhileItWaits)
{
    add(kCamera, delayedReply(2s));
    house_.beginTick();
    beginLastTick();
    house_.scheduler.giveUp();
    clock_.advance(10ms);
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(fetches(), 1);
}

using GiveUp = CaptureTest;

TEST_F(GiveUp, EndsThePassThatRuns)
{
    add({0, 0}, delayedReply(4s));
    add({9, 9}, delayedReply(4s));
    house_.beginTick();
    house_.scheduler.giveUp();
    clock_.advance(0ms);
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(source_.stopped().size(), 2);
}

TEST_F(GiveUp, LeavesTheCamerasAsTheyWere)
{
    add(kCamera, delayedReply(4s));
    house_.setValue(u"SB", kCamera, kGreen);
    house_.setValue(u"TimeLoad", kCamera, QStringLiteral("9"));
    house_.beginTick();
    house_.scheduler.giveUp();
    clock_.advance(0ms);
    EXPECT_EQ(house_.value(u"SB", kCamera), kGreen);
    EXPECT_EQ(house_.value(u"TimeLoad", kCamera), QStringLiteral("9"));
    EXPECT_EQ(house_.stored() + house_.failed(), QStringList());
}

TEST_F(GiveUp, KeepsWhatWasStoredBefore)
{
    add({0, 0});
    add({0, 1}, delayedReply(4s));
    house_.beginTick();
    house_.scheduler.giveUp();
    clock_.advance(0ms);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
    EXPECT_EQ(house_.scope.running(), 0);
}

TEST_F(GiveUp, LoadsNothingAtALaterTick)
{
    add(kCamera);
    house_.scheduler.giveUp();
    house_.tick();
    EXPECT_EQ(house_.stored() + house_.failed(), QStringList());
    EXPECT_EQ(house_.scope.running(), 0);
}

} // namespace
} // namespace velmora::test
