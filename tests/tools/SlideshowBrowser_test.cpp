// The slideshow beside the browser: how each affects the other.
#include "tools/SlideshowTest.h"

#include <QCoreApplication>

namespace velmora::test {
namespace {

class SlideshowBrowser : public SlideshowTest
{
protected:
    void loseStorage()
    {
        house_.pullStorage();
        house_.capture.storage.testSA();
    }

    void findStorage()
    {
        house_.plugStorage();
        house_.capture.storage.testSA();
    }
};

TEST_F(SlideshowBrowser, ClosesByTheFilmButton)
{
    open(30);
    house_.newLog();
    pressFilm();
    EXPECT_FALSE(film_.isOpen());
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("Cine Form_Unload")}));
}

TEST_F(SlideshowBrowser, OpensByTheFilmButtonAfterItsWindowWasClosed)
{
    open(30);
    film_.close();
    pressFilm();
    EXPECT_TRUE(film_.isOpen());
    EXPECT_TRUE(house_.data.state.CineActif());
}

TEST_F(SlideshowBrowser, GoesOnFromTheImageOfAClickedCell)
{
    open(30);
    tick(3);
    browser_.clickCell(2); // of the last ten, that is number 22
    house_.finish();
    ASSERT_EQ(house_.data.files.ListIndex(), 22);
    EXPECT_EQ(film_.current(), 23);
    EXPECT_TRUE(isRunning());
    tick();
    EXPECT_EQ(face().image.name, imageName(22));
}

TEST_F(SlideshowBrowser, APausedOneGetsANewImageAtItsEnd)
{
    open(30);
    tick(3);
    film_.PauseCine_MouseDown();
    const int place = film_.current();
    house_.put(kCamera, QStringLiteral("20991231_2359593123.jpg"));
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(film_.current(), place);
    EXPECT_EQ(face().range, (PlayRange{1, 31}));
    EXPECT_EQ(face().count, 31);
    EXPECT_FALSE(isRunning());
}

TEST_F(SlideshowBrowser, APausedOneCountsAtTheImageOnShowWhateverComes)
{
    open(30);
    tick(3);
    film_.PauseCine_MouseDown();
    const QString shown = face().image.name;
    ASSERT_EQ(face().Compte, QStringLiteral("3 / 30"));
    house_.put(kCamera, QStringLiteral("20991231_2359593123.jpg"));
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(face().Compte, QStringLiteral("3 / 31"));
    EXPECT_EQ(face().Compte0, QStringLiteral("3 / 31"));
    house_.put(kCamera, QStringLiteral("20000101_0000000101.jpg")); // before all others
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(face().Compte, QStringLiteral("4 / 32"));
    EXPECT_EQ(face().image.name, shown);
    EXPECT_EQ(film_.current(), 5) << "the next one is still the next";
}

TEST_F(SlideshowBrowser, APausedOneKeepsTheEndThatWasChosen)
{
    openAt(30, 5, 20);
    film_.PauseCine_MouseDown();
    house_.put(kCamera, QStringLiteral("20991231_2359593123.jpg"));
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(face().range, (PlayRange{5, 20}));
    EXPECT_EQ(face().count, 31);
}

TEST_F(SlideshowBrowser, GoesOnWhileAnImageIsChosenInTheList)
{
    open(30);
    tick(3);
    browser_.chooseFile(20);
    EXPECT_EQ(film_.current(), 4);
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowBrowser, StandsWhileTheStripIsLoaded)
{
    open(30);
    QList<bool> running;
    QObject::connect(&house_.data.sheet, &Sheet::imageChanged, &house_,
                     [&] { running.append(isRunning()); });
    browser_.chooseFile(20);
    EXPECT_EQ(running, QList<bool>(kCells, false));
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowBrowser, StartsOverWhenTheGroupChangesWhilePlaying)
{
    open(30);
    tick(3);
    house_.addImages({4, 0}, 6);
    browser_.chooseGroup(4);
    house_.finish();
    EXPECT_EQ(face().range, (PlayRange{1, 6}));
    EXPECT_EQ(face().image, house_.data.files.file(0));
}

TEST_F(SlideshowBrowser, StartsOverThoughTheChoiceOfACameraIsOvertaken)
{
    house_.addFullFolder({0, 1});
    open(3);
    browser_.chooseCamera(1);
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(face().range, (PlayRange{1, kFullFolder}));
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowBrowser, StartsOverWithTheListOfAnotherStorageFolder)
{
    open(30);
    tick(3);
    house_.capture.tree.makeFolder(u"drives/c/other");
    house_.capture.storage.edit(QStringLiteral("C:\\other"));
    house_.capture.storage.putInForce();
    QCoreApplication::processEvents(); // the browser hears of it
    house_.finish();
    ASSERT_EQ(house_.data.files.count(), 0);
    EXPECT_EQ(face().count, 0);
    EXPECT_TRUE(face().image.isNone());
}

