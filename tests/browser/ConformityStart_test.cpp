// Names of the older form that come into view start the pass that renames them.
#include "browser/BrowserTest.h"

#include <QFileInfo>

namespace velmora::test {
namespace {

const QString kShort = QStringLiteral("20060307_140509.jpg");
const QString kModified = QStringLiteral("2006-03-07T14:05:09");
const QString kConformed = QStringLiteral("20060307_1405090714.jpg");

class ConformityStart : public BrowserTest
{
protected:
    QSignalSpy passes_{&house_.conformity, &Conformity::began};
};

TEST_F(ConformityStart, RenamesAShortNameThatIsShown)
{
    house_.addCamera(kCamera);
    house_.put(kCamera, kShort, kModified);
    house_.show(kCamera);
    EXPECT_EQ(passes_.size(), 1);
    EXPECT_EQ(house_.capture.images(kCamera), QStringList({kConformed}));
}

TEST_F(ConformityStart, ShowsTheNewNamesAfterwards)
{
    house_.addCamera(kCamera);
    house_.put(kCamera, kShort, kModified);
    house_.show(kCamera);
    EXPECT_EQ(house_.cells().value(0), kConformed);
    EXPECT_EQ(house_.NbI(), QStringLiteral("1 / 1"));
}

TEST_F(ConformityStart, LeavesNamesOfTheCurrentFormAlone)
{
    house_.addImages(kCamera, 12);
    house_.show(kCamera);
    EXPECT_EQ(passes_.size(), 0);
}

TEST_F(ConformityStart, CountsToTheFirstDotAlone)
{
    house_.addCamera(kCamera,
                     {QStringLiteral("20060307_14050.9.jpg"),
                      QStringLiteral("20060307_1405091.jpg"), QStringLiteral("20060307_140509")});
    house_.show(kCamera);
    EXPECT_EQ(passes_.size(), 0);
}

TEST_F(ConformityStart, LeavesAShortNameWithoutItsUnderscoreAlone)
{
    house_.addCamera(kCamera, {QStringLiteral("200603071405090.jpg")});
    house_.show(kCamera);
    EXPECT_EQ(passes_.size(), 0);
}

TEST_F(ConformityStart, LooksAtTheTenThatAreShownAlone)
{
    house_.addImages(kCamera, 30);
    house_.put(kCamera, QStringLiteral("20050101_000000.jpg"), kModified);
    house_.show(kCamera);
    EXPECT_EQ(passes_.size(), 0);
    browser_.chooseFile(3);
    EXPECT_EQ(passes_.size(), 1);
    house_.finish();
    EXPECT_FALSE(house_.capture.images(kCamera).contains(QStringLiteral("20050101_000000.jpg")));
}

TEST_F(ConformityStart, StaysOnItsPositionAfterwards)
{
    house_.addImages(kCamera, 30);
    house_.put(kCamera, QStringLiteral("20050101_000000.jpg"), kModified);
    house_.show(kCamera);
    browser_.chooseFile(3);
    house_.finish();
    EXPECT_EQ(selected(), 3);
    EXPECT_EQ(house_.NbI(), QStringLiteral("4 / 31"));
}

TEST_F(ConformityStart, LeavesAFileInTheStorageFolderItselfAlone)
{
    constexpr int kTurns = 200;
    house_.capture.tree.write(u"drives/c/in/20060307_140509.jpg", "photo");
    browser_.chooseCamera(5); // no camera: the files there are on show
    for (int turn = 0; turn < kTurns; ++turn) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(house_.NbI(), QStringLiteral("1 / 1"));
    EXPECT_EQ(passes_.size(), 0);
    EXPECT_EQ(house_.capture.scope.running(), 0);
}

TEST_F(ConformityStart, IsNotStartedAgainWhileItRuns)
{
    house_.addCamera(kCamera);
    for (int number = 0; number < 5; ++number) {
        house_.put(kCamera, QStringLiteral("20060307_14050%1.jpg").arg(number), kModified);
    }
    browser_.refresh();
    ASSERT_TRUE(house_.conformity.isRunning());
    browser_.chooseFile(0);
    browser_.chooseFile(4);
    EXPECT_EQ(passes_.size(), 1);
    house_.finish();
    EXPECT_EQ(passes_.size(), 1);
    EXPECT_EQ(house_.data.files.count(), 5);
    EXPECT_FALSE(house_.conformity.isRunning());
}

TEST_F(ConformityStart, EndsWhenAFileCannotBeRenamed)
{
    house_.addCamera(kCamera, {kConformed});
    house_.put(kCamera, kShort, kModified);
    house_.show(kCamera);
    EXPECT_EQ(passes_.size(), 1);
    EXPECT_TRUE(house_.capture.images(kCamera).contains(kShort));
    browser_.chooseFile(0);
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(passes_.size(), 1);
}

TEST_F(ConformityStart, RenamesThatFileOnceItsNewNameIsFree)
{
    house_.addCamera(kCamera, {kConformed});
    house_.put(kCamera, kShort, kModified);
    house_.show(kCamera);
    house_.remove(kCamera, kConformed);
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(house_.capture.images(kCamera), QStringList({kConformed}));
}

TEST_F(ConformityStart, StaysOnTheLastImageWhenTheListGetsShorter)
{
    house_.addCamera(kCamera, {QStringLiteral("20060308_0000000800.jpg")});
    house_.put(kCamera, kShort, kModified);
    browser_.refresh();
    ASSERT_TRUE(house_.conformity.isRunning());
    house_.remove(kCamera, QStringLiteral("20060308_0000000800.jpg"));
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("1 / 1"));
}

TEST_F(ConformityStart, LeavesTheGroupViewAsItIs)
{
    house_.addCamera(kCamera);
    house_.put(kCamera, kShort, kModified);
    browser_.refresh();
    ASSERT_TRUE(house_.conformity.isRunning());
    state().viewSwitched(View::Group);
    house_.newLog();
    house_.finish();
    EXPECT_FALSE(house_.newLog().contains(QStringLiteral("Planche LstDir_Click")));
}

TEST_F(ConformityStart, BeginsNoPassInGroupView)
{
    house_.addCamera(kCamera);
    house_.put(kCamera, kShort, kModified);
    house_.showGroup(0);
    EXPECT_EQ(passes_.size(), 0);
    EXPECT_EQ(house_.rows().value(0), kShort + QStringLiteral("  "));
}

TEST_F(ConformityStart, RenamesTheFilesOfAllCameras)
{
    house_.addCamera(kCamera);
    house_.put(kCamera, kShort, kModified);
    house_.addCamera({7, 7});
    house_.put({7, 7}, kShort, kModified);
    house_.show(kCamera);
    EXPECT_EQ(house_.capture.images({7, 7}), QStringList({kConformed}));
}

} // namespace
} // namespace velmora::test
