// Actions that overtake one another: the last choice is shown, completely, and nothing is left half
// done.
#include "browser/BrowserTest.h"

#include <QCoreApplication>

namespace velmora::test {
namespace {

constexpr int kMostTurns = 10000;

class Overtaking : public BrowserTest
{
protected:
    void activateAll()
    {
        for (int group = 0; group < kGroups; ++group) {
            house_.capture.settings.write(listSection(group), u"LstAct", 1);
        }
    }
};

TEST_F(Overtaking, LoadsAllModesThoughAGroupIsChosenMeanwhile)
{
    house_.addFullFolder({0, 1});
    house_.store(u"Camera", u"1");
    house_.store(u"Scan", u"1");
    browser_.load();
    ASSERT_TRUE(state().DirCamEnCours());
    browser_.chooseGroup(1);
    house_.finish();
    EXPECT_TRUE(browser_.face().cScan);
    EXPECT_TRUE(browser_.scanTimer().isActive());
}

TEST_F(Overtaking, LoadsAllModesThoughACameraIsChosenMeanwhile)
{
    house_.addFullFolder({0, 0});
    house_.addFullFolder({0, 1});
    house_.store(u"Auto", u"1");
    house_.store(u"Camera", u"1");
    house_.store(u"Scan", u"1");
    browser_.load();
    browser_.chooseCamera(1);
    for (int turns = 0; turns < kMostTurns && !browser_.face().cAuto; ++turns) {
        QCoreApplication::processEvents();
    }
    ASSERT_TRUE(browser_.face().cAuto);
    browser_.chooseCamera(2);
    house_.finish();
    EXPECT_TRUE(browser_.face().cCamera);
    EXPECT_TRUE(browser_.face().cScan);
}

TEST_F(Overtaking, FillsAllRowsThoughACameraIsChosenMeanwhile)
{
    house_.addFullFolder({0, 3});
    house_.addImages({0, 7}, 2);
    browser_.setMode(Mode::Camera, true);
    ASSERT_TRUE(state().DirCamEnCours());
    browser_.chooseCamera(7);
    house_.finish();
    EXPECT_EQ(house_.rows().size(), kRows);
    EXPECT_EQ(browser_.face().cameraRow, 7);
    EXPECT_EQ(house_.rows().value(7), imageName(1) + QStringLiteral("  "));
}

TEST_F(Overtaking, ShowsTheNewestOfANewCameraThoughAPassEndsMeanwhile)
{
    house_.addImages(kCamera, 5);
    house_.put(kCamera, QStringLiteral("20050101_000000.jpg"));
    house_.addFullFolder({0, 1});
    browser_.chooseCamera(0);
    ASSERT_TRUE(house_.conformity.isRunning());
    browser_.chooseFile(1);
    browser_.chooseCamera(1);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
}

TEST_F(Overtaking, LetsTheLastCameraWinOverAnOlderRow)
{
    state().allowReading();
    house_.addFullFolder({0, 0});
    browser_.setMode(Mode::Camera, true);
    browser_.chooseCameraRow(5);
    browser_.chooseCamera(3);
    house_.finish();
    EXPECT_EQ(state().camera().row, 3);
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("3"));
}

TEST_F(Overtaking, LetsTheLastGroupWinOverAnOlderStepOfTheWalk)
{
    activateAll();
    house_.addFullFolder({0, 0});
    browser_.setMode(Mode::Camera, true);
    ASSERT_TRUE(state().DirCamEnCours());
    house_.fireScan();
    browser_.chooseGroup(5);
    house_.finish();
    EXPECT_EQ(state().camera().group, 5);
    EXPECT_EQ(house_.stored(u"lstP"), QStringLiteral("5"));
}

TEST_F(Overtaking, LetsTheLastCameraWinOverAnOlderStepOfTheWalk)
{
    activateAll();
    house_.addFullFolder({0, 0});
    browser_.chooseCamera(0);
    house_.fireScan();
    browser_.chooseCamera(5);
    house_.finish();
    EXPECT_EQ(state().camera(), (CameraAddress{0, 5}));
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("5"));
}

TEST_F(Overtaking, TellsOnceOfTwoFoldersThatCannotBeMade)
{
    for (const int row : {0, 1}) {
        house_.capture.addCamera({0, row}, cameraUrl({0, row}));
        house_.capture.tree.write(house_.capture.folder({0, row}), "x");
    }
    house_.show({0, 0});
    house_.show({0, 1});
    const auto told = house_.capture.allTexts().size();
    house_.show({0, 0});
    house_.show({0, 1});
    house_.show({0, 0});
    EXPECT_EQ(house_.capture.allTexts().size(), told);
    EXPECT_EQ(told, 2);
}

TEST_F(Overtaking, LeavesAFilmClosedThatIsClosedWhileItsFolderIsRead)
{
    house_.addImages({0, 0}, 2);
    house_.addFullFolder({0, 3});
    state().allowReading();
    house_.showGroup(0);
    browser_.chooseCameraRow(0);
    house_.finish();
    browser_.toggleFilm();
    house_.finish();
    ASSERT_TRUE(film_.open);
    browser_.clickCell(3);
    ASSERT_GT(house_.capture.scope.running(), 0);
    film_.close();
    state().filmClosed();
    house_.finish();
    EXPECT_FALSE(film_.open);
    EXPECT_FALSE(state().CineActif());
}

TEST_F(Overtaking, WalksNoMoreAfterTheWindowClosed)
{
    browser_.setMode(Mode::Scan, true);
    browser_.unload();
    house_.capture.storage.testSA();
    EXPECT_FALSE(browser_.scanTimer().isActive());
}