TEST_F(SlideshowBrowser, GoesOnInItsRangeWhenARefreshFindsFewerImages)
{
    open(30);
    tick(3);
    film_.sFin_Change(20);
    const int place = film_.current();
    house_.remove(kCamera, imageName(7));
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(face().range, (PlayRange{1, 20}));
    EXPECT_EQ(film_.current(), place);
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowBrowser, ReachesWhatARefreshFindsThoughItGoesOnInItsRange)
{
    open(12);
    tick(3);
    film_.sFin_Change(5);
    for (int i = 12; i < 30; ++i) {
        house_.put(kCamera, imageName(i));
    }
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(face().range, (PlayRange{1, 5}));
    EXPECT_EQ(face().count, 30);
    EXPECT_EQ(face().Compte, QStringLiteral("4 / 5"));
    EXPECT_TRUE(isRunning());
    film_.sDebut_Change(11);
    EXPECT_EQ(face().range, (PlayRange{11, 20}));
}

TEST_F(SlideshowBrowser, StaysAsItIsWhenTheCameraChangesWhilePaused)
{
    open(30);
    tick(3);
    film_.PauseCine_MouseDown();
    house_.addImages({0, 1}, 6);
    house_.show({0, 1});
    EXPECT_EQ(face().range, (PlayRange{1, 30}));
    EXPECT_EQ(film_.current(), 4);
}

TEST_F(SlideshowBrowser, PlaysTheClickedCameraOfAGroup)
{
    open(30);
    house_.addImages({0, 7}, 6);
    house_.showGroup(0);
    browser_.clickCell(7);
    house_.finish();
    EXPECT_EQ(face().range, (PlayRange{1, 6}));
    EXPECT_TRUE(isRunning());
    EXPECT_TRUE(house_.data.state.CineActif());
}

TEST_F(SlideshowBrowser, HoldsTheScan)
{
    open(30);
    house_.fireScan();
    house_.finish();
    EXPECT_EQ(house_.data.state.camera(), kCamera);
    film_.close();
    house_.fireScan();
    house_.finish();
    EXPECT_EQ(house_.data.state.camera(), (CameraAddress{0, 1}));
}

TEST_F(SlideshowBrowser, StopsWhileTheStorageFolderIsGone)
{
    open(30);
    loseStorage();
    EXPECT_FALSE(isRunning());
    EXPECT_TRUE(film_.isPlaying());
    findStorage();
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowBrowser, StaysPausedWhenTheStorageFolderComesBack)
{
    open(30);
    film_.PauseCine_MouseDown();
    loseStorage();
    findStorage();
    EXPECT_FALSE(isRunning());
}

TEST_F(SlideshowBrowser, StaysClosedWhenTheStorageFolderComesBack)
{
    open(30);
    film_.close();
    loseStorage();
    findStorage();
    EXPECT_FALSE(isRunning());
}

TEST_F(SlideshowBrowser, StopsWhileTheStorageBoxIsTypedInto)
{
    open(30);
    house_.capture.storage.beginEdit();
    EXPECT_FALSE(isRunning());
    house_.capture.storage.putInForce();
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowBrowser, IsStartedByNothingWhileTheStorageBoxIsTypedInto)
{
    open(30);
    house_.capture.storage.beginEdit();
    film_.sFin_Change(20);
    EXPECT_FALSE(isRunning());
    film_.PauseCine_MouseDown();
    film_.PauseCine_MouseDown();
    EXPECT_FALSE(isRunning());
    house_.capture.storage.putInForce();
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowBrowser, StartsOverWithTheImageThatTheCaptureHasStored)
{
    open(3);
    browser_.setMode(Mode::Auto, true);
    house_.finish();
    tick(2);
    house_.put(kCamera, imageName(50));
    browser_.follow(kCamera);
    house_.finish();
    EXPECT_EQ(face().range, (PlayRange{1, 4}));
    EXPECT_EQ(film_.current(), 0);
}

