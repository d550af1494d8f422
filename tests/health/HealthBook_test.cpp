// What is known about each camera: learnt from the capture, read back, or counted.
#include "HealthHouse.h"
#include "support/RefusedCalls.h"

#include <QDir>
#include <QFile>

#include <cerrno>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QString kImage = QStringLiteral("20060307_1300000714.jpg");

class HealthBookTest : public HealthTest
{
};

TEST_F(HealthBookTest, CountsTheImagesOfAnUnknownFolder)
{
    add(kOne);
    house_.putImage(kOne, kImage, QByteArray(500, 'x'));
    house_.putImage(kOne, QStringLiteral("20060307_1305000714.jpg"), QByteArray(500, 'x'));
    book_.load();
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 2);
    EXPECT_EQ(book_.camera(kOne).bytes, 1000);
    EXPECT_EQ(book_.camera(kOne).usualInterval(), 5min);
    EXPECT_EQ(book_.quiet(kOne), 1h + 9s);
}

TEST_F(HealthBookTest, HearsOfImagesAndFailures)
{
    add(kOne);
    book_.load();
    house_.load(kOne);
    EXPECT_EQ(book_.camera(kOne).images, 1);
    EXPECT_EQ(book_.camera(kOne).bytes, 2000);
    source_.answer(cameraUrl(kOne), failedReply());
    house_.load(kOne);
    house_.load(kOne);
    EXPECT_EQ(book_.camera(kOne).failures, 2);
    EXPECT_EQ(book_.camera(kOne).failure, QStringLiteral("the camera is out"));
}

TEST_F(HealthBookTest, KeepsAFailureThatTheSettingsCouldNotTake)
{
    add(kOne);
    book_.load();
    house_.load(kOne);
    ASSERT_EQ(house_.value(u"SB", kOne), kGreen);
    ASSERT_TRUE(QFile::setPermissions(house_.settings.path(), QFile::ReadOwner));
    source_.answer(cameraUrl(kOne), failedReply());
    house_.load(kOne);
    ASSERT_EQ(book_.camera(kOne).failures, 1);
    book_.followTable();
    EXPECT_EQ(book_.camera(kOne).failures, 1);
}

TEST_F(HealthBookTest, KnowsAgainAfterARestart)
{
    add(kOne);
    book_.load();
    house_.load(kOne);
    book_.save();
    HealthBook again(house_.table, house_.storage, clock_, house_.scope);
    again.load();
    EXPECT_EQ(again.camera(kOne).images, 1);
    EXPECT_EQ(again.camera(kOne).newest, book_.camera(kOne).newest);
}

TEST_F(HealthBookTest, LeavesAFileOfANewerVersionAlone)
{
    const QByteArray newer = "{\"version\":99}";
    house_.tree.write(u"Velmora.health", newer);
    add(kOne);
    book_.load();
    house_.load(kOne);
    book_.save();
    EXPECT_EQ(house_.tree.read(u"Velmora.health"), newer);
    EXPECT_EQ(book_.camera(kOne).images, 1);
}

TEST_F(HealthBookTest, LeavesAFileThatCannotBeReadAlone)
{
    const QByteArray good = "{\"version\":1,\"cameras\":[]}";
    house_.tree.write(u"Velmora.health", good);
    add(kOne);
    {
        const RefusedCall refused(Call::Read, EIO, 2);
        book_.load();
    }
    house_.load(kOne);
    book_.save();
    EXPECT_EQ(house_.tree.read(u"Velmora.health"), good);
}

TEST_F(HealthBookTest, LeavesAloneWhatIsBehindALinkAndNotItsOwn)
{
    const QByteArray letter = "a letter";
    house_.tree.write(u"letter.txt", letter);
    ASSERT_TRUE(QFile::link(house_.tree.path(u"letter.txt"), house_.tree.path(u"Velmora.health")));
    add(kOne);
    book_.load();
    house_.load(kOne);
    book_.save();
    EXPECT_EQ(house_.tree.read(u"letter.txt"), letter);
    EXPECT_EQ(book_.camera(kOne).images, 1);
}

