// One tick of the capture timer: what it checks, counts and shows, and when it does nothing.
#include "CaptureTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QTimerEvent>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr CameraAddress kCamera{0, 0};

using Tick = CaptureTest;

TEST_F(Tick, ComesFromTheTimer)
{
    add(kCamera);
    QTimerEvent event(house_.timer.timerId());
    QCoreApplication::sendEvent(&house_.timer, &event);
    house_.finish();
    EXPECT_EQ(fetches(), 1);
}

TEST_F(Tick, CountsFromFiftyFive)
{
    EXPECT_EQ(house_.scheduler.ticksLeft(), 5);
    house_.tick();
    EXPECT_EQ(house_.scheduler.ticksLeft(), 4);
}

TEST_F(Tick, CountsToSixtyAndThenFromZero)
{
    house_.scheduler.setTickCounter(59);
    house_.tick();
    EXPECT_EQ(house_.scheduler.ticksLeft(), 0);
    house_.tick();
    EXPECT_EQ(house_.scheduler.ticksLeft(), 60);
    house_.tick();
    EXPECT_EQ(house_.scheduler.ticksLeft(), 59);
}

struct CountdownRow
{
    const char *name;
    int before;
    QString shown;
};

void PrintTo(const CountdownRow &row, std::ostream *out)
{
    *out << row.name;
}

class TickCountdown : public CaptureTest, public testing::WithParamInterface<CountdownRow>
{
};

TEST_P(TickCountdown, ShowsTheTicksLeftDuringThePass)
{
    add(kCamera, delayedReply(1s));
    house_.scheduler.setTickCounter(GetParam().before);
    house_.beginTick();
    EXPECT_EQ(house_.status.text(Caption::Countdown), GetParam().shown);
    clock_.advance(1s);
    EXPECT_EQ(house_.status.text(Caption::Countdown), QString());
}

const CountdownRow kCountdowns[] = {
    {"AtZero", 60, QStringLiteral("60")},    {"AtOne", 0, QStringLiteral("59")},
    {"AtFiftySix", 55, QStringLiteral("4")}, {"AtFiftyEight", 57, QStringLiteral("2")},
    {"AtFiftyNine", 58, QString()},          {"AtSixty", 59, QString()},
};

