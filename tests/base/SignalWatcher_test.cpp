// Signals that ask the program to end.
#include "base/SignalWatcher.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace velmora {
namespace {

TEST(SignalWatcher, TellsTermInterruptAndHangUpThroughTheEventLoop)
{
    const SignalWatcher watcher;
    QSignalSpy spy(&watcher, &SignalWatcher::endRequested);
    std::raise(SIGTERM);
    EXPECT_EQ(spy.count(), 0);
    EXPECT_TRUE(spy.wait(1000));
    std::raise(SIGINT);
    EXPECT_TRUE(spy.wait(1000));
    std::raise(SIGHUP);
    EXPECT_TRUE(spy.wait(1000));
    EXPECT_EQ(spy.count(), 3);
    std::signal(SIGHUP, SIG_DFL);
}

TEST(SignalWatcher, TellsOnceThatTheTerminalIsClosed)
{
    const SignalWatcher watcher;
    QSignalSpy spy(&watcher, &SignalWatcher::endRequested);
    std::raise(SIGHUP);
    EXPECT_TRUE(spy.wait(1000));
    std::raise(SIGHUP); // from the shell in it
    EXPECT_FALSE(spy.wait(50));
    std::signal(SIGHUP, SIG_DFL);
}

TEST(SignalWatcher, LeavesAHangUpIgnoredThatWasIgnoredBefore)
{
    std::signal(SIGHUP, SIG_IGN);
    {
        const SignalWatcher watcher;
        QSignalSpy spy(&watcher, &SignalWatcher::endRequested);
        std::raise(SIGHUP);
        EXPECT_FALSE(spy.wait(50));
    }
    std::signal(SIGHUP, SIG_DFL);
}

TEST(SignalWatcher, LeavesTheExitStatusAsItIsOnceItIsGone)
{
    const auto endedMeanwhile = [] {
        {
            const SignalWatcher watcher;
        }
        std::raise(SIGTERM);
        std::raise(SIGINT);
        std::_Exit(0);
    };
    EXPECT_EXIT(endedMeanwhile(), testing::ExitedWithCode(0), "");
}

TEST(SignalWatcher, LeavesTheErrorNumberOfWhatItInterrupts)
{
    constexpr int kMoreThanTheSocketTakes = 5000;
    const SignalWatcher watcher;
    errno = 0;
    for (int i = 0; i < kMoreThanTheSocketTakes; ++i) {
        std::raise(SIGTERM);
        ASSERT_EQ(errno, 0) << i;
    }
}

} // namespace
} // namespace velmora