TEST_F(HealthBookTest, TakesARowWithAnotherAddressForAnotherCamera)
{
    add(kOne);
    book_.load();
    house_.load(kOne);
    house_.addCamera(kOne, QStringLiteral("http://other/a.jpg"));
    book_.followTable();
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 0);
    EXPECT_FALSE(book_.camera(kOne).newest);
}

// It does so every few seconds, for a hundred cameras.
TEST_F(HealthBookTest, FollowsTheTableByReadingTheSettingsOnce)
{
    add(kOne);
    add({0, 2});
    book_.load();
    const RefusedCall none(Call::OpenToRead, EIO, RefusedCall::kEachTime, 100);
    book_.followTable();
    EXPECT_EQ(none.passed(), 1);
}

TEST_F(HealthBookTest, LaysAFailureToTheCameraThatHasTheRowNow)
{
    add(kOne);
    book_.load();
    book_.addFailure(kOne, QStringLiteral("no answer"));
    house_.addCamera(kOne, QStringLiteral("http://other/a.jpg"));
    book_.addFailure(kOne, QStringLiteral("no picture"));
    book_.followTable();
    EXPECT_EQ(book_.camera(kOne).failures, 1);
    EXPECT_EQ(book_.camera(kOne).failure, QStringLiteral("no picture"));
}

TEST_F(HealthBookTest, TakesNothingForARowThatIsEmptied)
{
    add(kOne);
    book_.load();
    house_.addCamera(kOne, {});
    book_.addFailure(kOne, QStringLiteral("no answer"));
    book_.addImage(kOne, QStringLiteral("x"));
    EXPECT_EQ(book_.camera(kOne).toJson(), CameraHealth().toJson());
}

TEST_F(HealthBookTest, ForgetsARowThatIsEmptied)
{
    add(kOne);
    book_.load();
    EXPECT_EQ(book_.cameras(), std::vector<CameraAddress>{kOne});
    house_.addCamera(kOne, {});
    book_.followTable();
    house_.finish();
    EXPECT_TRUE(book_.cameras().empty());
}

TEST_F(HealthBookTest, ShowsTheName)
{
    add(kOne);
    book_.load();
    EXPECT_EQ(book_.title(kOne), QStringLiteral("0:1 cam/0/1/picture.jpg"));
    house_.settings.write(u"Camera01", u"Name", u"Garage");
    book_.followTable();
    EXPECT_EQ(book_.title(kOne), QStringLiteral("0:1 Garage"));
}

TEST_F(HealthBookTest, CountsAgainWhatWasDeleted)
{
    add(kOne);
    house_.putImage(kOne, kImage, QByteArray(500, 'x'));
    book_.load();
    house_.finish();
    house_.tree.makeFolder(u"elsewhere");
    QFile::remove(house_.tree.path(house_.folder(kOne) + u'/' + kImage));
    book_.recount(kOne);
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 0);
    EXPECT_TRUE(book_.camera(kOne).newest);
}

TEST_F(HealthBookTest, CountsAFolderAgainOfWhichAnImageWasDeleted)
{
    add(kOne);
    house_.putImage(kOne, kImage);
    book_.load();
    house_.finish();
    ASSERT_EQ(book_.camera(kOne).images, 1);
    QFile::remove(house_.tree.path(house_.folder(kOne) + u'/' + kImage));
    book_.recountFolder(house_.storage.native(QStringLiteral("C:\\elsewhere\\")));
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 1);
    book_.recountFolder(house_.storage.cameraFolder(kOne));
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 0);
}

TEST_F(HealthBookTest, CountsInTheNextRunWhatTheEndOfThisOneCutShort)
{
    add(kOne);
    house_.putImage(kOne, kImage, QByteArray(500, 'x'));
    TaskScope scope([](const QString &text) { ADD_FAILURE() << text.toStdString(); });
    HealthBook first(house_.table, house_.storage, clock_, scope);
    first.load();
    scope.requestStop();
    house_.finish();
    first.save();
    EXPECT_EQ(first.camera(kOne).images, 0);
    book_.load();
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 1);
}

