// The machine's clock: sleeps that end once, and a yield that lets everything else run.
#include "base/Clock.h"

#include "support/RunTask.h"
#include "support/ScopedEnv.h"

#include <QList>
#include <QSocketNotifier>
#include <QTimer>

#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;
using test::runToEnd;
using test::ScopedEnv;

QCoro::Task<> sleepOnce(Clock &clock, std::chrono::milliseconds time, std::stop_token stop,
                        std::optional<Wake> &wake)
{
    wake = co_await clock.sleep(time, std::move(stop));
}

QCoro::Task<> noteSleep(Clock &clock, std::chrono::milliseconds time, QList<int> &ended)
{
    co_await clock.sleep(time, std::stop_token{});
    ended.append(static_cast<int>(time.count()));
}

QCoro::Task<> yieldTimes(Clock &clock, int times)
{
    for (int i = 0; i < times; ++i) {
        co_await clock.yield();
    }
}

/// Two connected sockets, with a byte under way.
class SocketPair
{
public:
    SocketPair()
    {
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends_.data()), 0);
        EXPECT_EQ(::write(ends_[1], "x", 1), 1);
    }

    Q_DISABLE_COPY_MOVE(SocketPair)

    ~SocketPair()
    {
        ::close(ends_[0]);
        ::close(ends_[1]);
    }

    [[nodiscard]] int reader() const { return ends_[0]; }

private:
    std::array<int, 2> ends_ = {-1, -1};
};

/// Puts the process in another time zone.
class InZone
{
public:
    explicit InZone(const QByteArray &zone)
        : env_(std::in_place, "TZ", zone)
    {
        ::tzset();
    }

    Q_DISABLE_COPY_MOVE(InZone)

    ~InZone()
    {
        env_.reset();
        ::tzset();
    }

private:
    std::optional<ScopedEnv> env_;
};

TEST(SystemClock, EndsSleepsInTheOrderOfTheirMoments)
{
    SystemClock clock;
    std::optional<Wake> wake;
    QList<int> ended;
    const auto last = noteSleep(clock, 60ms, ended);
    const auto first = noteSleep(clock, 20ms, ended);
    const auto second = noteSleep(clock, 40ms, ended);
    EXPECT_TRUE(ended.isEmpty());
    runToEnd(sleepOnce(clock, 80ms, std::stop_token{}, wake));
    EXPECT_EQ(wake, Wake::Elapsed);
    EXPECT_EQ(ended, (QList<int>{20, 40, 60}));
}

TEST(SystemClock, EndsASleepWhenStopped)
{
    SystemClock clock;
    std::stop_source stop;
    std::optional<Wake> wake;
    const QCoro::Task<> task = sleepOnce(clock, 1h, stop.get_token(), wake);
    stop.request_stop();
    EXPECT_FALSE(wake.has_value()) << "resumed inside the call";
    runToEnd(yieldTimes(clock, 1));
    EXPECT_EQ(wake, Wake::Stopped);
}

TEST(SystemClock, SleepsNoMomentWhenStoppedBefore)
{
    SystemClock clock;
    std::stop_source stop;
    stop.request_stop();
    std::optional<Wake> wake;
    const QCoro::Task<> task = sleepOnce(clock, 1h, stop.get_token(), wake);
    EXPECT_EQ(wake, Wake::Stopped);
}

TEST(SystemClock, LetsAZeroTimerRunDuringAYield)
{
    SystemClock clock;
    bool ran = false;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&ran] { ran = true; });
    timer.start(0);
    runToEnd(yieldTimes(clock, 1));
    EXPECT_TRUE(ran);
}

TEST(SystemClock, LetsSocketEventsRunDuringAYield)
{
    SystemClock clock;
    const SocketPair sockets;
    QSocketNotifier notifier(sockets.reader(), QSocketNotifier::Read);
    bool ran = false;
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&] {
        ran = true;
        notifier.setEnabled(false);
    });
    runToEnd(yieldTimes(clock, 1));
    EXPECT_TRUE(ran);
}

TEST(SystemClock, YieldsAThousandTimesInAMoment)
{
    SystemClock clock;
    EXPECT_NO_THROW(runToEnd(yieldTimes(clock, 1000)));
}

TEST(SystemClock, KnowsTheLocalTime)
{
    const InZone zone("EAST-03:30");
    const SystemClock clock;
    const WallTime before{std::chrono::seconds{std::time(nullptr)} + 3h + 30min};
    const WallTime now = clock.localNow();
    const WallTime after{std::chrono::seconds{std::time(nullptr)} + 3h + 30min};
    EXPECT_TRUE(before <= now && now <= after);
}

TEST(SystemClock, KnowsHowFarItsZoneIsFromGreenwich)
{
    const SystemClock clock;
    const InZone east("EAST-03:30");
    EXPECT_EQ(clock.utcOffset(), 3h + 30min);
    const InZone west("WEST+09:00");
    EXPECT_EQ(clock.utcOffset(), -9h);
}

TEST(SystemClock, KnowsTheUniversalTime)
{
    const InZone zone("EAST-03:30");
    const SystemClock clock;
    const WallTime before{std::chrono::seconds{std::time(nullptr)}};
    const WallTime now = clock.universalNow();
    const WallTime after{std::chrono::seconds{std::time(nullptr)}};
    EXPECT_TRUE(before <= now && now <= after);
}

TEST(SystemClock, NeverRunsBackwards)
{
    const SystemClock clock;
    auto last = clock.monotonicNow();
    for (int i = 0; i < 1000; ++i) {
        const auto now = clock.monotonicNow();
        ASSERT_GE(now, last);
        last = now;
    }
}

} // namespace
} // namespace velmora
