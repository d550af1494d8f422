// One tick of the show, step by step.
#include "tools/SlideshowTest.h"

namespace velmora::test {
namespace {

using SlideshowTick = SlideshowTest;

TEST_F(SlideshowTick, KeepsTheFirstImageRightAfterTheStart)
{
    open(30);
    tick();
    EXPECT_EQ(face().image.name, imageName(0));
    EXPECT_EQ(film_.current(), 2);
}

TEST_F(SlideshowTick, ShowsOneImageAfterTheOther)
{
    open(30);
    tick(2);
    EXPECT_EQ(face().image.name, imageName(1));
    tick();
    EXPECT_EQ(face().image.name, imageName(2));
    EXPECT_EQ(face().image, house_.data.files.file(2));
}

TEST_F(SlideshowTick, TellsTheDateAndTimeOfTheImage)
{
    open(30);
    tick(3);
    EXPECT_EQ(face().nFich, QStringLiteral("20060307_000002"));
}

TEST_F(SlideshowTick, TellsPositionAndRankBeforeItGoesOn)
{
    open(30);
    tick(5);
    EXPECT_EQ(face().Compte, QStringLiteral("5 / 30"));
    EXPECT_EQ(face().Compte0, QStringLiteral("5 / 30"));
    EXPECT_EQ(face().progress, 5);
    EXPECT_EQ(film_.current(), 6);
}

TEST_F(SlideshowTick, TellsTheRankInTheRangePlayed)
{
    openAt(30, 5, 14);
    tick(3);
    EXPECT_EQ(face().image.name, imageName(6));
    EXPECT_EQ(face().Compte, QStringLiteral("7 / 14"));
    EXPECT_EQ(face().Compte0, QStringLiteral("3 / 10"));
    EXPECT_EQ(face().progress, 3);
}

TEST_F(SlideshowTick, GoesOnWithTheFirstOfTheRangeBehindItsLast)
{
    openAt(30, 5, 6);
    tick(2);
    EXPECT_EQ(face().image.name, imageName(5));
    tick();
    EXPECT_EQ(face().image.name, imageName(4));
    EXPECT_EQ(face().Compte, QStringLiteral("5 / 6"));
    EXPECT_EQ(face().progress, 1);
}

TEST_F(SlideshowTick, NeverStopsAtTheLastImage)
{
    open(3);
    tick(100);
    EXPECT_TRUE(isRunning());
    EXPECT_EQ(face().image.name, imageName(0)); // 100 = 33 rounds and one
}

TEST_F(SlideshowTick, StopsWithoutShowingMoreWhenTheRangeIsOneImageWhilePlaying)
{
    open(30);
    tick(3);
    film_.sFin_Change(4);
    film_.sDebut_Change(4);
    film_.startTimer();
    const FilmFace before = face();
    const int position = film_.current();
    tick();
    EXPECT_FALSE(isRunning());
    EXPECT_EQ(face().image, before.image);
    EXPECT_EQ(face().Compte, before.Compte);
    EXPECT_EQ(film_.current(), position);
}

TEST_F(SlideshowTick, ShowsTheOnlyImageOfTheRangeWhilePaused)
{
    openAt(30, 4, 4);
    film_.startTimer();
    film_.PauseCine_MouseDown();
    tick();
    EXPECT_EQ(face().image.name, imageName(3));
}

TEST_F(SlideshowTick, StopsAtOnceOnASingleFile)
{
    open(1);
    EXPECT_TRUE(isRunning());
    tick();
    EXPECT_FALSE(isRunning());
    EXPECT_EQ(face().image.name, imageName(0));
}

TEST_F(SlideshowTick, StopsWhenThereIsNothingToPlay)
{
    open(3);
    for (int number = 0; number < 3; ++number) {
        house_.remove(kCamera, imageName(number));
    }
    house_.show(kCamera);
    ASSERT_EQ(face().range, (PlayRange{1, 0}));
    EXPECT_TRUE(isRunning());
    tick();
    EXPECT_FALSE(isRunning());
    EXPECT_TRUE(face().image.isNone());
}

TEST_F(SlideshowTick, StopsWhenThereIsNothingToPlayThoughItReadsStart)
{
    open(3);
    film_.PauseCine_MouseDown();
    film_.sFin_Change(0); // brings the first position to 0 too, and resumes
    EXPECT_EQ(face().range, (PlayRange{0, 0}));
    ASSERT_TRUE(isRunning());
    tick();
    EXPECT_FALSE(isRunning());
    EXPECT_EQ(face().Compte, QStringLiteral("0 / 0"));
}

TEST_F(SlideshowTick, LeavesThePictureEmptyForAPositionBehindTheList)
{
    open(30);
    house_.data.files.bind(kCamera, house_.data.files.folder(),
                           std::make_shared<const ImageNames>());
    tick(2);
    EXPECT_TRUE(face().image.isNone());
    EXPECT_EQ(face().nFich, QString());
    EXPECT_TRUE(isRunning());
    EXPECT_EQ(film_.current(), 3);
}

TEST_F(SlideshowTick, GoesOnOverAFileThatIsGone)
{
    open(30);
    house_.remove(kCamera, imageName(1));
    tick(3);
    EXPECT_EQ(face().image.name, imageName(2));
}

TEST_F(SlideshowTick, ComesUpToTheFirstPositionAfterThePictureIsTaken)
{
    open(30);
    tick(3);
    film_.sFin_Change(25);
    film_.sDebut_Change(20);
    ASSERT_EQ(film_.current(), 20);
    browser_.chooseFile(0);
    film_.moveTo(9); // position 10, before the range
    tick();
    EXPECT_EQ(face().image.name, imageName(9));
    EXPECT_EQ(face().Compte, QStringLiteral("20 / 25"));
    EXPECT_EQ(face().progress, 1);
    EXPECT_EQ(film_.current(), 21);
}

TEST_F(SlideshowTick, ShowsTheFirstOfTheRangeWhenThePositionIsZeroLater)
{
    open(30);
    tick(6);
    film_.moveTo(-1);
    ASSERT_EQ(film_.current(), 0);
    tick();
    EXPECT_EQ(face().image.name, imageName(0));
    EXPECT_EQ(face().Compte, QStringLiteral("1 / 30"));
}

TEST_F(SlideshowTick, TakesTheSpeedThatIsSetForTheNextTick)
{
    open(30);
    film_.vitesse_Change(500);
    EXPECT_EQ(film_.timer().interval(), 1000);
    tick();
    EXPECT_EQ(film_.timer().interval(), 500);
}

TEST_F(SlideshowTick, KeepsTheOldSpeedWhenItStopsInstead)
{
    open(1);
    film_.vitesse_Change(500);
    tick();
    EXPECT_EQ(film_.timer().interval(), 1000);
}

TEST_F(SlideshowTick, TellsTheWindow)
{
    open(30);
    const QSignalSpy changes(&film_, &Slideshow::changed);
    tick();
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(SlideshowTick, ComesFromTheTimer)
{
    open(30);
    film_.timer().setInterval(0);
    QSignalSpy changes(&film_, &Slideshow::changed);
    ASSERT_TRUE(changes.wait(2000));
    EXPECT_EQ(film_.current(), 2);
}

} // namespace
} // namespace velmora::test
