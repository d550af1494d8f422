// The owner of running coroutines: what it counts, reports and waits for.
#include "base/TaskScope.h"

#include "support/FakeClock.h"
#include "support/Printers.h"
#include "support/RunTask.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace velmora {
namespace {

using namespace std::chrono_literals;
using test::FakeClock;
using test::runToEnd;

class TaskScopeTest : public testing::Test
{
protected:
    /// The scope is empty afterwards.
    QCoro::Task<> close()
    {
        scope.requestStop();
        co_await scope.join();
    }

    FakeClock clock;
    QStringList reports;
    TaskScope scope{[this](const QString &text) { reports.append(text); }};
};

QCoro::Task<> waitFor(Clock &clock, std::chrono::milliseconds time, std::stop_token stop,
                      QList<Wake> &wakes)
{
    const Wake wake = co_await clock.sleep(time, std::move(stop));
    wakes.append(wake);
}

QCoro::Task<> waitFor(OneShot<bool> &shot)
{
    const bool value = co_await shot;
    Q_UNUSED(value);
}

QCoro::Task<> failAfter(Clock &clock, std::chrono::milliseconds time, const char *text)
{
    co_await clock.sleep(time, std::stop_token{});
    throw std::runtime_error(text);
}

QCoro::Task<> failAtOnce()
{
    throw std::runtime_error("at once");
    co_return;
}

QCoro::Task<> launchAnother(Clock &clock, TaskScope &scope, QList<Wake> &wakes)
{
    co_await clock.sleep(1s, std::stop_token{});
    scope.launch(waitFor(clock, 1s, std::stop_token{}, wakes));
}

TEST_F(TaskScopeTest, CountsWhatRuns)
{
    QList<Wake> wakes;
    scope.launch(waitFor(clock, 1s, scope.stopToken(), wakes));
    scope.launch(waitFor(clock, 2s, scope.stopToken(), wakes));
    EXPECT_EQ(scope.running(), 2);
    clock.advance(1s);
    EXPECT_EQ(scope.running(), 1);
    clock.advance(1s);
    EXPECT_EQ(scope.running(), 0);
}

TEST_F(TaskScopeTest, JoinsAtOnceWhenNothingRuns)
{
    EXPECT_NO_THROW(runToEnd(scope.join()));
    EXPECT_EQ(scope.running(), 0);
}

TEST_F(TaskScopeTest, StopsAndWaitsForAll)
{
    QList<Wake> wakes;
    scope.launch(waitFor(clock, 1h, scope.stopToken(), wakes));
    scope.launch(waitFor(clock, 2h, scope.stopToken(), wakes));
    runToEnd(close());
    EXPECT_EQ(scope.running(), 0);
    EXPECT_EQ(wakes, (QList<Wake>{Wake::Stopped, Wake::Stopped}));
}

TEST_F(TaskScopeTest, WaitsForWhatIsLaunchedMeanwhile)
{
    QList<Wake> wakes;
    scope.launch(launchAnother(clock, scope, wakes));
    const QCoro::Task<> join = scope.join();
    clock.advance(1s);
    EXPECT_FALSE(join.isReady());
    clock.advance(1s);
    EXPECT_TRUE(join.isReady());
    EXPECT_EQ(wakes.size(), 1);
}

TEST_F(TaskScopeTest, WaitsForWhatIsLaunchedWhenTheLastHasJustEnded)
{
    OneShot<bool> first;
    OneShot<bool> second;
    scope.launch(waitFor(first));
    const QCoro::Task<> join = scope.join();
    first.set(true);
    QCoreApplication::sendPostedEvents(); // ends the first; the join is about to be resumed
    ASSERT_EQ(scope.running(), 0);
    scope.launch(waitFor(second));
    clock.advance(0s);
    EXPECT_FALSE(join.isReady());
    second.set(true);
    clock.advance(0s);
    EXPECT_TRUE(join.isReady());
}

TEST_F(TaskScopeTest, ReportsWhatACoroutineThrows)
{
    scope.launch(failAfter(clock, 1s, "the disk is full"));
    EXPECT_TRUE(reports.isEmpty());
    clock.advance(1s);
    EXPECT_EQ(reports, QStringList{QStringLiteral("the disk is full")});
    EXPECT_EQ(scope.running(), 0);
}

TEST_F(TaskScopeTest, ReportsWhatIsThrownBeforeTheFirstWait)
{
    scope.launch(failAtOnce());
    EXPECT_EQ(reports, QStringList{QStringLiteral("at once")});
    EXPECT_EQ(scope.running(), 0);
}

TEST_F(TaskScopeTest, ReportsAFailureThatHasNoText)
{
    scope.launch(failAfter(clock, 1s, ""));
    clock.advance(1s);
    EXPECT_EQ(reports.size(), 1);
}

TEST_F(TaskScopeTest, JoinsAfterAFailure)
{
    scope.launch(failAfter(clock, 1s, "failed"));
    const QCoro::Task<> join = scope.join();
    clock.advance(1s);
    EXPECT_TRUE(join.isReady());
}

TEST_F(TaskScopeTest, GoesOnWithTheOthersAfterAFailure)
{
    QList<Wake> wakes;
    scope.launch(failAfter(clock, 1s, "failed"));
    scope.launch(waitFor(clock, 2s, scope.stopToken(), wakes));
    clock.advance(2s);
    EXPECT_EQ(wakes, QList<Wake>{Wake::Elapsed});
}

// As when there is no memory left for the text, or the log cannot be written.
TEST(TaskScope, CountsWhatEndedEvenIfThatCannotBeReported)
{
    FakeClock clock;
    TaskScope scope([](const QString &) { throw std::bad_alloc(); });
    scope.launch(failAtOnce());
    EXPECT_EQ(scope.running(), 0);
    scope.launch(failAfter(clock, 1s, "failed"));
    const QCoro::Task<> join = scope.join();
    clock.advance(1s);
    EXPECT_EQ(scope.running(), 0);
    EXPECT_TRUE(join.isReady());
}

#ifndef NDEBUG
void destroyWhileRunning()
{
    FakeClock clock;
    QList<Wake> wakes;
    TaskScope scope([](const QString &) {});
    scope.launch(waitFor(clock, 1h, std::stop_token{}, wakes));
}

TEST(TaskScopeDeathTest, RefusesToGoWhileSomethingRuns)
{
    EXPECT_DEATH(destroyWhileRunning(), "join\\(\\) before the scope goes");
}
#endif

} // namespace
} // namespace velmora
