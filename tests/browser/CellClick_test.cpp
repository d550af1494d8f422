// Clicks on the cells of the contact sheet.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

class CellClick : public BrowserTest
{
protected:
    void showImages(int count, int selectedImage)
    {
        house_.addImages(kCamera, count);
        house_.show(kCamera);
        browser_.chooseFile(selectedImage);
        house_.newLog();
        film_.calls.clear();
    }

    void click(int cell)
    {
        browser_.clickCell(cell);
        house_.finish();
    }

    /// The slideshow plays from the browser.
    void playFromTheBrowser()
    {
        film_.play();
        state().filmOpened();
    }
};

TEST_F(CellClick, SelectsTheImageOfTheCell)
{
    showImages(20, 10); // in cell 4, so that cell 0 shows 6
    click(1);
    EXPECT_EQ(selected(), 7);
    EXPECT_EQ(house_.NbI(), QStringLiteral("8 / 20"));
}

TEST_F(CellClick, SelectsTheFirstFileByCellZeroWhileCellFourIsFramed)
{
    showImages(20, 4);
    ASSERT_EQ(house_.framed(), QList<int>({4}));
    click(0);
    EXPECT_EQ(selected(), 0);
}

TEST_F(CellClick, BringsTheImageToTheCentre)
{
    showImages(20, 10);
    click(6);
    EXPECT_EQ(selected(), 12);
    EXPECT_EQ(house_.cells().value(4), imageName(12));
    EXPECT_EQ(house_.framed(), QList<int>({4}));
}

TEST_F(CellClick, StaysOnTheLastFileForAClickOnItsOwnCell)
{
    showImages(20, 19);
    click(9);
    EXPECT_EQ(selected(), 19);
}

TEST_F(CellClick, DoesNothingForACellBehindTheLastFile)
{
    showImages(3, 2);
    const QSignalSpy wanted(&browser_, &ImageBrowser::filesWanted);
    click(9);
    EXPECT_EQ(selected(), 2);
    EXPECT_EQ(wanted.size(), 0);
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("Planche Vue_Click"),
                                            QStringLiteral("Planche Vue_Click Fin mem faux")}));
}

TEST_F(CellClick, DoesNothingJustBehindTheLastFile)
{
    showImages(3, 2);
    click(3);
    EXPECT_EQ(selected(), 2);
}

TEST_F(CellClick, CountsFromTheFramedCellWhereverThatIs)
{
    showImages(20, 19);
    click(3);
    EXPECT_EQ(selected(), 13);
    EXPECT_EQ(house_.cells().value(4), imageName(13));
}

TEST_F(CellClick, DoesNothingBeforeTheFirstFile)
{
    showImages(20, 4);
    state().cellFramed(6);
    click(1);
    EXPECT_EQ(selected(), 4);
    click(2);
    EXPECT_EQ(selected(), 0);
}

TEST_F(CellClick, DoesNothingOnAnEmptySheet)
{
    house_.addCamera(kCamera);
    house_.show(kCamera);
    for (int cell = 0; cell < kCells; ++cell) {
        click(cell);
    }
    EXPECT_EQ(selected(), -1);
    EXPECT_EQ(house_.NbI(), QStringLiteral("0"));
}

TEST_F(CellClick, BringsTheKeyboardToTheList)
{
    showImages(20, 10);
    const QSignalSpy files(&browser_, &ImageBrowser::filesWanted);
    const QSignalSpy cameras(&browser_, &ImageBrowser::camerasWanted);
    click(1);
    EXPECT_EQ(files.size(), 1);
    EXPECT_EQ(cameras.size(), 0);
}

TEST_F(CellClick, LogsItsStepsInOrder)
{
    showImages(20, 10);
    click(1);
    EXPECT_EQ(
        house_.newLog(),
        QStringList({QStringLiteral("Planche Vue_Click"), QStringLiteral("Planche LstDir_Click"),
                     QStringLiteral("Load Fin"), QStringLiteral("Planche LstDir_Click Fin"),
                     QStringLiteral("Planche Vue_Click Fin mem faux")}));
}

TEST_F(CellClick, SelectsAFileThatIsGoneFromTheDisk)
{
    showImages(20, 10);
    house_.remove(kCamera, imageName(7));
    click(1);
    EXPECT_EQ(selected(), 7);
}

TEST_F(CellClick, BringsAFilmOfTheBrowserToTheImage)
{
    showImages(20, 10);
    playFromTheBrowser();
    click(1);
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("stop"), QStringLiteral("move to 7"),
                                        QStringLiteral("start")}));
    EXPECT_TRUE(film_.running);
}

