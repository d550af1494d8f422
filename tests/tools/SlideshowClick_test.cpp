// A click on the picture of the slideshow brings its image into the browser.
#include "tools/SlideshowTest.h"

namespace velmora::test {
namespace {

class SlideshowClick : public SlideshowTest
{
protected:
    void SetUp() override
    {
        open(30);
        house_.newLog();
    }

    [[nodiscard]] int selected() const { return house_.data.files.ListIndex(); }
};

TEST_F(SlideshowClick, SelectsTheImageJustShown)
{
    tick(10);
    ASSERT_EQ(face().image.name, imageName(9));
    film_.iCine_Click();
    EXPECT_EQ(selected(), 9);
    EXPECT_EQ(house_.NbI(), QStringLiteral("10 / 30"));
}

TEST_F(SlideshowClick, SelectsTheFirstImageRightAfterTheStart)
{
    film_.iCine_Click();
    EXPECT_EQ(selected(), 0);
}

TEST_F(SlideshowClick, SelectsTheFirstImageAfterTheFirstTick)
{
    tick();
    ASSERT_EQ(film_.current(), 2);
    film_.iCine_Click();
    EXPECT_EQ(selected(), 0);
}

TEST_F(SlideshowClick, SelectsTheSecondImageAfterTheSecondTick)
{
    tick(2);
    film_.iCine_Click();
    EXPECT_EQ(selected(), 1);
}

TEST_F(SlideshowClick, SelectsTheLastImageButTwoBeforeThePositionReachesTheLast)
{
    tick(28);
    ASSERT_EQ(film_.current(), 29);
    film_.iCine_Click();
    EXPECT_EQ(selected(), 27);
}

TEST_F(SlideshowClick, StartsOverWhenThePositionHasReachedTheLast)
{
    tick(29);
    ASSERT_EQ(film_.current(), 30);
    film_.iCine_Click();
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(film_.current(), 0);
}

TEST_F(SlideshowClick, StartsOverBehindTheLastImageToo)
{
    tick(30);
    ASSERT_EQ(film_.current(), 31);
    film_.iCine_Click();
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(film_.current(), 0);
}

TEST_F(SlideshowClick, LeavesThePositionOtherwise)
{
    tick(10);
    film_.iCine_Click();
    EXPECT_EQ(film_.current(), 11);
}

TEST_F(SlideshowClick, DoesNothingInGroupView)
{
    tick(10);
    house_.data.state.viewSwitched(View::Group);
    film_.iCine_Click();
    EXPECT_EQ(selected(), 29);
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(SlideshowClick, DoesNothingWhileOneOfTheFirstTwoImagesIsSelected)
{
    tick(10);
    for (const int index : {1, 0}) {
        browser_.chooseFile(index);
        house_.newLog();
        film_.iCine_Click();
        EXPECT_EQ(selected(), index);
        EXPECT_EQ(house_.newLog(), QStringList());
    }
}

TEST_F(SlideshowClick, WorksWhileTheThirdImageIsSelected)
{
    tick(10);
    browser_.chooseFile(2);
    film_.iCine_Click();
    EXPECT_EQ(selected(), 9);
}

TEST_F(SlideshowClick, DoesNothingWhileNoImageIsSelected)
{
    tick(10);
    house_.data.files.setListIndex(-1);
    film_.iCine_Click();
    EXPECT_EQ(selected(), -1);
}

TEST_F(SlideshowClick, LogsItsBeginAndItsEndAroundTheNewStrip)
{
    tick(10);
    film_.iCine_Click();
    EXPECT_EQ(
        house_.newLog(),
        QStringList({QStringLiteral("Cine iCine_Click"), QStringLiteral("Planche LstDir_Click"),
                     QStringLiteral("Load Fin"), QStringLiteral("Planche LstDir_Click Fin"),
                     QStringLiteral("Cine iCine_Click Fin")}));
}

TEST_F(SlideshowClick, LetsAPlayingShowRunOn)
{
    tick(10);
    QList<bool> running;
    QObject::connect(&film_, &Slideshow::fileChosen, &house_, [&] { running.append(isRunning()); });
    film_.iCine_Click();
    EXPECT_EQ(running, QList<bool>({false}));
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowClick, LeavesAPausedShowPaused)
{
    tick(10);
    film_.PauseCine_MouseDown();
    film_.iCine_Click();
    EXPECT_FALSE(isRunning());
    EXPECT_EQ(selected(), 9);
}

TEST_F(SlideshowClick, StopsAPausedShowWhoseTimerWasResumed)
{
    tick(10);
    film_.PauseCine_MouseDown();
    film_.sFin_Change(20);
    ASSERT_TRUE(isRunning());
    film_.iCine_Click();
    EXPECT_FALSE(isRunning());
}

TEST_F(SlideshowClick, LeavesTheTimerAloneWhenTheShowDoesNotRunFromTheBrowser)
{
    tick(10);
    house_.data.state.filmClosed();
    film_.stopTimer();
    film_.iCine_Click();
    EXPECT_FALSE(isRunning());
    EXPECT_EQ(selected(), 9);
}

} // namespace
} // namespace velmora::test