TEST_F(HealthBookTest, CountsAFolderThatWasAwayOnceItIsBack)
{
    add(kOne);
    house_.putImage(kOne, kImage);
    QDir drive(house_.tree.path(u"drives/c"));
    drive.rename(QStringLiteral("in"), QStringLiteral("away"));
    book_.load();
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 0);
    drive.rename(QStringLiteral("away"), QStringLiteral("in"));
    book_.followTable();
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 1);
}

TEST_F(HealthBookTest, KeepsWhatItKnowsOfAFolderThatIsAwayWhenItIsToBeCountedAgain)
{
    add(kOne);
    house_.putImage(kOne, kImage);
    book_.load();
    house_.finish();
    QDir drive(house_.tree.path(u"drives/c"));
    drive.rename(QStringLiteral("in"), QStringLiteral("away"));
    book_.recount(kOne);
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 1);
    drive.rename(QStringLiteral("away"), QStringLiteral("in"));
    house_.putImage(kOne, QStringLiteral("20060307_1305000714.jpg"));
    book_.followTable();
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 2);
}

TEST_F(HealthBookTest, ForgetsNothingWhileTheDriveOfTheStorageFolderIsAway)
{
    QDir drives(house_.tree.path(u"drives"));
    drives.mkpath(QStringLiteral("d/in"));
    house_.storage.beginEdit();
    house_.storage.edit(QStringLiteral("D:\\in\\"));
    house_.storage.putInForce();
    add(kOne);
    book_.load();
    book_.addImage(kOne, kImage);
    book_.setLate(kOne, true);
    const auto since = book_.camera(kOne).lateSince;
    drives.rename(QStringLiteral("d"), QStringLiteral("unplugged"));
    book_.followTable();
    book_.addFailure(kOne, QStringLiteral("no disk"));
    EXPECT_EQ(book_.cameras(), std::vector{kOne});
    EXPECT_EQ(book_.camera(kOne).images, 1);
    drives.rename(QStringLiteral("unplugged"), QStringLiteral("d"));
    book_.followTable();
    EXPECT_EQ(book_.camera(kOne).images, 1);
    EXPECT_EQ(book_.camera(kOne).lateSince, since);
}

// The drive is a link to a disk, which is unplugged.
TEST_F(HealthBookTest, ForgetsNothingWhileTheDiskBehindTheLinkOfDriveCIsAway)
{
    QDir drives(house_.tree.path(u"drives"));
    QDir tree(house_.tree.path());
    ASSERT_TRUE(tree.rename(QStringLiteral("drives/c"), QStringLiteral("disk")));
    ASSERT_TRUE(
        QFile::link(tree.filePath(QStringLiteral("disk")), drives.filePath(QStringLiteral("c"))));
    add(kOne);
    book_.load();
    book_.addImage(kOne, kImage);
    ASSERT_TRUE(tree.rename(QStringLiteral("disk"), QStringLiteral("unplugged")));
    book_.followTable();
    EXPECT_EQ(book_.camera(kOne).images, 1);
    EXPECT_EQ(house_.storage.native(QStringLiteral("C:\\in")), QString());
}

TEST_F(HealthBookTest, ForgetsNothingWhileTheSettingsCannotBeRead)
{
    add(kOne);
    book_.load();
    house_.load(kOne);
    const RefusedCall refused(Call::Read, EIO);
    book_.followTable();
    EXPECT_EQ(book_.cameras(), std::vector{kOne});
    EXPECT_EQ(book_.camera(kOne).images, 1);
}

TEST_F(HealthBookTest, BlamesNoCameraForTheTimeBeforeItWasAdded)
{
    book_.load();
    clock_.advance(1min);
    add(kOne);
    house_.putImage(kOne, QStringLiteral("20060301_1300000714.jpg"));
    book_.followTable();
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 1);
    EXPECT_LT(book_.quiet(kOne), 1min);
    clock_.advance(20min);
    EXPECT_GE(book_.quiet(kOne), 20min);
}

// Its images are found only afterwards, as the storage folder was away for instance.
TEST_F(HealthBookTest, BlamesNoCameraForTheTimeThatIsForgivenBeforeItsImagesAreFound)
{
    book_.load();
    add(kOne);
    add(kTwo);
    book_.followTable();
    house_.finish();
    clock_.advance(1h);
    book_.forgive(50min);
    book_.excuse(kTwo);
    house_.putImage(kOne, kImage);
    house_.putImage(kTwo, kImage);
    book_.followTable();
    house_.finish();
    EXPECT_EQ(book_.quiet(kOne), 10min);
    EXPECT_EQ(book_.quiet(kTwo), 0s);
}

