// The film button, and the way into the slideshow.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

class FilmButton : public BrowserTest
{
protected:
    void press()
    {
        browser_.toggleFilm();
        house_.finish();
    }
};

TEST_F(FilmButton, OpensTheSlideshowOnACameraWithImages)
{
    house_.addImages(kCamera, 1);
    house_.show(kCamera);
    press();
    EXPECT_TRUE(film_.open);
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("begin")}));
    EXPECT_TRUE(state().CineActif());
}

TEST_F(FilmButton, ClosesAnOpenSlideshow)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    press();
    film_.calls.clear();
    press();
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("stop"), QStringLiteral("close")}));
    EXPECT_FALSE(film_.open);
    EXPECT_FALSE(state().CineActif());
}

TEST_F(FilmButton, OpensItAgainTheThirdTime)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    press();
    press();
    press();
    EXPECT_TRUE(film_.open);
    EXPECT_TRUE(state().CineActif());
}

TEST_F(FilmButton, HidesTheZoomImageWhenItCloses)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    press();
    house_.data.sheet.showZoom(house_.data.files.file(0));
    press();
    EXPECT_FALSE(house_.data.sheet.isZoomVisible());
    EXPECT_TRUE(house_.data.sheet.zoomed().isNone());
}

TEST_F(FilmButton, KeepsTheZoomImageWhenItOpens)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    house_.data.sheet.showZoom(house_.data.files.file(0));
    press();
    EXPECT_TRUE(house_.data.sheet.isZoomVisible());
}

TEST_F(FilmButton, OpensNothingOnACameraWithoutImages)
{
    house_.addCamera(kCamera);
    house_.show(kCamera);
    press();
    EXPECT_FALSE(film_.open);
    EXPECT_FALSE(state().CineActif());
}

TEST_F(FilmButton, ClosesAnOpenSlideshowOnACameraWithoutImages)
{
    house_.addCamera(kCamera);
    house_.show(kCamera);
    film_.play();
    state().filmOpened();
    press();
    EXPECT_FALSE(film_.open);
    EXPECT_FALSE(state().CineActif());
}

TEST_F(FilmButton, ListsTheSelectedCameraFirstInGroupView)
{
    house_.addImages({0, 3}, 4);
    state().allowReading();
    house_.showGroup(0);
    state().cameraChosen({state().camera().group, 3});
    press();
    EXPECT_EQ(house_.data.files.count(), 4);
    EXPECT_TRUE(film_.open);
}

TEST_F(FilmButton, OpensNothingInGroupViewOnACameraWithoutImages)
{
    house_.addImages(kCamera, 4);
    house_.addCamera({0, 1});
    house_.show(kCamera);
    house_.showGroup(0);
    state().cameraChosen({state().camera().group, 1});
    press();
    EXPECT_FALSE(film_.open);
    EXPECT_EQ(house_.NbI(), QStringLiteral("0"));
}

TEST_F(FilmButton, LeavesTheListAndItsSelectionInCameraView)
{
    house_.addImages(kCamera, 4);
    house_.show(kCamera);
    browser_.chooseFile(1);
    house_.put(kCamera, imageName(9));
    press();
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(house_.data.files.count(), 4);
}

TEST_F(FilmButton, ReadsTheFolderBeforeTheFilmBeginsInGroupView)
{
    house_.addImages({0, 3}, 4);
    state().allowReading();
    house_.showGroup(0);
    state().cameraChosen({state().camera().group, 3});
    run(steps_.lists.ResetCine());
    EXPECT_EQ(house_.data.files.count(), 4);
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("begin")}));
    EXPECT_TRUE(state().CineActif());
}

TEST_F(FilmButton, ReadsNothingBeforeTheFilmBeginsInCameraView)
{
    house_.addImages(kCamera, 4);
    house_.show(kCamera);
    browser_.chooseFile(1);
    run(steps_.lists.ResetCine());
    EXPECT_EQ(selected(), 1);
}

TEST_F(FilmButton, TogglesTwiceForTwoQuickPressesWhileAFolderIsRead)
{
    house_.addFullFolder(kCamera);
    state().allowReading();
    state().viewSwitched(View::Group);
    browser_.toggleFilm();
    browser_.toggleFilm();
    house_.finish();
    EXPECT_FALSE(film_.open);
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("begin"), QStringLiteral("stop"),
                                        QStringLiteral("close")}));
    EXPECT_EQ(house_.data.files.count(), kFullFolder);
}

} // namespace
} // namespace velmora::test