TEST_F(SlideshowBrowser, StaysClosedThatIsClosedWhileTheFolderOfAClickedCellIsRead)
{
    house_.addImages({0, 0}, 2);
    house_.addFullFolder({0, 3});
    house_.show({0, 0});
    house_.showGroup(0);
    pressFilm();
    ASSERT_TRUE(film_.isOpen());
    browser_.clickCell(3);
    ASSERT_GT(house_.capture.scope.running(), 0);
    film_.close();
    house_.finish();
    EXPECT_FALSE(film_.isOpen());
    EXPECT_FALSE(house_.data.state.CineActif());
}

TEST_F(SlideshowBrowser, PlaysOnThoughAnotherCameraOfTheGroupGetsItsFirstImage)
{
    house_.addCamera({0, 7});
    open(30);
    house_.showGroup(0);
    browser_.clickCell(0);
    house_.finish();
    film_.sFin_Change(20);
    tick(5);
    const int place = film_.current();
    ASSERT_GT(place, 3);
    house_.put({0, 7}, imageName(3));
    browser_.follow({0, 7});
    house_.finish();
    ASSERT_FALSE(house_.rows().value(7).isEmpty());
    EXPECT_EQ(face().range, (PlayRange{1, 20}));
    EXPECT_EQ(film_.current(), place);
}

TEST_F(SlideshowBrowser, StaysPausedThatIsPausedWhileTheFolderOfAClickedCellIsRead)
{
    house_.addImages({0, 0}, 2);
    house_.addFullFolder({0, 3});
    house_.show({0, 0});
    house_.showGroup(0);
    pressFilm();
    browser_.clickCell(3);
    ASSERT_GT(house_.capture.scope.running(), 0);
    film_.PauseCine_MouseDown();
    if (face().PauseCine == QStringLiteral("Pause")) {
        film_.PauseCine_MouseDown(); // pressed again, since nothing happened
    }
    ASSERT_EQ(face().PauseCine, QStringLiteral("Start"));
    house_.finish();
    EXPECT_EQ(face().PauseCine, QStringLiteral("Start"));
    EXPECT_FALSE(isRunning());
}

TEST_F(SlideshowBrowser, LeavesTheFilmButtonToTheCameraOfTheGroupWhenItCloses)
{
    open(30);
    film_.PauseCine_MouseDown();
    house_.addCamera({4, 0});
    house_.showGroup(0);
    browser_.chooseGroup(4);
    house_.finish();
    film_.close();
    house_.finish();
    EXPECT_FALSE(browser_.face().isFilmEnabled);
    EXPECT_EQ(house_.data.files.camera(), (CameraAddress{4, 0}));
}

TEST_F(SlideshowBrowser, BelongsToTheCameraWhoseImagesItPlaysWhenItGoesOnAfterAPause)
{
    open(30);
    tick(3);
    film_.PauseCine_MouseDown();
    house_.addImages({0, 1}, 6);
    house_.show({0, 1});
    ASSERT_EQ(film_.camera(), kCamera);
    const QSignalSpy changed(&film_, &Slideshow::cameraChanged);
    film_.PauseCine_MouseDown();
    tick();
    EXPECT_EQ(face().image, house_.data.files.file(3));
    EXPECT_EQ(film_.camera(), (CameraAddress{0, 1}));
    EXPECT_EQ(changed.size(), 1);
    EXPECT_TRUE(film_.isOfList());
    browser_.refresh(); // a list that is read again is not another one
    house_.finish();
    EXPECT_EQ(film_.current(), 5);
}

TEST_F(SlideshowBrowser, BelongsToTheCameraWhoseImagesAResumedOnePlays)
{
    open(30);
    film_.PauseCine_MouseDown();
    film_.sFin_Change(20); // lets it run on
    house_.addImages({0, 1}, 6);
    house_.show({0, 1});
    ASSERT_TRUE(isRunning());
    tick();
    EXPECT_EQ(film_.camera(), (CameraAddress{0, 1}));
}

TEST_F(SlideshowBrowser, StartsOverInTheGroupThoughTheChoiceOfAGroupIsOvertaken)
{
    open(30);
    house_.addFullFolder({4, 0});
    house_.showGroup(0);
    browser_.clickCell(0);
    house_.finish();
    ASSERT_TRUE(film_.isPlaying());
    browser_.chooseGroup(4);
    ASSERT_GT(house_.capture.scope.running(), 0);
    browser_.setMode(Mode::Auto, true);
    house_.finish();
    EXPECT_EQ(house_.data.state.camera(), (CameraAddress{4, 0}));
    EXPECT_EQ(film_.camera(), (CameraAddress{4, 0}));
    EXPECT_EQ(face().image.folder, house_.data.files.folder());
    EXPECT_EQ(face().count, kFullFolder);
}

} // namespace
} // namespace velmora::test
