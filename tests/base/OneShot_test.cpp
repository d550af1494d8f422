// The one-shot value underlying every wait of the program.
#include "base/OneShot.h"

#include <QCoro/QCoroTask>

#include <gtest/gtest.h>

#include <memory>

namespace velmora {
namespace {

QCoro::Task<> take(OneShot<int> &shot, int &taken)
{
    const int value = co_await shot;
    taken = value;
}

QCoro::Task<> takeOwned(OneShot<std::unique_ptr<int>> &shot, int &taken)
{
    const std::unique_ptr<int> value = co_await shot;
    taken = *value;
}

TEST(OneShot, ResumesFromTheEventLoopAndNotInsideSet)
{
    OneShot<int> shot;
    int taken = 0;
    const auto task = take(shot, taken);
    shot.set(7);
    EXPECT_EQ(taken, 0);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(taken, 7);
}

TEST(OneShot, KeepsTheFirstValue)
{
    OneShot<int> shot;
    int taken = 0;
    const auto task = take(shot, taken);
    shot.set(1);
    shot.set(2);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(taken, 1);
}

TEST(OneShot, ResumesOnceHoweverOftenItIsSet)
{
    OneShot<int> shot;
    int taken = 0;
    const auto task = take(shot, taken);
    shot.set(1);
    QCoreApplication::sendPostedEvents();
    shot.set(2);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(taken, 1);
    EXPECT_TRUE(task.isReady());
}

TEST(OneShot, HandsOutAValueThatIsThereAlreadyAtOnce)
{
    OneShot<int> shot;
    shot.set(5);
    int taken = 0;
    const auto task = take(shot, taken);
    EXPECT_EQ(taken, 5);
}

TEST(OneShot, MovesItsValue)
{
    OneShot<std::unique_ptr<int>> shot;
    int taken = 0;
    const auto task = takeOwned(shot, taken);
    shot.set(std::make_unique<int>(9));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(taken, 9);
}

} // namespace
} // namespace velmora