TEST_F(CellClick, BringsTheKeyboardToTheCamerasWhileAFilmOfTheBrowserIsOpen)
{
    showImages(20, 10);
    playFromTheBrowser();
    const QSignalSpy cameras(&browser_, &ImageBrowser::camerasWanted);
    click(1);
    EXPECT_EQ(cameras.size(), 1);
}

TEST_F(CellClick, LogsTheEndOfAClickOverAFilmLast)
{
    showImages(20, 10);
    playFromTheBrowser();
    click(1);
    const QStringList log = house_.newLog();
    EXPECT_EQ(log.last(), QStringLiteral("Planche Vue_Click Fin"));
    EXPECT_FALSE(log.contains(QStringLiteral("Planche Vue_Click Fin mem faux")));
}

TEST_F(CellClick, MovesAPausedFilmOfTheBrowserAndLeavesItPaused)
{
    showImages(20, 10);
    film_.pause();
    state().filmOpened();
    click(1);
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("move to 7")}));
    EXPECT_FALSE(film_.running);
}

TEST_F(CellClick, MovesTheFilmToTheSelectionForACellWithoutFileToo)
{
    showImages(3, 1);
    playFromTheBrowser();
    click(9);
    EXPECT_TRUE(film_.calls.contains(QStringLiteral("move to 1")));
}

TEST_F(CellClick, SelectsTheRowInGroupView)
{
    house_.addImages({0, 6}, 4);
    state().allowReading();
    house_.showGroup(0);
    house_.newLog();
    click(6);
    EXPECT_EQ(browser_.face().cameraRow, 6);
    EXPECT_EQ(state().camera().row, 6);
    EXPECT_EQ(house_.framed(), QList<int>({6}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("4"));
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("Planche Vue_Click"),
                                            QStringLiteral("Planche Vue_Click Fin mem faux")}));
}

TEST_F(CellClick, MovesTheFrameInGroupView)
{
    house_.showGroup(0);
    click(6);
    house_.data.sheet.setFrame(1, FrameStyle::Framed);
    click(2);
    EXPECT_EQ(house_.framed(), QList<int>({2}));
}

TEST_F(CellClick, TakesTheFramesAwayInGroupViewWhenThereIsNoSuchRow)
{
    state().viewSwitched(View::Group);
    house_.data.sheet.setFrame(1, FrameStyle::Framed);
    click(2);
    EXPECT_EQ(house_.framed(), QList<int>());
    EXPECT_EQ(browser_.face().cameraRow, -1);
}

TEST_F(CellClick, RestartsAFilmOfTheBrowserInGroupView)
{
    house_.addImages({0, 6}, 4);
    state().allowReading();
    house_.showGroup(0);
    film_.pause();
    state().filmOpened();
    const QSignalSpy cameras(&browser_, &ImageBrowser::camerasWanted);
    click(6);
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("begin")}));
    EXPECT_EQ(house_.data.files.count(), 4);
    EXPECT_EQ(cameras.size(), 1);
    EXPECT_EQ(house_.newLog().last(), QStringLiteral("Planche Vue_Click Fin"));
}

TEST_F(CellClick, IsIgnoredWhileTheGroupViewIsBeingFilled)
{
    house_.showGroup(0);
    house_.newLog();
    const auto filling = state().beginFilling();
    click(6);
    EXPECT_EQ(browser_.face().cameraRow, -1);
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(CellClick, IsIgnoredByTheCellsThemselvesWhileTheyAreBeingFilled)
{
    showImages(20, 10);
    const auto filling = state().beginFilling();
    run(steps_.lists.Vue_Click(1));
    EXPECT_EQ(selected(), 10);
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(CellClick, IsIgnoredWhileALargeGroupIsReallyBeingFilled)
{
    house_.addFullFolder({0, 3});
    browser_.setMode(Mode::Camera, true);
    ASSERT_TRUE(state().DirCamEnCours());
    browser_.clickCell(1);
    house_.finish();
    EXPECT_EQ(browser_.face().cameraRow, -1);
    EXPECT_EQ(house_.framed(), QList<int>());
}

TEST_F(CellClick, LeavesAFilmAloneThatDoesNotRunFromTheBrowser)
{
    showImages(3, 1);
    film_.play();
    click(9);
    EXPECT_EQ(film_.calls, QStringList());
}

TEST_F(CellClick, HoldsAFilmThatReadsStartOnlyWhileTheStripIsLoaded)
{
    showImages(20, 10);
    film_.pause();
    film_.running = true;
    state().filmOpened();
    click(1);
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("stop"), QStringLiteral("start"),
                                        QStringLiteral("move to 7")}));
}

} // namespace
} // namespace velmora::test
