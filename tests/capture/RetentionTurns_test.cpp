// When old images are deleted.
#include "RetentionTest.h"

#include <QCoreApplication>
#include <QTime>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class RetentionTurns : public RetentionTest
{
protected:
    static constexpr int kMany = 300;

    void putMany(const QString &day = QStringLiteral("20060110_"))
    {
        for (int i = 0; i < kMany; ++i) {
            const QTime time = QTime(0, 0).addSecs(i);
            put(day + time.toString(QStringLiteral("HHmmss")) + QStringLiteral("0714.jpg"));
        }
    }

    /// Begins a turn and runs the event loop until the first images are gone.
    void beginDeletion(Retention &retention)
    {
        retention.begin();
        for (int turns = 0; left().size() == kMany && turns < 1000; ++turns) {
            QCoreApplication::processEvents();
        }
    }

    [[nodiscard]] Retention busyRetention()
    {
        return Retention(house_.table, house_.storage, house_.log, busy_, house_.scope);
    }
};

TEST_F(RetentionTurns, FollowsAStoredImage)
{
    put(kOld);
    follow();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionTurns, FollowsNoImageOfACameraWhoseBoxIsNotTicked)
{
    put(kOld);
    tick(kKept, QStringLiteral("0"));
    follow();
    EXPECT_EQ(left(), QStringList({kOld}));
}

TEST_F(RetentionTurns, ComeAtMostOnceAnHourForEachCamera)
{
    begin();
    put(kOld);
    clock_.advance(1h - 1ms);
    follow();
    EXPECT_EQ(left(), QStringList({kOld}));
    clock_.advance(1ms);
    follow();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionTurns, ComeOnceForAnImageThatIsStoredWhileTheCameraWaits)
{
    house_.log.setOn(true);
    retention_.begin();
    retention_.follow(kKept);
    house_.finish();
    EXPECT_EQ(house_.logText().count(QStringLiteral("Retention 0:0")), 1);
}

TEST_F(RetentionTurns, AreNotHeldUpByThoseOfAnotherCamera)
{
    const CameraAddress other{3, 4};
    begin();
    add(other);
    tick(other);
    put(kNewest, other);
    put(kOld, other);
    follow(other);
    EXPECT_EQ(left(other), QStringList());
}

TEST_F(RetentionTurns, DoNotCountWhileTheFolderIsMissing)
{
    const CameraAddress other{3, 4};
    add(other);
    tick(other);
    follow(other);
    put(kNewest, other);
    put(kOld, other);
    follow(other);
    EXPECT_EQ(left(other), QStringList());
}

TEST_F(RetentionTurns, ComeWhenTheBoxIsTickedLater)
{
    tick(kKept, QStringLiteral("0"));
    begin();
    put(kOld);
    tick(kKept);
    follow();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionTurns, DeleteNothingOnceTheBoxIsNoLongerTicked)
{
    put(kOld);
    retention_.begin();
    tick(kKept, QStringLiteral("0"));
    house_.finish();
    EXPECT_EQ(left(), QStringList({kOld}));
}

TEST_F(RetentionTurns, AreNotMovedByTheUsersClock)
{
    begin();
    put(kOld);
    clock_.setLocal(clock_.localNow() + 3h);
    follow();
    EXPECT_EQ(left(), QStringList({kOld}));
}

TEST_F(RetentionTurns, LetEventsRun)
{
    for (int i = 0; i < 2000; ++i) {
        put(QStringLiteral("20050101_%1.jpg").arg(i, 10, 10, QLatin1Char('0')));
    }
    Retention retention(house_.table, house_.storage, house_.log, busy_, house_.scope);
    retention.begin();
    house_.finish();
    EXPECT_EQ(left().size(), 0);
    EXPECT_GE(busy_.yields(), 5);
}

// A disk may take long to tell whether a folder is another one's.
TEST_F(RetentionTurns, LetEventsRunWhileOtherCamerasFoldersAreLookedAtAndLookOnce)
{
    const auto yieldsOfATurn = [this] {
        putMany();
        Retention retention = busyRetention();
        const int before = busy_.yields();
        retention.begin();
        house_.finish();
        EXPECT_EQ(left(), QStringList());
        return busy_.yields() - before;
    };
    const int alone = yieldsOfATurn();
    for (int index = 1; index < kCameras; ++index) {
        add(cameraAt(index));
    }
    const int amongAll = yieldsOfATurn();
    EXPECT_GE(amongAll, alone + 10);
    EXPECT_LE(amongAll, alone + 50);
}

TEST_F(RetentionTurns, BeginNothingOnceTheProgramEnds)
{
    put(kOld);
    retention_.end();
    follow();
    EXPECT_EQ(left(), QStringList({kOld}));
}

