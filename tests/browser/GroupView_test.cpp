// The newest image of each camera of a group.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

const QString kBlanks = QStringLiteral("  ");

class GroupView : public BrowserTest
{
protected:
    /// Camera 0's row once the group is shown.
    QString rowOfFirst()
    {
        house_.showGroup(0);
        return house_.rows().value(0);
    }
};

TEST_F(GroupView, HasTenRowsOfWhichThoseWithoutImageAreEmpty)
{
    house_.addImages({3, 4}, 2);
    house_.showGroup(3);
    QStringList expected(kRows);
    expected[4] = imageName(1) + kBlanks;
    EXPECT_EQ(house_.rows(), expected);
}

TEST_F(GroupView, ShowsTheNewestImageOfACameraInItsCell)
{
    house_.addImages({0, 0}, 2);
    house_.addImages({0, 9}, 5);
    house_.showGroup(0);
    EXPECT_EQ(house_.cells().value(0), imageName(1));
    EXPECT_EQ(house_.cells().value(9), imageName(4));
    EXPECT_EQ(house_.cells().value(5), QString());
}

TEST_F(GroupView, KeepsThePathOfEachNewestImage)
{
    house_.addImages({0, 1}, 2);
    house_.showGroup(0);
    EXPECT_EQ(state().DerniereImage(1).path(), QStringLiteral("C:\\in\\") +
                                                   house_.capture.table.CameraFolderName({0, 1}) +
                                                   imageName(1));
    EXPECT_EQ(state().DerniereImage(0).path(), QString());
}

TEST_F(GroupView, FramesNoCell)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    house_.showGroup(0);
    EXPECT_EQ(house_.framed(), QList<int>());
    EXPECT_EQ(browser_.face().cameraRow, -1);
}

TEST_F(GroupView, TakesTheLastModifiedOfTheNewestDayThoughItsNameIsNotTheGreatest)
{
    house_.addCamera(kCamera);
    house_.put(kCamera, imageName(1), QStringLiteral("2006-03-07T14:00:00"));
    house_.put(kCamera, imageName(2), QStringLiteral("2006-03-07T16:00:00"));
    house_.put(kCamera, imageName(3), QStringLiteral("2006-03-07T15:00:00"));
    EXPECT_EQ(rowOfFirst(), imageName(2) + kBlanks);
}

TEST_F(GroupView, LooksAtTheNewestDayAloneWhateverWasModifiedSince)
{
    house_.addCamera(kCamera);
    house_.put(kCamera, QStringLiteral("20060306_1200000612.jpg"),
               QStringLiteral("2020-01-01T00:00:00"));
    house_.put(kCamera, imageName(1), QStringLiteral("2006-03-07T14:00:00"));
    EXPECT_EQ(rowOfFirst(), imageName(1) + kBlanks);
}

TEST_F(GroupView, TakesTheFirstOfTwoModifiedAtTheSameTime)
{
    house_.addCamera(kCamera);
    house_.put(kCamera, imageName(2), QStringLiteral("2006-03-07T14:00:00"));
    house_.put(kCamera, imageName(1), QStringLiteral("2006-03-07T14:00:00"));
    EXPECT_EQ(rowOfFirst(), imageName(1) + kBlanks);
}

TEST_F(GroupView, LeavesARowEmptyWhoseGreatestNameTellsNoDay)
{
    house_.addCamera(kCamera, {imageName(1), QStringLiteral("20061301_1200000112.jpg")});
    EXPECT_EQ(rowOfFirst(), QString());
    EXPECT_EQ(house_.cells().value(0), QString());
    EXPECT_TRUE(state().DerniereImage(0).isNone());
}

TEST_F(GroupView, LooksAtNamesThatBeginWithTwo)
{
    house_.addCamera(kCamera, {imageName(1), QStringLiteral("21000102_1200000212.jpg"),
                               QStringLiteral("99990101_1200000112.jpg")});
    EXPECT_EQ(rowOfFirst(), QStringLiteral("21000102_1200000212.jpg") + kBlanks);
}

TEST_F(GroupView, SkipsRowsWithoutAddressThoughTheStorageFolderHoldsImages)
{
    house_.capture.tree.write(u"drives/c/in/20060307_0000000714.jpg", "x");
    house_.showGroup(0);
    EXPECT_EQ(house_.rows(), QStringList(kRows));
}