TEST_F(Overtaking, BuildsTheListThoughTheStorageTextChangesMeanwhile)
{
    house_.addFullFolder(kCamera);
    house_.capture.tree.makeFolder(u"drives/c/other");
    browser_.chooseCamera(0);
    house_.capture.storage.edit(QStringLiteral("C:\\other"));
    house_.capture.storage.putInForce();
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("0"));
}

TEST_F(Overtaking, RunsTheWalksTimerThoughTheStorageIsMissing)
{
    loseStorage();
    browser_.setMode(Mode::Scan, true);
    EXPECT_TRUE(browser_.scanTimer().isActive());
}

TEST_F(Overtaking, RestartsAPlayingFilmThatHadStoppedWithAClick)
{
    house_.addImages(kCamera, 20);
    house_.show(kCamera);
    film_.play();
    film_.running = false;
    state().filmOpened();
    browser_.clickCell(3);
    EXPECT_TRUE(film_.running);
}

TEST_F(Overtaking, HidesTheZoomWhenTheWalkChangesGroupInCameraView)
{
    activateAll();
    house_.addImages({0, 9}, 2);
    house_.addImages({1, 0}, 2);
    house_.show({0, 9});
    house_.data.sheet.showZoom(house_.data.files.file(0));
    house_.fireScan();
    house_.finish();
    EXPECT_FALSE(house_.data.sheet.isZoomVisible());
}

TEST_F(Overtaking, StartsNoPassAfterTheProgramEnds)
{
    QSignalSpy passes(&house_.conformity, &Conformity::began);
    house_.addImages(kCamera, 20);
    house_.put(kCamera, QStringLiteral("20050101_000000.jpg"));
    house_.show(kCamera);
    browser_.close();
    browser_.chooseFile(0);
    EXPECT_EQ(passes.size(), 0);
}

TEST_F(Overtaking, OpensTheFilmThoughACameraIsChosenMeanwhile)
{
    house_.addFullFolder({0, 0});
    house_.addImages({0, 2}, 3);
    state().allowReading();
    state().viewSwitched(View::Group);
    browser_.toggleFilm();
    browser_.chooseCamera(2);
    house_.finish();
    EXPECT_TRUE(film_.open);
}

TEST_F(Overtaking, FinishesAStepOfTheWalkThoughTicksComeFaster)
{
    activateAll();
    for (int row = 0; row < kRows; ++row) {
        house_.addFullFolder({0, row});
    }
    state().cameraChosen({0, 0});
    int shown = 0;
    QObject::connect(&house_.data.files, &QAbstractItemModel::modelReset, &house_,
                     [&] { ++shown; });
    for (int i = 0; i < 8; ++i) {
        house_.fireScan();
    }
    house_.finish();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(state().camera(), (CameraAddress{0, 1}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
}

TEST_F(Overtaking, FollowsTheLastOfTwoStoredImages)
{
    house_.addImages({2, 3}, 3);
    house_.addFullFolder({2, 4});
    house_.show({2, 3});
    house_.showGroup(2);
    browser_.setMode(Mode::Auto, true);
    house_.finish();
    browser_.follow({2, 3});
    browser_.follow({2, 4});
    house_.finish();
    EXPECT_EQ(browser_.face().cameraRow, 4);
    EXPECT_EQ(house_.rows().size(), kRows);
}

TEST_F(Overtaking, ShowsWhatADeletionLeftThoughACameraIsChosenMeanwhile)
{
    house_.addFullFolder({0, 0});
    house_.addImages({0, 4}, 2);
    state().allowReading();
    state().cameraChosen({state().camera().group, 0});
    house_.showGroup(0);
    const ImageFile target = state().DerniereImage(4);
    browser_.kill(target);
    browser_.chooseCamera(4);
    house_.finish();
    EXPECT_EQ(house_.rows().value(4), imageName(0) + QStringLiteral("  "));
}

TEST_F(Overtaking, OffersADeletedImageNoMore)
{
    house_.addFullFolder({0, 0});
    house_.addImages({0, 4}, 1);
    state().allowReading();
    house_.showGroup(0);
    browser_.chooseCameraRow(4);
    house_.finish();
    browser_.kill(state().DerniereImage(4));
    house_.finish();
    EXPECT_FALSE(browser_.killQuestion());
}

TEST_F(Overtaking, KeepsAChoiceThatWaitsWhenImagesAreImportedMeanwhile)
{
    house_.addFullFolder({0, 0});
    house_.addImages({0, 2}, 3);
    house_.addFullFolder({0, 1});
    state().allowReading();
    house_.showGroup(0);
    browser_.chooseCameraRow(1);
    ASSERT_GT(house_.capture.scope.running(), 0);
    browser_.chooseCamera(2);
    browser_.chooseCameraAgain();
    house_.finish();
    EXPECT_EQ(state().camera().row, 2);
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("2"));
}

TEST_F(Overtaking, MovesByOneCameraForTicksThatCameWhileAnotherActionWasReading)
{
    activateAll();
    for (int row = 0; row < kRows; ++row) {
        house_.addImages({0, row}, 2);
    }
    house_.addFullFolder({1, 0});
    browser_.chooseGroup(1);
    ASSERT_GT(house_.capture.scope.running(), 0);
    house_.fireScan();
    house_.fireScan();
    house_.finish();
    EXPECT_EQ(state().camera(), (CameraAddress{1, 1}));
}

} // namespace
} // namespace velmora::test
