// How many transfers run at once, given the number of files that the process may open.
#include "net/TransferSlots.h"

#include "support/RunTask.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace velmora::test {
namespace {

class OpenFileLimit
{
public:
    explicit OpenFileLimit(rlim_t limit)
    {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit low = {limit, before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &low);
    }

    Q_DISABLE_COPY_MOVE(OpenFileLimit)

    ~OpenFileLimit() { ::setrlimit(RLIMIT_NOFILE, &before_); }

private:
    rlimit before_ = {};
};

class TransferSlotsTest : public testing::Test
{
protected:
    QCoro::Task<> enter(int number, std::stop_token stop = {})
    {
        const bool entered = co_await slots_.enter(stop);
        (entered ? entered_ : givenUp_).append(number);
    }

    // Requests this many places.
    void begin(int count)
    {
        for (int i = 0; i < count; ++i) {
            tasks_.push_back(enter(i));
        }
        QCoreApplication::processEvents();
    }

    void leave()
    {
        slots_.leave();
        ++left_;
        QCoreApplication::processEvents();
    }

    /// How many have a place.
    [[nodiscard]] qsizetype inside() const { return entered_.size() - left_; }

    int held_ = 0;
    qsizetype left_ = 0;
    TransferSlots slots_{[this] { return held_; }};
    QList<int> entered_;
    QList<int> givenUp_;
    std::vector<QCoro::Task<>> tasks_;
};

TEST_F(TransferSlotsTest, AHundredRunAtOnceAsAProcessIsUsuallyLimited)
{
    const OpenFileLimit limit(1024);
    begin(100);
    EXPECT_EQ(inside(), 100);
}

#if !__has_feature(undefined_behavior_sanitizer) // an instrumented program opens files of its own
TEST_F(TransferSlotsTest, OneMayAlwaysRun)
{
    const OpenFileLimit limit(1);
    begin(3);
    EXPECT_EQ(entered_, QList<int>{0});
    leave();
    leave();
    EXPECT_EQ(entered_, (QList<int>{0, 1, 2}));
    leave();
}
#endif

TEST_F(TransferSlotsTest, FewFilesLetFewRunAndAllInTheOrderInWhichTheyCame)
{
    const OpenFileLimit limit(64);
    begin(100);
    const qsizetype first = entered_.size();
    EXPECT_GT(first, 0);
    EXPECT_LT(first, 10);
    while (inside() > 0) {
        leave();
        ASSERT_LE(inside(), first);
    }
    ASSERT_EQ(entered_.size(), 100);
    EXPECT_TRUE(std::is_sorted(entered_.begin(), entered_.end()));
}

TEST_F(TransferSlotsTest, WhatIsHeldByPicturesLeavesRoomForFewer)
{
    const OpenFileLimit limit(256);
    begin(1);
    held_ = 250;
    begin(2);
    EXPECT_EQ(inside(), 1);
    held_ = 0;
    leave();
    EXPECT_EQ(inside(), 2);
    leave();
    leave();
}

TEST_F(TransferSlotsTest, OneThatWaitsCanGiveUp)
{
    const OpenFileLimit limit(256);
    std::stop_source stop;
    begin(1);
    held_ = 250;
    tasks_.push_back(enter(7, stop.get_token()));
    tasks_.push_back(enter(8));
    stop.request_stop();
    QCoreApplication::processEvents();
    EXPECT_EQ(givenUp_, QList<int>{7});
    leave();
    EXPECT_EQ(entered_, (QList<int>{0, 8}));
    leave();
    begin(1);
    EXPECT_EQ(inside(), 1) << "a place is lost";
    leave();
}

} // namespace
} // namespace velmora::test
