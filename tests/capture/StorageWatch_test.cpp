// A storage folder that goes away, and comes back, with nothing else checking it.
#include "capture/StorageWatch.h"

#include "CaptureTest.h"

#include <QDir>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class StorageWatchTest : public CaptureTest
{
protected:
    StorageWatchTest() { house_.scope.launch(watch_.run(house_.scope.stopToken())); }

    ~StorageWatchTest() override
    {
        house_.scope.requestStop();
        clock_.advance(0ms);
    }

    void removeFolder() const
    {
        ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    }

    void makeFolder() const { house_.tree.makeFolder(u"drives/c/in"); }

    StorageWatch watch_{house_.storage, clock_};
};

TEST_F(StorageWatchTest, SeesThatTheFolderWentAway)
{
    removeFolder();
    clock_.advance(2s);
    EXPECT_EQ(house_.storage.lastCheck(), StorageCheck::Missing);
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(StorageWatchTest, SeesThatTheFolderCameBack)
{
    removeFolder();
    clock_.advance(2s);
    makeFolder();
    clock_.advance(2s);
    EXPECT_EQ(house_.storage.lastCheck(), StorageCheck::Found);
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(StorageWatchTest, LooksEveryTwoSeconds)
{
    removeFolder();
    clock_.advance(2s - 1ms);
    EXPECT_EQ(house_.storage.lastCheck(), StorageCheck::Found);
    clock_.advance(1ms);
    EXPECT_EQ(house_.storage.lastCheck(), StorageCheck::Missing);
}

TEST_F(StorageWatchTest, SaysNothingWhileNothingChanges)
{
    house_.log.setOn(true);
    int checks = 0;
    QObject::connect(&house_.storage, &StorageFolder::checked, &house_, [&checks] { ++checks; });
    clock_.advance(1h);
    EXPECT_EQ(checks, 0);
    EXPECT_EQ(house_.logText(), QString());
}

TEST_F(StorageWatchTest, LeavesATimerThatRunsAlone)
{
    house_.timer.stop();
    clock_.advance(10s);
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(StorageWatchTest, KeepsTheTimersStoppedWhileTheBoxIsEdited)
{
    add({0, 0});
    house_.storage.beginEdit();
    removeFolder();
    clock_.advance(2s);
    makeFolder();
    clock_.advance(2s);
    house_.beginTick();
    EXPECT_EQ(fetches(), 0);
}

TEST_F(StorageWatchTest, CapturesAgainWhenTheFolderIsBack)
{
    add({0, 0});
    removeFolder();
    clock_.advance(2s);
    house_.beginTick();
    EXPECT_EQ(fetches(), 0);
    makeFolder();
    clock_.advance(2s);
    house_.beginTick();
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
}

TEST_F(StorageWatchTest, EndsOnRequest)
{
    house_.scope.requestStop();
    clock_.advance(0ms);
    EXPECT_EQ(house_.scope.running(), 0);
}

} // namespace
} // namespace velmora::test