INSTANTIATE_TEST_SUITE_P(Scheduler, TickCountdown, testing::ValuesIn(kCountdowns),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(Tick, ClearsTheCountdownAfterThePass)
{
    house_.scheduler.setTickCounter(57);
    house_.tick();
    EXPECT_EQ(house_.shown(Caption::Countdown), (QStringList{QStringLiteral("2"), QString()}));
}

TEST_F(Tick, DoesNothingWhileTheLampIsRed)
{
    add(kCamera);
    ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    house_.storage.testSA();
    house_.tick();
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(house_.scheduler.ticksLeft(), 5);
}

TEST_F(Tick, DoesNothingBeforeTheFirstCheckOfTheStorageFolder)
{
    CaptureHouse unchecked(source_, clock_, FirstCheck::Outstanding);
    unchecked.addCamera(kCamera, cameraUrl(kCamera));
    unchecked.tick();
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(unchecked.scheduler.ticksLeft(), 5);
    unchecked.storage.testSA();
    unchecked.tick();
    EXPECT_EQ(fetches(), 1);
}

TEST_F(Tick, ChecksTheStorageFolderOnRequest)
{
    house_.log.setOn(true);
    add(kCamera);
    house_.storage.requestCheck();
    house_.tick();
    EXPECT_EQ(house_.logText(), QStringLiteral("Interface TestSA\n"));
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(house_.scheduler.ticksLeft(), 5);
    EXPECT_FALSE(house_.storage.isCheckRequested());
}

TEST_F(Tick, LoadsAgainAfterTheCheck)
{
    add(kCamera);
    house_.storage.requestCheck();
    house_.tick();
    house_.tick();
    EXPECT_EQ(fetches(), 1);
}

TEST_F(Tick, SeesTheRedLampAfterTheCheck)
{
    ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    house_.storage.requestCheck();
    house_.tick();
    EXPECT_EQ(house_.storage.lastCheck(), StorageCheck::Missing);
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Tick, StopsTheTimersWhileTheStorageBoxIsEdited)
{
    house_.log.setOn(true);
    add(kCamera);
    int stopped = 0;
    QObject::connect(&house_.scheduler, &Scheduler::timersStopped, &house_,
                     [&stopped] { ++stopped; });
    house_.storage.beginEdit();
    EXPECT_FALSE(house_.timer.isActive());
    EXPECT_EQ(house_.logText(), QStringLiteral("arret Timers\n"));
    house_.tick();
    EXPECT_EQ(house_.logText(), QStringLiteral("arret Timers\narret Timers\n"));
    EXPECT_EQ(stopped, 2);
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(house_.scheduler.ticksLeft(), 5);
}

TEST_F(Tick, LoadsAgainWhenTheStorageBoxWasLeft)
{
    add(kCamera);
    house_.storage.beginEdit();
    house_.storage.putInForce();
    EXPECT_TRUE(house_.timer.isActive());
    house_.tick();
    EXPECT_EQ(fetches(), 1);
}

TEST_F(Tick, ChecksTheStorageFolderBeforeItStopsTheTimers)
{
    house_.log.setOn(true);
    house_.storage.beginEdit();
    house_.storage.requestCheck();
    house_.tick();
    EXPECT_EQ(house_.logText(), QStringLiteral("arret Timers\nInterface TestSA\n"));
}

TEST_F(Tick, DoesNothingDuringAPass)
{
    add(kCamera, delayedReply(2s));
    house_.beginTick();
    clock_.advance(1s);
    house_.beginTick();
    EXPECT_EQ(house_.scheduler.ticksLeft(), 4);
    clock_.advance(5s);
    EXPECT_EQ(fetches(), 1);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
}

TEST_F(Tick, HoldsTheTimerDuringThePass)
{
    add(kCamera, delayedReply(1s));
    house_.beginTick();
    EXPECT_FALSE(house_.timer.isActive());
    clock_.advance(1s);
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Tick, PutsTheTempoThatCountsIntoTheBox)
{
    house_.options.setTempo(QStringLiteral("90"));
    house_.tick();
    EXPECT_EQ(house_.options.tempo(), QStringLiteral("60"));
    EXPECT_EQ(house_.timer.interval(), 60000);
}

TEST_F(Tick, TakesAChangeOfTheTempoAtTheEndOfThePass)
{
    add(kCamera, delayedReply(1s));
    house_.beginTick();
    house_.options.setTempo(QStringLiteral("30"));
    EXPECT_EQ(house_.timer.interval(), 60000);
    clock_.advance(1s);
    EXPECT_EQ(house_.timer.interval(), 30000);
}

TEST_F(Tick, ShowsWaitAtTheEnd)
{
    add(kCamera, failedReply());
    house_.tick();
    EXPECT_EQ(house_.status.text(Caption::Step), QStringLiteral("Wait"));
}

TEST_F(Tick, StartsCountingAgainWhenTheFoldersWereMade)
{
    house_.scheduler.setTickCounter(10);
    house_.storage.MakeDir_Click();
    EXPECT_EQ(house_.scheduler.ticksLeft(), 5);
}

struct IntervalRow
{
    const char *name;
    QString tempo;
    int milliseconds;
    QString left;
};

void PrintTo(const IntervalRow &row, std::ostream *out)
{
    *out << row.tempo.toStdString();
}

class RegleTempo : public CaptureTest, public testing::WithParamInterface<IntervalRow>
{
};

TEST_P(RegleTempo, SetsTheIntervalOfTheTimer)
{
    house_.options.setTempo(GetParam().tempo);
    house_.status.set(Caption::Step, QStringLiteral("Load 0:0"));
    house_.scheduler.RegleTempo();
    EXPECT_EQ(house_.timer.interval(), GetParam().milliseconds);
    EXPECT_EQ(house_.options.tempo(), GetParam().left);
    EXPECT_EQ(house_.status.text(Caption::Step), QStringLiteral("Wait"));
}

const IntervalRow kIntervals[] = {
    {"Zero", QStringLiteral("0"), 1000, QStringLiteral("1")},
    {"Empty", QString(), 1000, QStringLiteral("1")},
    {"Negative", QStringLiteral("-5"), 5000, QStringLiteral("5")},
    {"Beyond", QStringLiteral("90"), 60000, QStringLiteral("60")},
    {"Decimals", QStringLiteral("2.7"), 2700, QStringLiteral("2")},
};

INSTANTIATE_TEST_SUITE_P(Scheduler, RegleTempo, testing::ValuesIn(kIntervals),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(Tick, StopsTheTimerWhileTheFolderIsGoneAndStartsItAgain)
{
    ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    house_.storage.testSA();
    EXPECT_FALSE(house_.timer.isActive());
    house_.tree.makeFolder(u"drives/c/in");
    house_.storage.testSA();
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Tick, LoadsNothingWhenAPassIsAskedForBeforeTheCheck)
{
    add(kCamera);
    house_.storage.requestCheck();
    house_.scope.launch(house_.scheduler.ChargeUrl());
    house_.finish();
    EXPECT_EQ(fetches(), 0);
    EXPECT_TRUE(house_.timer.isActive());
}

} // namespace
} // namespace velmora::test