TEST_F(HealthBookTest, BlamesNoCameraForATimeThatIsForgivenBeforeItsFolderIsThere)
{
    add(kOne);
    book_.load();
    house_.finish();
    clock_.advance(1h);
    book_.forgive(50min);
    house_.putImage(kOne, QStringLiteral("20060307_1400090714.jpg")); // five minutes before
    book_.followTable();
    house_.finish();
    EXPECT_EQ(book_.quiet(kOne), 15min);
}

TEST_F(HealthBookTest, ATimeThatIsForgivenExcusesNoFailureAfterIt)
{
    add(kOne);
    book_.load();
    house_.finish();
    clock_.advance(1h);
    book_.forgive(50min);
    book_.addFailure(kOne, QStringLiteral("gone"));
    clock_.advance(20min);
    EXPECT_EQ(book_.quiet(kOne), 20min);
}

TEST_F(HealthBookTest, BlamesACameraSinceAnImageThatItGotAfterItWasAdded)
{
    book_.load();
    add(kOne);
    book_.followTable();
    house_.finish();
    clock_.advance(1h);
    house_.putImage(kOne, QStringLiteral("20060307_1455090714.jpg")); // ten minutes before
    book_.followTable();
    house_.finish();
    EXPECT_EQ(book_.quiet(kOne), 10min);
}

TEST_F(HealthBookTest, CountsNothingTwice)
{
    add(kOne);
    house_.putImage(kOne, kImage);
    book_.load();
    house_.finish();
    int changes = 0;
    QObject::connect(&book_, &HealthBook::changed, &book_, [&changes] { ++changes; });
    book_.followTable();
    house_.finish();
    EXPECT_EQ(changes, 0);
}

TEST_F(HealthBookTest, KnowsWhatCameBeforeAnImageThatOvertakesTheCount)
{
    add(kOne);
    house_.putImage(kOne, kImage);
    house_.putImage(kOne, QStringLiteral("20060307_1305000714.jpg"));
    house_.putImage(kOne, QStringLiteral("20060307_1310000714.jpg"));
    book_.load();
    house_.load(kOne);
    house_.finish();
    EXPECT_EQ(book_.camera(kOne).images, 4);
    EXPECT_EQ(book_.camera(kOne).usualInterval(), 5min);
    EXPECT_EQ(book_.camera(kOne).imagesADay(book_.now()), 4);
    EXPECT_EQ(book_.quiet(kOne), 0s);
}

TEST_F(HealthBookTest, CountsForAllCamerasThatShareAFolder)
{
    add(kOne);
    house_.addCamera(kTwo, cameraUrl(kOne));
    house_.putImage(kOne, kImage);
    book_.load();
    house_.finish();
    QFile::remove(house_.tree.path(house_.folder(kOne) + u'/' + kImage));
    book_.recount(kOne);
    house_.finish();
    EXPECT_EQ(book_.camera(kTwo).images, 0);
}

TEST_F(HealthBookTest, ForecastsAFolderThatCamerasShareOnce)
{
    add(kOne);
    house_.putImage(kOne, kImage, QByteArray(500, 'x'));
    book_.load();
    house_.finish();
    const qint64 alone = book_.bytesADay();
    ASSERT_GT(alone, 0);
    house_.addCamera(kTwo, cameraUrl(kOne));
    book_.followTable();
    house_.finish();
    ASSERT_EQ(book_.camera(kTwo).images, 1);
    EXPECT_EQ(book_.bytesADay(), alone);
}

TEST_F(HealthBookTest, TakesADateThatIsStillToComeForNow)
{
    add(kOne);
    house_.putImage(kOne, QStringLiteral("20070307_1300000714.jpg"));
    book_.load();
    house_.finish();
    EXPECT_EQ(book_.quiet(kOne), 0s);
}

} // namespace
} // namespace velmora::test
