// What is deleted after one month, and what stays.
#include "RetentionTest.h"
#include "support/WithoutRootRights.h"

#include <QDir>
#include <QScopeGuard>

#include <sys/stat.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class RetentionRule : public RetentionTest
{
protected:
    /// By long addresses that differ only behind what is left of them in their folder's name.
    void addInOneFolder(CameraAddress one, CameraAddress other)
    {
        const QString url = QStringLiteral("http://cam/") + QString(90, u'1');
        house_.addCamera(one, url + u'1');
        house_.addCamera(other, url + u'2');
        ASSERT_EQ(house_.folder(one), house_.folder(other));
    }
};

TEST_F(RetentionRule, DeletesAnImageOfMoreThanAMonth)
{
    put(kOld);
    begin();
    EXPECT_EQ(house_.images(kKept), QStringList({kNewest}));
}

TEST_F(RetentionRule, KeepsAnImageOfExactlyAMonth)
{
    const QString exact = QStringLiteral("20060207_1405090714.jpg");
    put(exact);
    begin();
    EXPECT_EQ(left(), QStringList({exact}));
}

TEST_F(RetentionRule, CountsACalendarMonthUpToTheLastDayOfAShortOne)
{
    clock_.setLocal(dateFromText(u"31/03/2006 10:00:00").value());
    const QString lastDay = QStringLiteral("20060228_1000000101.jpg");
    put(lastDay);
    put(QStringLiteral("20060228_0959590101.jpg"));
    begin();
    EXPECT_EQ(left(), QStringList({lastDay}));
}

TEST_F(RetentionRule, DeletesWhateverItsExtensionIs)
{
    put(QStringLiteral("20050101_0000000101.png"));
    put(QStringLiteral("20050101_0000000101.tar.gz"));
    begin();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionRule, KeepsFilesOfAnotherNameForm)
{
    QStringList others = {QStringLiteral("20050101_000000.jpg"),
                          QStringLiteral("20050101_0000000001jpg"),
                          QStringLiteral("20050101_000000000.jpg"),
                          QStringLiteral("20051301_0000000101.jpg"),
                          QStringLiteral("notes.txt"),
                          QStringLiteral("x0050101_0000000101.jpg")};
    for (const QString &name : others) {
        put(name);
    }
    begin();
    others.sort();
    EXPECT_EQ(left(), others);
}

TEST_F(RetentionRule, KeepsImagesOfAnUnknownDate)
{
    put(QStringLiteral("18991230_0000000101.jpg"));
    begin();
    EXPECT_EQ(left(), QStringList({QStringLiteral("18991230_0000000101.jpg")}));
}

TEST_F(RetentionRule, KeepsTheNewestImageHoweverOld)
{
    QFile::remove(path(kNewest));
    put(QStringLiteral("20030101_0000000101.jpg"));
    put(QStringLiteral("20040101_0000000101.jpg"));
    put(QStringLiteral("20040101_0000000102.jpg"));
    begin();
    EXPECT_EQ(house_.images(kKept), QStringList({QStringLiteral("20040101_0000000102.jpg")}));
}

TEST_F(RetentionRule, LeavesCamerasAloneWhoseBoxIsNotTicked)
{
    const CameraAddress other{0, 1};
    add(other);
    put(kNewest, other);
    put(kOld, other);
    begin();
    EXPECT_EQ(left(other), QStringList({kOld}));
    tick(other, QStringLiteral("0"));
    begin();
    EXPECT_EQ(left(other), QStringList({kOld}));
}

TEST_F(RetentionRule, LeavesImagesAloneThatACameraWhoseBoxIsNotTickedHasInTheSameFolder)
{
    const CameraAddress ticked{0, 1};
    const CameraAddress other{0, 2};
    addInOneFolder(ticked, other);
    tick(ticked);
    put(kNewest, other);
    put(kOld, other);
    begin();
    EXPECT_EQ(left(other), QStringList({kOld}));
}