TEST_F(GroupView, ShowsTheNewestImageOfACameraWithAVeryLongAddress)
{
    house_.capture.addCamera(kCamera, QString(300, u'a'));
    house_.put(kCamera, imageName(3));
    EXPECT_EQ(rowOfFirst(), imageName(3) + kBlanks);
}

TEST_F(GroupView, LeavesAMissingCameraFolderMissing)
{
    house_.capture.addCamera({0, 3}, cameraUrl({0, 3}));
    state().viewSwitched(View::Group);
    run(steps_.lists.DirCam());
    EXPECT_FALSE(house_.capture.tree.exists(house_.capture.folder({0, 3})));
}

TEST_F(GroupView, ForgetsTheImagesOfTheGroupBefore)
{
    house_.addImages({0, 2}, 1);
    house_.addImages({1, 3}, 1);
    house_.showGroup(0);
    browser_.chooseGroup(1);
    house_.finish();
    EXPECT_TRUE(state().DerniereImage(2).isNone());
    EXPECT_EQ(state().DerniereImage(3).name, imageName(0));
    EXPECT_EQ(house_.cells().value(2), QString());
}

TEST_F(GroupView, LogsARebuildWithoutTheCameraView)
{
    house_.showGroup(0);
    house_.newLog();
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("Planche DirImage"),
                                            QStringLiteral("Planche DirImage Fin")}));
}

TEST_F(GroupView, SelectsTheCameraOfAClickedRow)
{
    house_.addImages({0, 4}, 3);
    house_.showGroup(0);
    browser_.chooseCameraRow(4);
    house_.finish();
    EXPECT_EQ(state().camera(), (CameraAddress{0, 4}));
    EXPECT_EQ(browser_.face().cameraRow, 4);
    EXPECT_EQ(house_.framed(), QList<int>({4}));
    EXPECT_EQ(state().CadreActif(), 4);
}

TEST_F(GroupView, ListsTheFilesOfAClickedRowAndTellsTheirNumber)
{
    house_.addImages({0, 4}, 3);
    house_.showGroup(0);
    state().allowReading();
    browser_.chooseCameraRow(4);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("3"));
    EXPECT_EQ(house_.data.files.count(), 3);
}

TEST_F(GroupView, StoresNothingForAClickedRow)
{
    house_.showGroup(0);
    house_.store(u"lstImg", u"7");
    browser_.chooseCameraRow(4);
    house_.finish();
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("7"));
}

TEST_F(GroupView, SelectsAClickedRowWithoutImage)
{
    house_.showGroup(0);
    browser_.chooseCameraRow(8);
    house_.finish();
    EXPECT_EQ(state().camera().row, 8);
    EXPECT_EQ(house_.framed(), QList<int>({8}));
}

TEST_F(GroupView, BringsAVisibleZoomImageToTheClickedRow)
{
    house_.addImages({0, 1}, 1);
    house_.addImages({0, 4}, 3);
    house_.showGroup(0);
    house_.data.sheet.showZoom(state().DerniereImage(1));
    browser_.chooseCameraRow(4);
    house_.finish();
    EXPECT_EQ(house_.data.sheet.zoomed().name, imageName(2));
}

TEST_F(GroupView, RestartsAPlayingFilmOnTheClickedRow)
{
    house_.addImages({0, 4}, 3);
    house_.showGroup(0);
    film_.play();
    browser_.chooseCameraRow(4);
    house_.finish();
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("begin")}));
    EXPECT_TRUE(state().CineActif());
}

TEST_F(GroupView, LeavesAPausedFilmAloneForAClickedRow)
{
    house_.showGroup(0);
    film_.pause();
    browser_.chooseCameraRow(4);
    house_.finish();
    EXPECT_EQ(film_.calls, QStringList());
}

TEST_F(GroupView, TellsThatItsCellsAreBeingFilled)
{
    house_.addImages({0, 0}, 1);
    QList<bool> filling;
    QObject::connect(&house_.data.sheet, &Sheet::imageChanged, &house_,
                     [&] { filling.append(state().DirCamEnCours()); });
    state().viewSwitched(View::Group);
    run(steps_.lists.DirCam());
    EXPECT_EQ(filling, QList<bool>(kCells, true));
    EXPECT_FALSE(state().DirCamEnCours());
}

