// When old images are deleted.
#include "RetentionTest.h"

#include <QCoreApplication>
#include <QTime>

#include <functional>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class RetentionTurns : public RetentionTest
{
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
    constexpr int kMany = 300;
    for (int i = 0; i < kMany; ++i) {
        const QTime time = QTime(0, 0).addSecs(i);
        put(QStringLiteral("20060110_") + time.toString(QStringLiteral("HHmmss")) +
            QStringLiteral("0714.jpg"));
    }
    Retention retention(house_.table, house_.storage, house_.log, busy_, house_.scope);
    retention.begin();
    for (int turns = 0; left().size() == kMany && turns < 1000; ++turns) {
        QCoreApplication::processEvents();
    }
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

/// Something happens as soon as some of many old images are deleted.
class RetentionUnderWay : public RetentionTest
{
protected:
    void run(const std::function<void()> &happen)
    {
        for (int i = 0; i < kMany; ++i) {
            put(QStringLiteral("20060110_000000%1.jpg").arg(i, 4, 10, QLatin1Char('0')));
        }
        busy_.setCost(5ms);
        busy_.setOnYield([&](int) {
            if (left_ == kMany) {
                left_ = left().size();
                if (left_ < kMany) {
                    happen();
                }
            }
        });
        Retention retention(house_.table, house_.storage, house_.log, busy_, house_.scope);
        retention.begin();
        house_.finish();
    }

    static constexpr qsizetype kMany = 300;
    qsizetype left_ = kMany; // at that moment
};

TEST_F(RetentionUnderWay, EndsWhenTheBoxIsUnticked)
{
    run([&] { tick(kKept, QStringLiteral("0")); });
    EXPECT_LT(left_, kMany);
    EXPECT_EQ(left().size(), left_);
}

TEST_F(RetentionUnderWay, EndsWhenTheCameraIsTakenOutOfTheTable)
{
    const QString folder = house_.folder(kKept);
    run([&] { house_.addCamera(kKept, {}); });
    EXPECT_LT(left_, kMany);
    EXPECT_EQ(house_.tree.files(folder).size(), left_ + 1);
}

TEST_F(RetentionUnderWay, EndsWhenTheNewestImageIsDeletedByOthers)
{
    run([&] { QFile::remove(path(kNewest)); });
    EXPECT_LT(left_, kMany);
    EXPECT_EQ(left().size(), left_);
}

} // namespace
} // namespace velmora::test
