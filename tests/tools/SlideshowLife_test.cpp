// The slideshow opens, pauses, plays on and closes.
#include "tools/SlideshowTest.h"

namespace velmora::test {
namespace {

using SlideshowLife = SlideshowTest;

TEST_F(SlideshowLife, OpensPlayingOnAllImages)
{
    const QSignalSpy opened(&film_, &Slideshow::opened);
    open(30);
    EXPECT_EQ(opened.size(), 1);
    EXPECT_TRUE(film_.isOpen());
    EXPECT_TRUE(film_.isPlaying());
    EXPECT_TRUE(isRunning());
    EXPECT_EQ(face().PauseCine, QStringLiteral("Pause"));
    EXPECT_EQ(face().range, (PlayRange{1, 30}));
    EXPECT_EQ(face().count, 30);
    EXPECT_EQ(film_.current(), 0);
}

TEST_F(SlideshowLife, ShowsTheFirstImageAndTheCountersAtItsBegin)
{
    open(30);
    EXPECT_EQ(face().image, house_.data.files.file(0));
    EXPECT_EQ(face().nFich, QStringLiteral("20060307_000000"));
    EXPECT_EQ(face().Compte0, QStringLiteral("0 / 30"));
    EXPECT_EQ(face().progress, 0);
}

TEST_F(SlideshowLife, ShowsTheDaysOfTheFirstAndTheLastImage)
{
    house_.addCamera(kCamera, {QStringLiteral("20060101_0000000100.jpg"),
                               QStringLiteral("20060202_0000000200.jpg"),
                               QStringLiteral("20060303_0000000300.jpg")});
    house_.show(kCamera);
    pressFilm();
    EXPECT_EQ(face().tDebut, QStringLiteral("20060101"));
    EXPECT_EQ(face().tFin, QStringLiteral("20060303"));
}

TEST_F(SlideshowLife, ShowsNoCountersOfASingleImage)
{
    open(1);
    EXPECT_EQ(face().Compte0, QString());
    EXPECT_EQ(face().range, (PlayRange{1, 1}));
    EXPECT_EQ(face().image.name, imageName(0));
}

TEST_F(SlideshowLife, SetsTheBrowsersFlag)
{
    open(30);
    EXPECT_TRUE(house_.data.state.CineActif());
}

TEST_F(SlideshowLife, StartsOverOnAnotherCameraWithoutOpeningAgain)
{
    open(30);
    tick(5);
    film_.sDebut_Change(12);
    const QSignalSpy opened(&film_, &Slideshow::opened);
    house_.addImages({0, 1}, 7);
    house_.show({0, 1});
    EXPECT_EQ(opened.size(), 0);
    EXPECT_EQ(face().range, (PlayRange{1, 7}));
    EXPECT_EQ(face().count, 7);
    EXPECT_EQ(film_.current(), 0);
    EXPECT_EQ(face().image, house_.data.files.file(0));
    EXPECT_EQ(face().progress, 0);
}

TEST_F(SlideshowLife, TakesTheSpeedSliderWhenItStartsOver)
{
    open(30);
    film_.vitesse_Change(700);
    house_.addImages({0, 1}, 7);
    house_.show({0, 1});
    EXPECT_EQ(film_.timer().interval(), 700);
}

TEST_F(SlideshowLife, ShowsTheFirstImageAgainButStaysPaused)
{
    open(30);
    tick(5);
    film_.PauseCine_MouseDown();
    film_.begin();
    EXPECT_FALSE(isRunning());
    EXPECT_EQ(face().PauseCine, QStringLiteral("Start"));
    EXPECT_EQ(face().image.name, imageName(0));
}

TEST_F(SlideshowLife, ForgetsTheCountersOfManyOnACameraWithOne)
{
    open(30);
    tick(5);
    house_.addImages({0, 1}, 1);
    house_.show({0, 1});
    EXPECT_EQ(face().Compte, QString());
    EXPECT_EQ(face().Compte0, QString());
}

class StoredSpeed : public SlideshowTest,
                    public testing::WithParamInterface<std::pair<const char *, int>>
{
};

TEST_P(StoredSpeed, IsTakenWithinTheSlidersBounds)
{
    const auto &[text, speed] = GetParam();
    house_.store(u"Vitesse", QString::fromLatin1(text));
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    pressFilm();
    EXPECT_EQ(face().vitesse, speed);
    EXPECT_EQ(film_.timer().interval(), speed);
    EXPECT_EQ(house_.stored(u"Vitesse"), QString::fromLatin1(text));
}

INSTANTIATE_TEST_SUITE_P(Texts, StoredSpeed,
                         testing::Values(std::pair("500", 500), std::pair("", 10),
                                         std::pair("0", 10), std::pair("9", 10),
                                         std::pair("10", 10), std::pair("1000", 1000),
                                         std::pair("1001", 1000), std::pair("-5", 10),
                                         std::pair("abc", 10), std::pair("250 ms", 250),
                                         std::pair("1e300", 1000), std::pair("99999999999", 1000)));

TEST_F(SlideshowLife, PlaysAtTheFastestSpeedWhenNoneIsStored)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    pressFilm();
    EXPECT_EQ(face().vitesse, 10);
}

TEST_F(SlideshowLife, PausesAndPlaysOn)
{
    open(30);
    film_.PauseCine_MouseDown();
    EXPECT_EQ(face().PauseCine, QStringLiteral("Start"));
    EXPECT_FALSE(isRunning());
    EXPECT_FALSE(film_.isPlaying());
    film_.PauseCine_MouseDown();
    EXPECT_EQ(face().PauseCine, QStringLiteral("Pause"));
    EXPECT_TRUE(isRunning());
    EXPECT_TRUE(film_.isPlaying());
}

TEST_F(SlideshowLife, TellsTheWindowOfAPause)
{
    open(30);
    const QSignalSpy changes(&film_, &Slideshow::changed);
    film_.PauseCine_MouseDown();
    film_.PauseCine_MouseDown();
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(SlideshowLife, PlaysOnAfterItHasStoppedByItself)
{
    openAt(30, 4, 4);
    film_.startTimer();
    tick();
    ASSERT_FALSE(isRunning());
    film_.PauseCine_MouseDown();
    EXPECT_EQ(face().PauseCine, QStringLiteral("Pause"));
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowLife, PausesAPausedShowWhoseTimerWasResumed)
{
    open(30);
    film_.PauseCine_MouseDown();
    film_.sFin_Change(20);
    film_.PauseCine_MouseDown();
    EXPECT_EQ(face().PauseCine, QStringLiteral("Start"));
    EXPECT_FALSE(isRunning());
}

TEST_F(SlideshowLife, KeepsItsPlaceOverAPause)
{
    open(30);
    tick(5);
    film_.PauseCine_MouseDown();
    film_.PauseCine_MouseDown();
    tick();
    EXPECT_EQ(face().image.name, imageName(5));
}

TEST_F(SlideshowLife, ClosesInOrder)
{
    open(30);
    house_.data.sheet.showZoom(house_.data.files.file(3));
    house_.newLog();
    QStringList order;
    QObject::connect(&film_, &Slideshow::closing, &house_, [&] {
        order.append(house_.newLog());
        order.append(isRunning() ? QStringLiteral("places itself, running")
                                 : QStringLiteral("places itself"));
    });
    QObject::connect(&house_.data.sheet, &Sheet::zoomChanged, &house_, [&] {
        order.append(isRunning() ? QStringLiteral("zoom, running") : QStringLiteral("zoom"));
        order.append(house_.data.state.CineActif() ? QStringLiteral("film")
                                                   : QStringLiteral("no film"));
    });
    QObject::connect(&film_, &Slideshow::closed, &house_, [&] {
        order.append(QStringLiteral("closed"));
        order.append(house_.data.state.CineActif() ? QStringLiteral("film")
                                                   : QStringLiteral("no film"));
    });
    film_.close();
    EXPECT_EQ(order, QStringList({QStringLiteral("Cine Form_Unload"),
                                  QStringLiteral("places itself, running"), QStringLiteral("zoom"),
                                  QStringLiteral("film"), QStringLiteral("closed"),
                                  QStringLiteral("no film")}));
}

TEST_F(SlideshowLife, LeavesNothingBehindWhenItCloses)
{
    open(30);
    house_.data.sheet.showZoom(house_.data.files.file(3));
    film_.close();
    EXPECT_FALSE(film_.isOpen());
    EXPECT_FALSE(film_.isPlaying());
    EXPECT_FALSE(isRunning());
    EXPECT_FALSE(house_.data.sheet.isZoomVisible());
    EXPECT_TRUE(house_.data.sheet.zoomed().isNone());
    EXPECT_TRUE(face().image.isNone());
    EXPECT_FALSE(house_.data.state.CineActif());
}

TEST_F(SlideshowLife, ClosesOnce)
{
    open(30);
    film_.close();
    house_.newLog();
    const QSignalSpy closed(&film_, &Slideshow::closed);
    film_.close();
    EXPECT_EQ(closed.size(), 0);
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(SlideshowLife, ClosesWithoutALineWhileTheLogIsOff)
{
    open(30);
    house_.capture.log.setOn(false);
    house_.newLog();
    film_.close();
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(SlideshowLife, OpensPlayingAgainThoughItWasPausedWhenItClosed)
{
    open(30);
    film_.PauseCine_MouseDown();
    film_.close();
    pressFilm();
    EXPECT_EQ(face().PauseCine, QStringLiteral("Pause"));
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowLife, DoesNothingWhileItIsClosed)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    const QSignalSpy changes(&film_, &Slideshow::changed);
    film_.startTimer();
    film_.PauseCine_MouseDown();
    film_.moveTo(2);
    EXPECT_EQ(changes.size(), 0);
    EXPECT_FALSE(isRunning());
    EXPECT_EQ(film_.current(), 0);
    EXPECT_EQ(face().PauseCine, QStringLiteral("Pause"));
}

} // namespace
} // namespace velmora::test