TEST_F(GroupView, ShowsNothingOfAGroupWithoutCameras)
{
    house_.addImages({0, 0}, 1);
    house_.showGroup(0);
    browser_.chooseGroup(9);
    house_.finish();
    EXPECT_EQ(house_.rows(), QStringList(kRows));
    EXPECT_EQ(house_.cells(), QStringList(kCells));
}

TEST_F(GroupView, SelectsNoRowAndFramesNoCellWhenItIsRebuilt)
{
    house_.addImages({0, 4}, 3);
    house_.showGroup(0);
    browser_.chooseCameraRow(4);
    browser_.setMode(Mode::Auto, true);
    house_.finish();
    EXPECT_EQ(browser_.face().cameraRow, -1);
    EXPECT_EQ(house_.framed(), QList<int>());
    EXPECT_EQ(house_.NbI(), QString());
}

TEST_F(GroupView, KeepsTheRowWhenItIsReadAgain)
{
    house_.addImages({0, 4}, 3);
    state().allowReading();
    house_.showGroup(0);
    browser_.chooseCameraRow(4);
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(browser_.face().cameraRow, 4);
    EXPECT_EQ(house_.framed(), QList<int>({4}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("3"));
}

TEST_F(GroupView, ListsTheSameRowOfAnotherGroupForTheFilm)
{
    house_.addImages({0, 0}, 3);
    house_.addImages({1, 0}, 5);
    state().allowReading();
    house_.showGroup(0);
    browser_.chooseGroup(1);
    house_.finish();
    EXPECT_EQ(house_.data.files.count(), 5);
    EXPECT_TRUE(browser_.face().isFilmEnabled);
    EXPECT_EQ(house_.NbI(), QString());
}

TEST_F(GroupView, LeavesTheListOfAnOpenFilm)
{
    house_.addImages({0, 0}, 3);
    house_.addImages({1, 0}, 5);
    state().allowReading();
    house_.showGroup(0);
    film_.pause();
    browser_.chooseGroup(1);
    house_.finish();
    EXPECT_EQ(house_.data.files.count(), 3);
}

TEST_F(GroupView, LeavesItsCellsForAnImageThatIsSelectedInTheListOfTheFilm)
{
    house_.addImages({0, 0}, 3);
    house_.addImages({0, 4}, 12);
    state().allowReading();
    house_.showGroup(0);
    browser_.chooseCameraRow(4);
    house_.finish();
    const QStringList cells = house_.cells();
    browser_.chooseFile(2);
    EXPECT_EQ(selected(), 2);
    EXPECT_EQ(house_.cells(), cells);
    EXPECT_EQ(house_.framed(), QList<int>({4}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("12"));
}

TEST_F(GroupView, SelectsNoRowOfAGroupThatIsChosenAfterTheClick)
{
    house_.addFullFolder({0, 4});
    state().allowReading();
    house_.showGroup(0);
    browser_.chooseCameraRow(4);
    browser_.chooseGroup(1);
    browser_.chooseCameraRow(2);
    house_.finish();
    EXPECT_EQ(state().camera().group, 1);
    EXPECT_EQ(browser_.face().cameraRow, -1);
    EXPECT_EQ(house_.framed(), QList<int>());
}

TEST_F(GroupView, MovesTheFrameToTheRowClickedNext)
{
    house_.showGroup(0);
    browser_.chooseCameraRow(4);
    browser_.chooseCameraRow(2);
    house_.finish();
    EXPECT_EQ(house_.framed(), QList<int>({2}));
}

TEST_F(GroupView, SelectsNoRowByItselfWhenARenamingHasEnded)
{
    house_.addImages({0, 1}, 3);
    house_.showGroup(0);
    ASSERT_EQ(browser_.face().cameraRow, -1);
    Q_EMIT house_.conformity.ended();
    house_.finish();
    EXPECT_EQ(browser_.face().cameraRow, -1);
    EXPECT_EQ(house_.framed(), QList<int>());
}

TEST_F(GroupView, KeepsItsImagesWhileTheStorageFolderIsAway)
{
    house_.addImages({0, 1}, 3);
    browser_.begin();
    house_.showGroup(0);
    ASSERT_EQ(house_.cells().value(1), imageName(2));
    loseStorage();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(house_.cells().value(1), imageName(2));
}

} // namespace
} // namespace velmora::test