// So does a disk that takes capital and small letters for the same lead two names to one folder.
TEST_F(RetentionRule, LeavesImagesAloneThatACameraWhoseBoxIsNotTickedHasByAnotherNameOfTheFolder)
{
    const CameraAddress other{0, 2};
    add(other);
    put(kOld);
    ASSERT_TRUE(QFile::link(path(), house_.tree.path(house_.folder(other))));
    begin();
    EXPECT_EQ(left(), QStringList({kOld}));
    tick(other);
    follow();
    EXPECT_EQ(left(), QStringList()) << "a turn in which that was found counts for none";
}

TEST_F(RetentionRule, DeletesWhatTwoTickedCamerasHaveInOneFolder)
{
    const CameraAddress ticked{0, 1};
    const CameraAddress other{0, 2};
    addInOneFolder(ticked, other);
    tick(ticked);
    tick(other);
    put(kNewest, other);
    put(kOld, other);
    begin();
    EXPECT_EQ(left(other), QStringList());
}

// Rows with the same address have the same camera.
TEST_F(RetentionRule, DeletesOldImagesOfACameraWhoseBoxIsTickedInOneOfItsRows)
{
    const CameraAddress again{0, 2};
    house_.addCamera(again, house_.table.url(kKept));
    put(kOld);
    begin();
    EXPECT_EQ(left(), QStringList());
}

TEST_F(RetentionRule, GoesThroughAllTickedCamerasAtTheStartInGroupsThatAreOffToo)
{
    const CameraAddress other{9, 9};
    add(other);
    house_.table.setGroupActive(9, false);
    tick(other);
    for (const CameraAddress camera : {kKept, other}) {
        put(kNewest, camera);
        put(kOld, camera);
    }
    begin();
    EXPECT_EQ(left(), QStringList());
    EXPECT_EQ(left(other), QStringList());
    EXPECT_EQ(deleted_, QList<CameraAddress>({kKept, other}));
}

TEST_F(RetentionRule, TouchesNothingInTheStorageFolderItselfForARowWithoutAddress)
{
    tick({0, 5});
    house_.tree.write(QStringLiteral("drives/c/in/") + kOld, "old");
    house_.tree.write(QStringLiteral("drives/c/in/") + kNewest, "new");
    begin();
    EXPECT_TRUE(house_.tree.exists(QStringLiteral("drives/c/in/") + kOld));
}

TEST_F(RetentionRule, DeletesNothingWhileTheClockIsBeforeTheNewestImage)
{
    house_.log.setOn(true);
    put(kOld);
    put(QStringLiteral("20060307_1410100714.jpg"));
    begin();
    EXPECT_TRUE(left().contains(kOld));
    EXPECT_TRUE(house_.logText().contains(
        QStringLiteral("Retention 0:0: the clock is before the newest image, nothing deleted")));
}

TEST_F(RetentionRule, TakesACameraClockThatIsAFewMinutesAhead)
{
    put(kOld);
    put(QStringLiteral("20060307_1410090714.jpg"));
    begin();
    EXPECT_FALSE(left().contains(kOld));
}

TEST_F(RetentionRule, DeletesNothingWithAClockSetToLongAgo)
{
    clock_.setLocal(dateFromText(u"01/01/1980 00:00:00").value());
    put(kOld);
    put(QStringLiteral("19700101_0000000101.jpg"));
    begin();
    EXPECT_EQ(left().size(), 2);
}

TEST_F(RetentionRule, KeepsTheNewestWithAClockSetToFarAhead)
{
    clock_.setLocal(dateFromText(u"01/01/2050 00:00:00").value());
    put(kOld);
    begin();
    EXPECT_EQ(house_.images(kKept), QStringList({kNewest}));
}

// West of Greenwich, local time is behind the names, which are in UTC.
TEST_F(RetentionRule, TrustsTheClockWestOfGreenwich)
{
    clock_.setUtcOffset(-8h);
    put(kOld);
    put(QStringLiteral("20060307_2205090714.jpg"));
    begin();
    EXPECT_FALSE(left().contains(kOld));
}

