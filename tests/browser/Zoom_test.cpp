// The frame of a pressed cell, and the enlarged image over the cells.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

class ZoomImage : public BrowserTest
{
protected:
    void showImages(int count, int selectedImage)
    {
        house_.addImages(kCamera, count);
        house_.show(kCamera);
        browser_.chooseFile(selectedImage);
    }

    void zoom(int cell)
    {
        browser_.zoomCell(cell, house_.data.sheet.image(cell));
        house_.finish();
    }

    [[nodiscard]] QString zoomed() const { return house_.data.sheet.zoomed().name; }

    [[nodiscard]] bool isVisible() const { return house_.data.sheet.isZoomVisible(); }

    QSignalSpy copies_{&browser_, &ImageBrowser::copyWanted};
};

TEST_F(ZoomImage, FramesAPressedCellBesidesTheSelectedOne)
{
    showImages(20, 10);
    browser_.frameCell(7);
    EXPECT_EQ(house_.framed(), QList<int>({4, 7}));
    EXPECT_EQ(state().CadreActif(), 4);
    EXPECT_EQ(selected(), 10);
}

TEST_F(ZoomImage, TakesTheFrameOfAPressedCellAwayWhenTheButtonComesUp)
{
    showImages(20, 10);
    browser_.frameCell(7);
    browser_.releaseCell();
    EXPECT_EQ(house_.framed(), QList<int>({4}));
}

TEST_F(ZoomImage, LeavesTheSelectedCellItsFrameWhenItIsPressedAndReleased)
{
    showImages(20, 10);
    browser_.frameCell(4);
    browser_.releaseCell();
    EXPECT_EQ(house_.framed(), QList<int>({4}));
}

TEST_F(ZoomImage, FramesNoPressedCellWhileTheGroupViewIsBeingFilled)
{
    showImages(20, 10);
    const auto filling = state().beginFilling();
    browser_.frameCell(7);
    EXPECT_EQ(house_.framed(), QList<int>({4}));
}

TEST_F(ZoomImage, ShowsTheImageOfTheCellAndNotTheSelectedOne)
{
    showImages(20, 10);
    zoom(1);
    EXPECT_TRUE(isVisible());
    EXPECT_EQ(zoomed(), imageName(7));
    EXPECT_EQ(selected(), 10);
}

TEST_F(ZoomImage, AsksForACopyOfTheImage)
{
    showImages(20, 10);
    zoom(1);
    ASSERT_EQ(copies_.size(), 1);
    EXPECT_EQ(copies_[0][0].toString(),
              house_.capture.tree.path(house_.capture.folder(kCamera) + u'/' + imageName(7)));
}

TEST_F(ZoomImage, IsNotLoadedAgainWhileItShows)
{
    showImages(20, 10);
    zoom(1);
    zoom(2);
    EXPECT_EQ(zoomed(), imageName(7));
    EXPECT_EQ(copies_.size(), 1);
}

TEST_F(ZoomImage, GoesWithAClickOnIt)
{
    showImages(20, 10);
    zoom(1);
    browser_.hideZoom();
    EXPECT_FALSE(isVisible());
    EXPECT_EQ(zoomed(), QString());
}

TEST_F(ZoomImage, CanBeShownAgainAfterIt)
{
    showImages(20, 10);
    zoom(1);
    browser_.hideZoom();
    zoom(2);
    EXPECT_EQ(zoomed(), imageName(8));
    EXPECT_EQ(copies_.size(), 2);
}

TEST_F(ZoomImage, StaysHiddenForAnEmptyCell)
{
    showImages(3, 2);
    zoom(7);
    EXPECT_FALSE(isVisible());
    EXPECT_EQ(copies_.size(), 0);
}

TEST_F(ZoomImage, StaysHiddenWhileTheGroupViewIsBeingFilled)
{
    showImages(20, 10);
    const auto filling = state().beginFilling();
    zoom(1);
    EXPECT_FALSE(isVisible());
    EXPECT_EQ(copies_.size(), 0);
}

TEST_F(ZoomImage, SelectsTheRowOfItsCellInGroupView)
{
    house_.addImages({0, 2}, 3);
    house_.addImages({0, 6}, 5);
    state().allowReading();
    house_.showGroup(0);
    zoom(6);
    EXPECT_EQ(zoomed(), imageName(4));
    EXPECT_EQ(browser_.face().cameraRow, 6);
    EXPECT_EQ(state().camera().row, 6);
    EXPECT_EQ(house_.framed(), QList<int>({6}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("5"));
}

TEST_F(ZoomImage, CopiesTheNewestImageInGroupView)
{
    house_.addImages({0, 6}, 5);
    house_.showGroup(0);
    zoom(6);
    ASSERT_EQ(copies_.size(), 1);
    EXPECT_EQ(copies_[0][0].toString(),
              house_.capture.tree.path(house_.capture.folder({0, 6}) + u'/' + imageName(4)));
}

TEST_F(ZoomImage, OnlySelectsTheRowOfAnEmptyCellInGroupView)
{
    house_.addImages({0, 2}, 2);
    browser_.setMode(Mode::Camera, true);
    house_.finish();
    zoom(3);
    EXPECT_FALSE(isVisible());
    EXPECT_EQ(copies_.count(), 0);
    EXPECT_EQ(browser_.face().cameraRow, 3);
    EXPECT_EQ(house_.framed(), QList<int>({3}));
}

TEST_F(ZoomImage, ShowsTheSelectedImageByItsKeyAndGoesByIt)
{
    showImages(20, 10);
    browser_.toggleZoom();
    EXPECT_EQ(zoomed(), imageName(10));
    EXPECT_EQ(copies_.size(), 0);
    browser_.toggleZoom();
    EXPECT_FALSE(isVisible());
}

TEST_F(ZoomImage, StaysHiddenForItsKeyOnAnEmptySheet)
{
    house_.addCamera(kCamera);
    house_.show(kCamera);
    browser_.toggleZoom();
    EXPECT_FALSE(isVisible());
}

TEST_F(ZoomImage, FollowsAClickOnACell)
{
    showImages(20, 10);
    zoom(4);
    browser_.clickCell(9);
    EXPECT_EQ(zoomed(), imageName(15));
}

} // namespace
} // namespace velmora::test
