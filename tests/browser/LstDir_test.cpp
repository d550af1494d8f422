// The ten images around the selected one of the camera view.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

class LstDir : public BrowserTest
{
protected:
    void showImages(int count)
    {
        house_.addImages(kCamera, count);
        house_.show(kCamera);
        house_.newLog();
        film_.calls.clear();
    }
};

QStringList padded(QStringList names)
{
    while (names.size() < kCells) {
        names.append(QString());
    }
    return names;
}

TEST_F(LstDir, SelectsTheNewestImageWhenAFolderIsOpened)
{
    showImages(3);
    EXPECT_EQ(selected(), 2);
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
    EXPECT_EQ(house_.cells(), padded(imageNames(0, 3)));
    EXPECT_EQ(house_.framed(), QList<int>({2}));
}

TEST_F(LstDir, ShowsTheLastTenOfManyWithTheLastFramed)
{
    showImages(120);
    EXPECT_EQ(house_.cells(), imageNames(110, 10));
    EXPECT_EQ(house_.framed(), QList<int>({9}));
    EXPECT_EQ(state().CadreActif(), 9);
}

TEST_F(LstDir, ShowsNothingOfAnEmptyFolder)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    house_.addCamera({0, 1});
    house_.show({0, 1});
    EXPECT_EQ(house_.NbI(), QStringLiteral("0"));
    EXPECT_FALSE(browser_.face().isFilmEnabled);
    EXPECT_EQ(house_.cells(), padded({}));
    EXPECT_EQ(house_.framed(), QList<int>());
    EXPECT_EQ(selected(), -1);
}

TEST_F(LstDir, CentresAnImageInTheMiddleOfManyInCellFour)
{
    showImages(120);
    browser_.chooseFile(60);
    EXPECT_EQ(house_.cells(), imageNames(56, 10));
    EXPECT_EQ(house_.framed(), QList<int>({4}));
    EXPECT_EQ(state().CadreActif(), 4);
    EXPECT_EQ(house_.NbI(), QStringLiteral("61 / 120"));
}

TEST_F(LstDir, TellsThePositionFromOne)
{
    showImages(120);
    browser_.chooseFile(4);
    EXPECT_EQ(house_.NbI(), QStringLiteral("5 / 120"));
}

TEST_F(LstDir, ShowsTheFirstTenNearTheStart)
{
    showImages(120);
    browser_.chooseFile(2);
    EXPECT_EQ(house_.cells(), imageNames(0, 10));
    EXPECT_EQ(house_.framed(), QList<int>({2}));
}

TEST_F(LstDir, ShowsTheLastTenNearTheEnd)
{
    showImages(120);
    browser_.chooseFile(116);
    EXPECT_EQ(house_.cells(), imageNames(110, 10));
    EXPECT_EQ(house_.framed(), QList<int>({6}));
    EXPECT_EQ(state().CadreActif(), 6);
}

TEST_F(LstDir, ShowsTheSameTenOfTenWhateverIsSelected)
{
    showImages(10);
    browser_.chooseFile(0);
    EXPECT_EQ(house_.cells(), imageNames(0, 10));
    EXPECT_EQ(house_.framed(), QList<int>({0}));
    browser_.chooseFile(7);
    EXPECT_EQ(house_.cells(), imageNames(0, 10));
    EXPECT_EQ(house_.framed(), QList<int>({7}));
}

TEST_F(LstDir, LeavesCellsEmptyForWhichThereIsNoFile)
{
    showImages(9);
    browser_.chooseFile(0);
    EXPECT_EQ(house_.cells(), padded(imageNames(0, 9)));
}

TEST_F(LstDir, TakesOldFramesAway)
{
    showImages(9);
    house_.data.sheet.setFrame(7, FrameStyle::Framed);
    browser_.chooseFile(1);
    EXPECT_EQ(house_.framed(), QList<int>({1}));
}

TEST_F(LstDir, EmptiesCellsThatALongerListHadFilled)
{
    showImages(10);
    house_.addImages({0, 1}, 2);
    house_.show({0, 1});
    EXPECT_EQ(house_.cells(), padded(imageNames(0, 2)));
}

TEST_F(LstDir, LogsItsStepsInOrder)
{
    showImages(3);
    browser_.chooseFile(1);
    EXPECT_EQ(house_.newLog(),
              QStringList({QStringLiteral("Planche LstDir_Click"), QStringLiteral("Load Fin"),
                           QStringLiteral("Planche LstDir_Click Fin")}));
}

TEST_F(LstDir, LogsItsBeginAloneForAnEmptyList)
{
    house_.addCamera(kCamera);
    house_.show(kCamera);
    house_.newLog();
    steps_.lists.LstDir_Click();
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("Planche LstDir_Click")}));
}

TEST_F(LstDir, LogsNothingWhileTheLogIsOff)
{
    showImages(3);
    house_.capture.log.setOn(false);
    browser_.chooseFile(1);
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(LstDir, HoldsTheFilmWhileItWorks)
{
    showImages(3);
    film_.play();
    browser_.chooseFile(1);
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("stop"), QStringLiteral("start")}));
}

TEST_F(LstDir, HoldsAFilmWhoseTimerRunsThoughItReadsStart)
{
    showImages(3);
    film_.pause();
    film_.running = true;
    browser_.chooseFile(1);
    EXPECT_TRUE(film_.running);
    EXPECT_EQ(film_.calls.size(), 2);
}

TEST_F(LstDir, LeavesAFilmThatStandsAlone)
{
    showImages(3);
    film_.pause();
    browser_.chooseFile(1);
    EXPECT_EQ(film_.calls, QStringList());
}

TEST_F(LstDir, LetsTheFilmRunOnOverAnEmptyList)
{
    house_.addCamera(kCamera);
    house_.show(kCamera);
    film_.play();
    steps_.lists.LstDir_Click();
    EXPECT_TRUE(film_.running);
}

TEST_F(LstDir, BringsAVisibleZoomImageToTheSelection)
{
    showImages(20);
    house_.data.sheet.showZoom(house_.data.files.file(0));
    browser_.chooseFile(7);
    EXPECT_EQ(house_.data.sheet.zoomed().name, imageName(7));
}

TEST_F(LstDir, LeavesAHiddenZoomImageHidden)
{
    showImages(20);
    browser_.chooseFile(7);
    EXPECT_FALSE(house_.data.sheet.isZoomVisible());
}

TEST_F(LstDir, SelectsTheNewestAgainWhenTheFolderIsListedAgain)
{
    showImages(3);
    browser_.chooseFile(0);
    house_.put(kCamera, imageName(9));
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(selected(), 3);
    EXPECT_EQ(house_.NbI(), QStringLiteral("4 / 4"));
}

TEST_F(LstDir, ShowsAFileThatIsNoPictureAsAnyOther)
{
    house_.addCamera(kCamera, {QStringLiteral("20 notes.txt")});
    house_.show(kCamera);
    EXPECT_EQ(house_.cells().value(0), QStringLiteral("20 notes.txt"));
}

TEST_F(LstDir, LogsARebuildFromItsBeginToItsEnd)
{
    showImages(2);
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(
        house_.newLog(),
        QStringList({QStringLiteral("Planche DirImage"), QStringLiteral("Planche LstDir_Click"),
                     QStringLiteral("Load Fin"), QStringLiteral("Planche LstDir_Click Fin"),
                     QStringLiteral("Planche DirImage Fin")}));
}

} // namespace
} // namespace velmora::test
