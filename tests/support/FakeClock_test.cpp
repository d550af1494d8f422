// The fake clock: the order in which it wakes, what it does to both times, and how fast a day
// passes.
#include "support/FakeClock.h"

#include "base/DateText.h"
#include "support/Printers.h"
#include "support/RunTask.h"

#include <QList>
#include <QTimer>

#include <gtest/gtest.h>

#include <ctime>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

struct Alarm
{
    QList<QString> rung;
    QList<qint64> seconds;
};

QCoro::Task<> ring(Clock &clock, std::chrono::milliseconds after, QString name, Alarm &alarm)
{
    co_await clock.sleep(after, std::stop_token{});
    alarm.rung.append(name);
    alarm.seconds.append(std::chrono::floor<std::chrono::seconds>(clock.monotonicNow()).count());
}

QCoro::Task<> tickUntil(Clock &clock, std::stop_token stop, int &ticks)
{
    for (;;) {
        const Wake wake = co_await clock.sleep(1s, stop);
        if (wake == Wake::Stopped) {
            co_return;
        }
        ++ticks;
    }
}

QCoro::Task<> yieldTimes(Clock &clock, int times, int &done)
{
    for (int i = 0; i < times; ++i) {
        co_await clock.yield();
        ++done;
    }
}

TEST(FakeClock, StartsOnSeventhOfMarch)
{
    const FakeClock clock;
    EXPECT_EQ(dateText(clock.localNow()), QStringLiteral("07/03/2006 14:05:09"));
}

TEST(FakeClock, AdvancesBothTimes)
{
    FakeClock clock;
    const auto before = clock.monotonicNow();
    clock.advance(61500ms);
    EXPECT_EQ(clock.monotonicNow() - before, 61500ms);
    EXPECT_EQ(dateText(clock.localNow()), QStringLiteral("07/03/2006 14:06:10"));
}

TEST(FakeClock, MovesTheLocalTimeAlone)
{
    FakeClock clock;
    const auto before = clock.monotonicNow();
    clock.setLocal(kFakeStart - 24h);
    EXPECT_EQ(clock.monotonicNow(), before);
    clock.advance(1s);
    EXPECT_EQ(dateText(clock.localNow()), QStringLiteral("06/03/2006 14:05:10"));
}

TEST(FakeClock, WakesInOrderOfMoments)
{
    FakeClock clock;
    Alarm alarm;
    const qint64 start = std::chrono::floor<std::chrono::seconds>(clock.monotonicNow()).count();
    const auto late = ring(clock, 3s, QStringLiteral("late"), alarm);
    const auto early = ring(clock, 1s, QStringLiteral("early"), alarm);
    const auto twin = ring(clock, 1s, QStringLiteral("twin"), alarm);
    clock.advance(5s);
    EXPECT_EQ(alarm.rung, (QList<QString>{QStringLiteral("early"), QStringLiteral("twin"),
                                          QStringLiteral("late")}));
    EXPECT_EQ(alarm.seconds, (QList<qint64>{start + 1, start + 1, start + 3}));
}

TEST(FakeClock, KeepsASleepThatIsNotDue)
{
    FakeClock clock;
    Alarm alarm;
    const auto task = ring(clock, 2s, QStringLiteral("two"), alarm);
    clock.advance(1999ms);
    EXPECT_TRUE(alarm.rung.isEmpty());
    EXPECT_EQ(clock.sleeping(), 1);
    clock.advance(1ms);
    EXPECT_EQ(alarm.rung.size(), 1);
    EXPECT_EQ(clock.sleeping(), 0);
}

TEST(FakeClock, WakesTheOneThatIsStopped)
{
    FakeClock clock;
    std::stop_source stop;
    int ticks = 0;
    const auto task = tickUntil(clock, stop.get_token(), ticks);
    clock.advance(2500ms);
    stop.request_stop();
    clock.advance(10s);
    EXPECT_EQ(ticks, 2);
    EXPECT_TRUE(task.isReady());
}

TEST(FakeClock, SleepsNoMomentWhenStoppedBefore)
{
    FakeClock clock;
    std::stop_source stop;
    stop.request_stop();
    int ticks = 0;
    const auto task = tickUntil(clock, stop.get_token(), ticks);
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(clock.sleeping(), 0);
}

/// Processor time for a clock to pass some hours.
double used(FakeClock &clock, std::chrono::hours hours)
{
    const std::clock_t before = std::clock();
    clock.advance(hours);
    return static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
}

TEST(FakeClock, PassesADayOfTicksAtThePaceOfAnHour)
{
    constexpr double kMargin = 4; // for whatever else the machine does
    FakeClock clock;
    std::stop_source stop;
    int ticks = 0;
    const auto task = tickUntil(clock, stop.get_token(), ticks);
    const double hour = used(clock, 1h);
    const double day = used(clock, 24h);
    RecordProperty("ProcessorMilliseconds", static_cast<int>(day * 1000));
    EXPECT_EQ(ticks, 25 * 60 * 60);
    EXPECT_LT(day, kMargin * 24 * hour);
    stop.request_stop();
    clock.advance(0s);
}

TEST(FakeClock, RunsATimerDuringAYield)
{
    FakeClock clock;
    bool ran = false;
    int done = 0;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&ran] { ran = true; });
    timer.start(0);
    runToEnd(yieldTimes(clock, 1, done));
    EXPECT_TRUE(ran);
}

TEST(FakeClock, AdvancesThroughYields)
{
    FakeClock clock;
    int done = 0;
    const auto task = yieldTimes(clock, 20, done);
    clock.advance(0ms);
    EXPECT_EQ(done, 20);
}

} // namespace
} // namespace velmora::test
