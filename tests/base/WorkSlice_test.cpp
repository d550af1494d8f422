// Long work that lets events be handled when its slice of time is over.
#include "base/WorkSlice.h"

#include "support/FakeClock.h"
#include "support/RunTask.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;
using namespace test;

class WorkSliceTest : public testing::Test
{
protected:
    // True when an event was handled meanwhile.
    bool letsEventsRun()
    {
        bool handled = false;
        QObject receiver;
        QMetaObject::invokeMethod(&receiver, [&handled] { handled = true; }, Qt::QueuedConnection);
        const QCoro::Task<> task = letEventsRun(&slice_, &clock_);
        if (!task.isReady()) {
            runToEnd(wait(&task));
        }
        return handled;
    }

    static QCoro::Task<> wait(const QCoro::Task<> *task) { co_await *task; }

    FakeClock clock_;
    WorkSlice slice_{clock_};
};

TEST_F(WorkSliceTest, LetsNoEventsRunBeforeItIsOver)
{
    clock_.advance(4ms);
    EXPECT_FALSE(slice_.isOver());
    EXPECT_FALSE(letsEventsRun());
}

TEST_F(WorkSliceTest, LetsEventsRunWhenItIsOverAndThenStartsANewOne)
{
    clock_.advance(5ms);
    EXPECT_TRUE(slice_.isOver());
    EXPECT_TRUE(letsEventsRun());
    EXPECT_FALSE(slice_.isOver());
    EXPECT_FALSE(letsEventsRun());
}

} // namespace
} // namespace velmora
