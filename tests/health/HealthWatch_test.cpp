// Which cameras are reported late, and when they are not.
#include "HealthHouse.h"
#include "cameras/CameraChoices.h"

#include <QDir>
#include <QSignalSpy>

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

// Rows with the same address: the first one asked stores each image, the other finds it there.
TEST_F(HealthWatchTest, CallsNoCameraLateIntoWhoseFolderAnotherRowStores)
{
    house_.putImage(kOne, QStringLiteral("20060307_1300000714.jpg"));
    house_.putImage(kOne, QStringLiteral("20060307_1301000714.jpg"));
    house_.addCamera(kTwo, cameraUrl(kOne));
    book_.followTable();
    clock_.advance(1s);
    ASSERT_EQ(book_.camera(kTwo).usualInterval(), 1min);
    deliver(kOne, 2);
    book_.addFailure(kTwo, QStringLiteral("status 401"));
    deliver(kOne, 28);
    EXPECT_EQ(notices_, QStringList());
    EXPECT_EQ(book_.camera(kTwo).images, book_.camera(kOne).images);
    EXPECT_EQ(book_.camera(kTwo).failures, 1) << "of its own login, perhaps";
}

TEST_F(HealthWatchTest, CallsACameraLateThoughAnotherWhoseAddressIsCutToTheSameFolderDelivers)
{
    const QString url = QStringLiteral("http://cam/") + QString(90, u'1');
    house_.addCamera(kOne, url + u'1');
    house_.addCamera(kTwo, url + u'2');
    ASSERT_EQ(house_.folder(kOne), house_.folder(kTwo));
    book_.followTable();
    deliver(kTwo, 3);
    deliver(kOne, 20);
    EXPECT_FALSE(isLate(kOne));
    EXPECT_TRUE(isLate(kTwo));
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

TEST_F(HealthWatchTest, JudgesNoCameraBeforeAPassHasAskedIt)
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

TEST_F(HealthWatchTest, ForgetsWithACameraThatItIsNeverLate)
{
    const HealthOptions options(house_.settings);
    options.setNever(kOne, true);
    options.setNever(kTwo, true);
    EXPECT_EQ(house_.settings.change([](SettingsDraft &draft) { forgetCamera(draft, kOne); }),
              SettingsChange::Made);
    EXPECT_FALSE(options.isNever(kOne));
    EXPECT_TRUE(options.isNever(kTwo));
}

TEST_F(HealthWatchTest, MarksAgainAfterARestartWhatIsLateStillAndTellsNoMore)
{
    deliver(kOne, 3);
    clock_.advance(20min);
    TaskScope scope([](const QString &text) { ADD_FAILURE() << text.toStdString(); });
    HealthBook book(house_.table, house_.storage, clock_, scope);
    HealthWatch watch(house_.storage, clock_, book, house_.scheduler, oldest_);
    QSignalSpy marked(&watch, &HealthWatch::lateChanged);
    QStringList told;
    QObject::connect(&watch, &HealthWatch::noticed, &watch, [&told](const QString &text) {
        if (text.contains(QStringLiteral("late"))) {
            told.append(text);
        }
    });
    book.load();
    scope.launch(watch.run(scope.stopToken()));
    clock_.advance(10s);
    EXPECT_EQ(marked.size(), 1);
    EXPECT_EQ(watch.late(), std::vector<CameraAddress>{kOne});
    EXPECT_EQ(told, QStringList());
    scope.requestStop();
    clock_.advance(1s);
}

TEST_F(HealthWatchTest, TakesBackTheMarkOfACameraThatIsNoLongerThere)
{
    for (const QString &address : {QString(), QStringLiteral("http://other/a.jpg")}) {
        add(kOne);
        deliver(kOne, 3);
        clock_.advance(20min);
        ASSERT_EQ(watch_.late(), std::vector<CameraAddress>{kOne});
        QSignalSpy marked(&watch_, &HealthWatch::lateChanged);
        house_.addCamera(kOne, address);
        clock_.advance(5s);
        EXPECT_EQ(marked.size(), 1);
        EXPECT_TRUE(watch_.late().empty());
    }
}

TEST_F(HealthWatchTest, TakesBackTheMarkOfACameraWhoseGroupIsSwitchedOff)
{
    deliver(kOne, 3);
    clock_.advance(20min);
    QSignalSpy marked(&watch_, &HealthWatch::lateChanged);
    house_.settings.write(u"Liste0", u"LstAct", u"0");
    clock_.advance(5s);
    EXPECT_EQ(marked.size(), 1);
    EXPECT_TRUE(watch_.late().empty());
    EXPECT_EQ(notices_.size(), 1); // it is not back either
}

TEST_F(HealthWatchTest, SaysNothingOfACameraThatCameBackAndIsGone)
{
    deliver(kOne, 3);
    clock_.advance(20min);
    book_.addImage(kOne, QStringLiteral("x"));
    house_.addCamera(kOne, {});
    clock_.advance(5s);
    EXPECT_EQ(notices_.size(), 1);
}

TEST_F(HealthWatchTest, CallsNoCameraBackThatTookTheRowOfALateOne)
{
    deliver(kOne, 3);
    clock_.advance(20min);
    house_.addCamera(kOne, QStringLiteral("http://other/a.jpg"));
    book_.addImage(kOne, QStringLiteral("x"));
    clock_.advance(5s);
    EXPECT_EQ(notices_.size(), 1);
    EXPECT_TRUE(book_.camera(kOne).newest);
}

TEST_F(HealthWatchTest, CallsNoCameraBackThatTookTheRowOfOneThatCameBack)
{
    deliver(kOne, 3);
    clock_.advance(20min);
    book_.addImage(kOne, QStringLiteral("x"));
    house_.addCamera(kOne, QStringLiteral("http://other/a.jpg"));
    clock_.advance(5s);
    EXPECT_EQ(notices_.size(), 1) << notices_.last().toStdString();
}

TEST_F(HealthWatchTest, JudgesNoCameraThatAPassCutShortHasNotAsked)
{
    for (int i = 0; i < 3; ++i) {
        book_.addImage(kTwo, QStringLiteral("x"));
        clock_.advance(1min);
    }
    clock_.advance(20min);
    ASSERT_FALSE(isLate(kTwo)) << "no pass has asked it yet";
    const QDir drive(house_.tree.path(u"drives/c"));
    ASSERT_TRUE(QDir(drive).rename(QStringLiteral("in"), QStringLiteral("away")));
    const QSignalSpy ended(&house_.scheduler, &Scheduler::passEnded);
    house_.beginTick();
    house_.storage.testSA(); // in the middle of the first pass
    clock_.advance(2s);
    ASSERT_EQ(ended.size(), 1);
    ASSERT_EQ(house_.stored(), QStringList());
    ASSERT_TRUE(QDir(drive).rename(QStringLiteral("away"), QStringLiteral("in")));
    house_.storage.testSA();
    clock_.advance(10s);
    EXPECT_FALSE(isLate(kTwo));
}

// A round of 61 ticks takes long when these do, or when a silent camera holds up each pass.
TEST_F(HealthWatchTest, CallsNoCameraLateThatHasNotBeenAskedSince)
{
    house_.beginTick(); // the first one asks all
    clock_.advance(2s);
    deliver(kOne, 3);
    clock_.advance(30min);
    EXPECT_FALSE(isLate(kOne));
    house_.beginTick(); // it is not due
    clock_.advance(10s);
    EXPECT_FALSE(isLate(kOne));
    house_.scheduler.setTickCounter(59);
    house_.beginTick(); // it has nothing new
    clock_.advance(10s);
    EXPECT_TRUE(isLate(kOne));
}

TEST_F(HealthWatchTest, JudgesNoCameraAsOfARoundThatWasCutShort)
{
    house_.beginTick();
    clock_.advance(2s);
    deliver(kTwo, 3);
    clock_.advance(30min);
    const QDir drive(house_.tree.path(u"drives/c"));
    ASSERT_TRUE(QDir(drive).rename(QStringLiteral("in"), QStringLiteral("away")));
    const QSignalSpy ended(&house_.scheduler, &Scheduler::passEnded);
    house_.scheduler.setTickCounter(59);
    house_.beginTick();
    house_.storage.testSA(); // in the middle of it
    clock_.advance(2s);
    ASSERT_EQ(ended.size(), 1);
    ASSERT_TRUE(QDir(drive).rename(QStringLiteral("away"), QStringLiteral("in")));
    house_.storage.testSA();
    clock_.advance(10s);
    EXPECT_FALSE(isLate(kTwo));
}

// It is asked in each pass.
TEST_F(HealthWatchTest, JudgesACameraWithoutImagesBetweenTheRounds)
{
    add(kOne, failedReply());
    house_.beginTick();
    clock_.advance(20min);
    EXPECT_TRUE(isLate(kOne));
}

TEST_F(HealthWatchTest, JudgesACameraInAutomaticModeBetweenTheRounds)
{
    house_.beginTick();
    clock_.advance(2s);
    deliver(kOne, 3);
    house_.setValue(u"AutoDelai", kOne, QStringLiteral("1"));
    house_.setValue(u"BestTime", kOne, QStringLiteral("00:01:00"));
    clock_.advance(30min);
    EXPECT_TRUE(isLate(kOne));
}

TEST_F(HealthWatchTest, ForgivesACameraOnlyTheTimeSinceItCame)
{
    constexpr CameraAddress kThree{0, 3};
    watch_.trust();
    house_.storage.beginEdit();
    clock_.advance(2h);
    add(kThree);
    for (int second = 0; second < 4; ++second) {
        house_.putImage(kThree, QStringLiteral("20060307_1405%1").arg(second) +
                                    QStringLiteral("00714.jpg"));
    }
    clock_.advance(10s);
    ASSERT_EQ(book_.camera(kThree).images, 4);
    house_.storage.putInForce();
    clock_.advance(20min);
    EXPECT_GT(book_.quiet(kThree).value_or(0s), 15min);
    EXPECT_TRUE(isLate(kThree));
}

TEST_F(HealthWatchTest, KnowsNoRoomWhereTheStorageFolderIsGone)
{
    ASSERT_TRUE(watch_.room());
    QDir(house_.tree.path(u"drives/c")).rename(QStringLiteral("in"), QStringLiteral("away"));
    house_.storage.testSA();
    QSignalSpy changed(&watch_, &HealthWatch::roomChanged);
    clock_.advance(5s);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_FALSE(watch_.room());
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

TEST_F(HealthWatchTest, CallsNoCameraLateBecauseTheClockIsSet)
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
    const Suspension held = house_.scheduler.suspend();
    clock_.advance(20min);
    house_.scheduler.resume(held);
    clock_.advance(5min);
    EXPECT_EQ(notices_, QStringList());
}

TEST_F(HealthWatchTest, DoesNotCountTheTimeInWhichTheProgramStoodStill)
{
    deliver(kOne, 3);
    clock_.stall(3h);
    clock_.advance(5s);
    EXPECT_EQ(notices_, QStringList());
    clock_.advance(20min);
    EXPECT_TRUE(isLate(kOne));
}

TEST_F(HealthWatchTest, DoesNotCountTheTimeInWhichTheProgramStoodStillBeforeTheCaptureWasHeld)
{
    deliver(kOne, 3);
    clock_.stall(3h);
    const Suspension held = house_.scheduler.suspend();
    clock_.advance(5s);
    house_.scheduler.resume(held);
    clock_.advance(10s);
    EXPECT_EQ(notices_, QStringList());
}

TEST_F(HealthWatchTest, TellsNotAgainOfALateCameraBecauseTheCaptureWasHeld)
{
    deliver(kOne, 3);
    clock_.advance(20min);
    const Suspension held = house_.scheduler.suspend();
    clock_.advance(1min);
    EXPECT_TRUE(isLate(kOne));
    house_.scheduler.resume(held);
    clock_.advance(1min);
    EXPECT_EQ(notices_.size(), 1);
}

// In the middle of that round, and after it.
TEST_F(HealthWatchTest, TellsNotAgainOfALateCameraBecauseTheCaptureWasHeldSinceTheLastRound)
{
    house_.beginTick(); // the first one asks all
    clock_.advance(2s);
    deliver(kOne, 3);
    source_.answer(cameraUrl(kTwo), delayedReply(2s));
    for (const std::chrono::minutes quiet : {20min, 2min}) {
        clock_.advance(quiet);
        house_.scheduler.setTickCounter(59);
        house_.beginTick(); // it has nothing new
        for (const std::chrono::seconds more : {10s, 1s}) {
            const Suspension held = house_.scheduler.suspend();
            clock_.advance(30min);
            house_.scheduler.resume(held);
            clock_.advance(more);
        }
        EXPECT_TRUE(isLate(kOne));
    }
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

TEST_F(HealthWatchTest, SaysOfAFolderThatWasNeverSeenOnlyThatItIsNotThere)
{
    house_.storage.beginEdit();
    house_.storage.edit(QStringLiteral("C:\\none\\"));
    house_.storage.putInForce();
    clock_.advance(5s);
    ASSERT_EQ(notices_.size(), 1);
    EXPECT_EQ(notices_.first(),
              QStringLiteral("There is no storage folder C:\\none\\; nothing is stored."));
    QDir(house_.tree.path(u"drives/c")).mkdir(QStringLiteral("none"));
    house_.storage.testSA();
    clock_.advance(5s);
    ASSERT_EQ(notices_.size(), 2);
    EXPECT_EQ(notices_.last(), QStringLiteral("The storage folder C:\\none\\ is there."));
}

TEST_F(HealthWatchTest, EmptiesNoMoreThanHalfOfTheDisk)
{
    const QString old = QStringLiteral("20050101_0000000101.jpg");
    house_.putImage(kOne, old);
    house_.putImage(kOne, QStringLiteral("20060307_1405090714.jpg"));
    HealthOptions(house_.settings).set(HealthChoice::DeleteOldest, true);
    house_.settings.write(u"Health", u"LimitMB", u"999999999");
    const auto room = diskRoom(house_.tree.path(u"drives/c/in"));
    ASSERT_TRUE(room);
    clock_.advance(5s);
    EXPECT_TRUE(watch_.isDiskLow());
    EXPECT_EQ(house_.images(kOne).contains(old), room->freeBytes >= room->allBytes / 2);
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
    EXPECT_TRUE(house_.scheduler.standstill().contains(u"disk"));
    house_.settings.write(u"Health", u"LimitMB", u"1");
    clock_.advance(5s);
    EXPECT_FALSE(house_.scheduler.isSuspended());
    EXPECT_EQ(house_.scheduler.standstill(), QString());
    EXPECT_FALSE(watch_.isDiskLow());
}

} // namespace
} // namespace velmora::test
