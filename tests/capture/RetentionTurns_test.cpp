// When old images are deleted.
#include "RetentionTest.h"

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class RetentionTurns : public RetentionTest
{
};

TEST_F(RetentionTurns, FollowsAStoredImage)
{
    put(kOld);
    follow();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionTurns, FollowsNoImageOfACameraWhoseBoxIsNotTicked)
{
    put(kOld);
    tick(kKept, QStringLiteral("0"));
    follow();
    EXPECT_EQ(left(), QStringList({kOld}));
}

TEST_F(RetentionTurns, ComeAtMostOnceAnHourForEachCamera)
{
    begin();
    put(kOld);
    clock_.advance(1h - 1ms);
    follow();
    EXPECT_EQ(left(), QStringList({kOld}));
    clock_.advance(1ms);
    follow();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionTurns, ComeOnceForAnImageThatIsStoredWhileTheCameraWaits)
{
    retention_.begin();
    retention_.follow(kKept);
    house_.finish();
    EXPECT_EQ(house_.logText().count(QStringLiteral("Retention 0:0")), 1);
}

TEST_F(RetentionTurns, AreNotHeldUpByThoseOfAnotherCamera)
{
    const CameraAddress other{3, 4};
    begin();
    add(other);
    tick(other);
    put(kNewest, other);
    put(kOld, other);
    follow(other);
    EXPECT_EQ(left(other), QStringList());
}

TEST_F(RetentionTurns, DoNotCountWhileTheFolderIsMissing)
{
    const CameraAddress other{3, 4};
    add(other);
    tick(other);
    follow(other);
    put(kNewest, other);
    put(kOld, other);
    follow(other);
    EXPECT_EQ(left(other), QStringList());
}

TEST_F(RetentionTurns, ComeWhenTheBoxIsTickedLater)
{
    tick(kKept, QStringLiteral("0"));
    begin();
    put(kOld);
    tick(kKept);
    follow();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionTurns, DeleteNothingOnceTheBoxIsNoLongerTicked)
{
    put(kOld);
    retention_.begin();
    tick(kKept, QStringLiteral("0"));
    house_.finish();
    EXPECT_EQ(left(), QStringList({kOld}));
}

TEST_F(RetentionTurns, AreNotMovedByTheUsersClock)
{
    begin();
    put(kOld);
    clock_.setLocal(clock_.localNow() + 3h);
    follow();
    EXPECT_EQ(left(), QStringList({kOld}));
}

TEST_F(RetentionTurns, LetEventsRun)
{
    for (int i = 0; i < 2000; ++i) {
        put(QStringLiteral("20050101_%1.jpg").arg(i, 10, 10, QLatin1Char('0')));
    }
    Retention retention(services(), house_.scope);
    retention.begin();
    house_.finish();
    EXPECT_EQ(left().size(), 0);
    EXPECT_GE(busy_.yields(), 5);
}

TEST_F(RetentionTurns, BeginNothingOnceTheProgramEnds)
{
    put(kOld);
    retention_.end();
    follow();
    EXPECT_EQ(left(), QStringList({kOld}));
}

TEST_F(RetentionTurns, GoOnForAWhileWhenTheProgramEnds)
{
    put(kOld);
    retention_.begin();
    retention_.end();
    house_.finish();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionTurns, StopWhenTheWhileIsOver)
{
    for (int i = 0; i < 2000; ++i) {
        put(QStringLiteral("20050101_%1.jpg").arg(i, 10, 10, QLatin1Char('0')));
    }
    busy_.setCost(500ms);
    Retention retention(services(), house_.scope);
    retention.begin();
    retention.end();
    house_.finish();
    EXPECT_GT(left().size(), 0);
}

} // namespace
} // namespace velmora::test