TEST_F(RetentionTurns, GoOnForAWhileWhenTheProgramEnds)
{
    put(kOld);
    retention_.begin();
    retention_.end();
    house_.finish();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionTurns, StopWhenTheWhileIsOver)
{
    for (int i = 0; i < 2000; ++i) {
        put(QStringLiteral("20050101_%1.jpg").arg(i, 10, 10, QLatin1Char('0')));
    }
    busy_.setCost(500ms);
    Retention retention(house_.table, house_.storage, house_.log, busy_, house_.scope);
    retention.begin();
    retention.end();
    house_.finish();
    EXPECT_GT(left().size(), 0);
}

TEST_F(RetentionTurns, DeleteNothingWhileTheStorageBoxIsEdited)
{
    put(kOld);
    retention_.begin();
    house_.storage.beginEdit();
    clock_.advance(1h);
    EXPECT_EQ(left(), QStringList({kOld}));
    house_.storage.putInForce();
    house_.finish();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionTurns, DeleteNothingInAFolderThatIsOnlyTyped)
{
    const QString name = house_.folder(kKept).section(u'/', -1);
    const QString typed = QStringLiteral("drives/c/other/") + name;
    house_.tree.write(typed + u'/' + kOld, "mine");
    house_.tree.write(typed + u'/' + kNewest, "mine");
    retention_.begin();
    house_.storage.edit(QStringLiteral("C:\\other"));
    clock_.advance(1h);
    house_.storage.edit(QStringLiteral("C:\\in"));
    house_.storage.putInForce();
    house_.finish();
    EXPECT_EQ(house_.tree.files(typed), (QStringList{kOld, kNewest}));
}

TEST_F(RetentionTurns, BeginAFolderAgainInTheMiddleOfWhichTheBoxWasEntered)
{
    putMany();
    Retention retention = busyRetention();
    beginDeletion(retention);
    house_.storage.beginEdit();
    QCoreApplication::processEvents();
    const qsizetype paused = left().size();
    clock_.advance(1min);
    EXPECT_EQ(left().size(), paused);
    EXPECT_GT(paused, 0);
    house_.storage.putInForce();
    house_.finish();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionTurns, EndInTheMiddleOfAFolderOnceTheBoxIsNoLongerTicked)
{
    putMany();
    Retention retention = busyRetention();
    beginDeletion(retention);
    const qsizetype stayed = left().size();
    tick(kKept, QStringLiteral("0"));
    house_.finish();
    EXPECT_EQ(left().size(), stayed);
    EXPECT_GT(stayed, 0);
    tick(kKept);
    retention.follow(kKept);
    house_.finish();
    EXPECT_EQ(left(), QStringList()) << "a turn that did not come to its end counts for none";
}

TEST_F(RetentionTurns, EndInTheMiddleOfAFolderWhenTheWhileIsOver)
{
    putMany();
    Retention retention = busyRetention();
    beginDeletion(retention);
    retention.end();
    busy_.setCost(3s);
    house_.finish();
    EXPECT_GT(left().size(), 0);
}

TEST_F(RetentionTurns, EndInTheMiddleOfAFolderWhoseCameraIsTakenAway)
{
    putMany();
    const QString folder = house_.folder(kKept);
    Retention retention = busyRetention();
    beginDeletion(retention);
    const qsizetype stayed = left().size();
    house_.addCamera(kKept, QStringLiteral("http://other/a.jpg"));
    house_.finish();
    EXPECT_EQ(house_.tree.files(folder).size(), stayed + 1);
    EXPECT_GT(stayed, 0);
}

// The newest that is left is among the old ones.
TEST_F(RetentionTurns, EndInTheMiddleOfAFolderWhoseNewestImageIsDeletedByOthers)
{
    putMany();
    Retention retention = busyRetention();
    beginDeletion(retention);
    const qsizetype stayed = left().size();
    ASSERT_TRUE(QFile::remove(path(kNewest)));
    house_.finish();
    EXPECT_EQ(left().size(), stayed);
    EXPECT_GT(stayed, 0);
}

TEST_F(RetentionTurns, BeginAFolderAgainInTheMiddleOfWhichTheClockIsSetBack)
{
    putMany(QStringLiteral("20060306_"));
    clock_.setLocal(kFakeStart + 365 * 24h);
    Retention retention = busyRetention();
    beginDeletion(retention);
    const qsizetype stayed = left().size();
    clock_.setLocal(kFakeStart);
    house_.finish();
    EXPECT_EQ(left().size(), stayed) << "they are of yesterday";
    EXPECT_GT(stayed, 0);
}

} // namespace
} // namespace velmora::test
