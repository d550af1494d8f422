// The helper that runs a coroutine to its end.
#include "support/RunTask.h"

#include "base/Clock.h"
#include "base/OneShot.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

QCoro::Task<> yieldAndMark(Clock &clock, bool &mark)
{
    co_await clock.yield();
    mark = true;
}

QCoro::Task<> yieldAndThrow(Clock &clock)
{
    co_await clock.yield();
    throw std::invalid_argument("the disk is full");
}

QCoro::Task<> waitForever(OneShot<bool> &never)
{
    const bool value = co_await never;
    Q_UNUSED(value);
}

QCoro::Task<> endAtOnce()
{
    co_return;
}

TEST(RunToEnd, WaitsForTheLastStep)
{
    SystemClock clock;
    bool mark = false;
    runToEnd(yieldAndMark(clock, mark));
    EXPECT_TRUE(mark);
}

TEST(RunToEnd, TakesATaskThatHasEndedAlready)
{
    EXPECT_NO_THROW(runToEnd(endAtOnce()));
}

TEST(RunToEnd, ThrowsOnWhatLeavesTheTask)
{
    SystemClock clock;
    EXPECT_THROW(runToEnd(yieldAndThrow(clock)), std::invalid_argument);
}

TEST(RunToEnd, ThrowsAtItsLimit)
{
    OneShot<bool> never;
    EXPECT_THROW(runToEnd(waitForever(never), 1ms), std::runtime_error);
    never.set(true); // lets the task end
    SystemClock clock;
    runToEnd(clock.yield());
}

} // namespace
} // namespace velmora::test