TEST_F(RetentionRule, CountsTheMonthFromTheEarlierOfBothTimesEastOfGreenwich)
{
    clock_.setUtcOffset(+8h);
    const QString limit = QStringLiteral("20060207_0605090714.jpg");
    put(limit);
    put(QStringLiteral("20060207_0605080714.jpg"));
    begin();
    EXPECT_EQ(left(), QStringList({limit}));
}

TEST_F(RetentionRule, KeepsFoldersAndLinksOfThatName)
{
    house_.tree.makeFolder(house_.folder(kKept) + u'/' + kOld);
    house_.tree.write(u"elsewhere/file", "not an image");
    const QString link = QStringLiteral("20050101_0000000101.jpg");
    ASSERT_TRUE(QFile::link(house_.tree.path(u"elsewhere/file"), path(link)));
    begin();
    EXPECT_TRUE(house_.tree.exists(house_.folder(kKept) + u'/' + kOld));
    EXPECT_TRUE(house_.tree.exists(house_.folder(kKept) + u'/' + link));
    EXPECT_TRUE(house_.tree.exists(u"elsewhere/file"));
}

TEST_F(RetentionRule, LeavesACameraFolderAloneThatIsALink)
{
    house_.log.setOn(true);
    house_.tree.write(QStringLiteral("home/") + kOld, "old");
    house_.tree.write(QStringLiteral("home/") + kNewest, "new");
    ASSERT_TRUE(QDir(path()).removeRecursively());
    ASSERT_TRUE(QFile::link(house_.tree.path(u"home"), path().chopped(1)));
    begin();
    EXPECT_TRUE(house_.tree.exists(QStringLiteral("home/") + kOld));
    EXPECT_FALSE(house_.logText().contains(QStringLiteral("Retention")));
}

TEST_F(RetentionRule, LeavesSubFoldersAlone)
{
    house_.tree.write(house_.folder(kKept) + QStringLiteral("/sub/") + kOld, "old");
    begin();
    EXPECT_TRUE(house_.tree.exists(house_.folder(kKept) + QStringLiteral("/sub/") + kOld));
}

TEST_F(RetentionRule, ToleratesAMissingFolder)
{
    ASSERT_TRUE(QDir(path()).removeRecursively());
    begin();
    EXPECT_FALSE(house_.tree.exists(house_.folder(kKept)));
    EXPECT_EQ(house_.allTexts(), QStringList());
}

TEST_F(RetentionRule, LogsEachRun)
{
    house_.log.setOn(true);
    put(kOld);
    put(QStringLiteral("20060101_0000000101.jpg"));
    begin();
    EXPECT_TRUE(house_.logText().contains(
        QStringLiteral("Retention 0:0: 2 images from before 07/02/2006 14:05:09 deleted")));
}

TEST_F(RetentionRule, LogsWhatCannotBeDeletedAndWhy)
{
    house_.log.setOn(true);
    put(kOld);
    house_.tree.write(u"Velmora.log", "");
    const auto allow = [](const QString &path, mode_t mode) {
        EXPECT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0);
    };
    allow(house_.tree.path(), 0755);
    allow(house_.tree.path(u"Velmora.log"), 0666);
    allow(path(), 0555);
    const auto restore = qScopeGuard([&] { allow(path(), 0755); });
    {
        const WithoutRootRights user;
        begin();
    }
    EXPECT_EQ(left(), QStringList({kOld}));
    EXPECT_TRUE(deleted_.isEmpty());
    EXPECT_TRUE(house_.logText().contains(
        QStringLiteral("Retention 0:0: 0 images from before 07/02/2006 14:05:09 deleted, 1 not: "
                       "Permission denied")))
        << house_.logText().toStdString();
}

TEST_F(RetentionRule, SaysThatImagesAreGone)
{
    put(kOld);
    begin();
    EXPECT_EQ(deleted_, QList<CameraAddress>({kKept}));
}

TEST_F(RetentionRule, SaysNothingWhenNothingIsGone)
{
    house_.log.setOn(true);
    begin();
    EXPECT_TRUE(deleted_.isEmpty());
    EXPECT_TRUE(house_.logText().contains(QStringLiteral("Retention 0:0: 0 images")));
}

} // namespace
} // namespace velmora::test
