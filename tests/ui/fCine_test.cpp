// The slideshow's window: what its controls show and do, and where it is placed.
#include "BrowserWindowHouse.h"

#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QWindow>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

const QString kPause = QStringLiteral("PauseCine");

/// Counts how often a window is brought to the front.
class FrontCounter : public QObject
{
public:
    explicit FrontCounter(QWidget &window) { window.installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::ZOrderChange ? 1 : 0;
        return false;
    }

    int count = 0;
};

class FilmWindow : public testing::Test
{
protected:
    FilmWindow() { house_.house.settings.write(u"Control", u"Vitesse", 1000); }

    // A film of this many images, at the first one.
    void openFilm(int images)
    {
        house_.addImages({0, 0}, images);
        begin();
    }

    void begin()
    {
        house_.open();
        house_.click(QStringLiteral("bFilm"));
        ASSERT_TRUE(house_.filmWindow.isVisible());
        house_.holdFilm();
    }

    QTimer &cine() { return house_.find<QTimer>(QStringLiteral("cine")); }

    void tick(int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            house_.fire(QStringLiteral("cine"));
        }
        house_.holdFilm();
        house_.settle();
    }

    QSlider &slider(const QString &name) { return house_.find<QSlider>(name); }

    QString text(const QString &label) { return house_.text(label); }

    QString caption() { return house_.find<QAbstractButton>(kPause).text(); }

    QString box(const QString &name) { return house_.find<QLineEdit>(name).text(); }

    QString shown() { return house_.shown(QStringLiteral("iCine")); }

    BrowserWindowHouse house_;
};

TEST_F(FilmWindow, OpensOnTheFirstImage)
{
    openFilm(12);
    EXPECT_EQ(shown(), storedName(0));
    EXPECT_EQ(house_.find<QWidget>(QStringLiteral("iCine")).accessibleDescription(),
              house_.imagePath({0, 0}, storedName(0)));
    EXPECT_EQ(caption(), QStringLiteral("Pause"));
    EXPECT_EQ(slider(QStringLiteral("sDebut")).value(), 1);
    EXPECT_EQ(slider(QStringLiteral("sFin")).value(), 12);
    EXPECT_EQ(slider(QStringLiteral("sFin")).maximum(), 12);
    EXPECT_EQ(box(QStringLiteral("tDebut")), QStringLiteral("20060307"));
    EXPECT_EQ(box(QStringLiteral("tFin")), QStringLiteral("20060307"));
    EXPECT_EQ(text(QStringLiteral("Compte0")), QStringLiteral("0 / 12"));
}

TEST_F(FilmWindow, EachTickShowsTheNextImage)
{
    openFilm(12);
    tick();
    EXPECT_EQ(shown(), storedName(0));
    tick(4);
    EXPECT_EQ(shown(), storedName(4));
    EXPECT_EQ(text(QStringLiteral("Compte")), QStringLiteral("5 / 12"));
    EXPECT_EQ(text(QStringLiteral("Compte0")), QStringLiteral("5 / 12"));
    EXPECT_EQ(text(QStringLiteral("nFich")), storedName(4).left(15));
    EXPECT_EQ(house_.find<QProgressBar>(QStringLiteral("Barre")).value(), 5);
    EXPECT_EQ(house_.find<QProgressBar>(QStringLiteral("Barre")).maximum(), 12);
}

TEST_F(FilmWindow, BeginsAgainBehindTheLastImage)
{
    openFilm(3);
    tick(4);
    EXPECT_EQ(shown(), storedName(0));
    EXPECT_TRUE(cine().isActive());
}

TEST_F(FilmWindow, PressingPauseStopsAndPressingStartGoesOn)
{
    openFilm(12);
    house_.press(kPause, Qt::LeftButton);
    EXPECT_EQ(caption(), QStringLiteral("Start"));
    EXPECT_FALSE(cine().isActive());
    QTest::mouseRelease(&house_.find<QWidget>(kPause), Qt::LeftButton);
    EXPECT_EQ(caption(), QStringLiteral("Start"));
    house_.press(kPause, Qt::LeftButton);
    EXPECT_EQ(caption(), QStringLiteral("Pause"));
    EXPECT_TRUE(cine().isActive());
}

TEST_F(FilmWindow, SpaceOnTheButtonPausesOnce)
{
    openFilm(12);
    house_.filmWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.filmWindow));
    house_.find<QWidget>(kPause).setFocus();
    QTest::keyClick(house_.filmWindow.windowHandle(), Qt::Key_Space);
    EXPECT_EQ(caption(), QStringLiteral("Start"));
    QTest::keyClick(house_.filmWindow.windowHandle(), Qt::Key_Space);
    EXPECT_EQ(caption(), QStringLiteral("Pause"));
}

TEST_F(FilmWindow, TheFirstPositionPushesTheLastOne)
{
    openFilm(30);
    slider(QStringLiteral("sFin")).setValue(5);
    slider(QStringLiteral("sDebut")).setValue(12);
    EXPECT_EQ(slider(QStringLiteral("sFin")).value(), 21);
    slider(QStringLiteral("sDebut")).setValue(25);
    EXPECT_EQ(slider(QStringLiteral("sFin")).value(), 25);
}

TEST_F(FilmWindow, TheLastPositionPushesTheFirstOne)
{
    openFilm(30);
    slider(QStringLiteral("sDebut")).setValue(20);
    slider(QStringLiteral("sFin")).setValue(15);
    EXPECT_EQ(slider(QStringLiteral("sDebut")).value(), 6);
    slider(QStringLiteral("sFin")).setValue(4);
    EXPECT_EQ(slider(QStringLiteral("sDebut")).value(), 4);
}

TEST_F(FilmWindow, KeysMoveAPosition)
{
    openFilm(30);
    house_.key(QStringLiteral("sDebut"), Qt::Key_Right);
    EXPECT_EQ(house_.film.face().range.start, 2);
    EXPECT_EQ(text(QStringLiteral("Compte0")), QStringLiteral("1 / 29"));
}

TEST_F(FilmWindow, MovingTheLastPositionResumesAPausedFilm)
{
    openFilm(30);
    house_.press(kPause, Qt::LeftButton);
    slider(QStringLiteral("sFin")).setValue(20);
    EXPECT_TRUE(cine().isActive());
    EXPECT_EQ(caption(), QStringLiteral("Start"));
}

TEST_F(FilmWindow, TheSpeedIsStoredAndTakesEffectAtTheNextTick)
{
    openFilm(12);
    slider(QStringLiteral("vitesse")).setValue(500);
    EXPECT_EQ(house_.stored(u"Vitesse"), QStringLiteral("500"));
    EXPECT_NE(cine().interval(), 500);
    house_.fire(QStringLiteral("cine"));
    EXPECT_EQ(cine().interval(), 500);
}

TEST_F(FilmWindow, TakesTheSpeedThatIsStored)
{
    house_.house.settings.write(u"Control", u"Vitesse", 250);
    openFilm(12);
    EXPECT_EQ(slider(QStringLiteral("vitesse")).value(), 250);
}

TEST_F(FilmWindow, EnterInADayBoxSelectsThatImageInTheBrowser)
{
    openFilm(12);
    house_.retype(QStringLiteral("tDebut"), QStringLiteral("20060307_000004"));
    house_.key(QStringLiteral("tDebut"), Qt::Key_Return);
    EXPECT_EQ(text(QStringLiteral("NbI")), QStringLiteral("5 / 12"));
    house_.retype(QStringLiteral("tFin"), QStringLiteral("20060307_000006"));
    house_.key(QStringLiteral("tFin"), Qt::Key_Enter);
    EXPECT_EQ(text(QStringLiteral("NbI")), QStringLiteral("7 / 12"));
}

TEST_F(FilmWindow, OtherKeysInADayBoxSelectNothing)
{
    openFilm(12);
    house_.retype(QStringLiteral("tDebut"), QStringLiteral("20060307_000004"));
    EXPECT_EQ(text(QStringLiteral("NbI")), QStringLiteral("12 / 12"));
}

TEST_F(FilmWindow, ADayThatIsBeingTypedIsNotOverwritten)
{
    openFilm(12);
    house_.filmWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.filmWindow));
    house_.retype(QStringLiteral("tDebut"), QStringLiteral("2005"));
    tick();
    EXPECT_EQ(box(QStringLiteral("tDebut")), QStringLiteral("2005"));
}

TEST_F(FilmWindow, ADayThatIsBeingTypedOutlivesAnotherWindow)
{
    openFilm(12);
    house_.filmWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.filmWindow));
    house_.retype(QStringLiteral("tFin"), QStringLiteral("2005"));
    house_.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    tick();
    EXPECT_EQ(box(QStringLiteral("tFin")), QStringLiteral("2005"));
}

TEST_F(FilmWindow, AClickOnThePictureSelectsItInTheBrowser)
{
    openFilm(12);
    tick(6);
    const QString onShow = shown();
    house_.click(QStringLiteral("iCine"));
    EXPECT_EQ(house_.data.files.selected().name, onShow);
    EXPECT_TRUE(cine().isActive());
    EXPECT_TRUE(house_.house.logText().contains(QStringLiteral("Cine iCine_Click Fin")));
}

TEST_F(FilmWindow, AClickNearTheEndGoesOnWithTheFirstImageAndItsNumber)
{
    openFilm(12);
    tick(12);
    ASSERT_EQ(house_.text(QStringLiteral("Compte")), QStringLiteral("12 / 12"));
    house_.click(QStringLiteral("iCine"));
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("1 / 12"));
    tick();
    EXPECT_EQ(house_.text(QStringLiteral("Compte")), QStringLiteral("1 / 12"));
    EXPECT_EQ(house_.shown(QStringLiteral("iCine")), storedName(0));
    EXPECT_EQ(house_.text(QStringLiteral("nFich")), storedName(0).left(15));
}

TEST_F(FilmWindow, AClickOnThePictureDoesNothingNearTheFirstImages)
{
    openFilm(12);
    tick(6);
    house_.clickRow(QStringLiteral("LstDir"), 1);
    house_.click(QStringLiteral("iCine"));
    EXPECT_EQ(text(QStringLiteral("NbI")), QStringLiteral("2 / 12"));
}

TEST_F(FilmWindow, APictureThatFailsToLoadLeavesThePlaceEmptyAndTheFilmGoesOn)
{
    house_.addImages({0, 0}, 3);
    house_.house.putImage({0, 0}, storedName(1), "no picture");
    begin();
    tick(2);
    EXPECT_EQ(text(QStringLiteral("nFich")), storedName(1).left(15));
    EXPECT_EQ(shown(), QString());
    tick();
    EXPECT_EQ(shown(), storedName(2));
}

TEST_F(FilmWindow, ClosingStoresItsPlaceInTwips)
{
    openFilm(12);
    house_.filmWindow.move(40, 20);
    house_.filmWindow.close();
    EXPECT_EQ(house_.stored(u"fCine.Top"), QStringLiteral("300"));
    EXPECT_EQ(house_.stored(u"fCine.left"), QStringLiteral("600"));
    EXPECT_FALSE(cine().isActive());
    EXPECT_FALSE(house_.data.state.CineActif());
    EXPECT_TRUE(house_.house.logText().contains(QStringLiteral("Cine Form_Unload")));
    EXPECT_EQ(shown(), QString());
}

TEST_F(FilmWindow, ShowsItsPictureAgainWhenItIsOpenedAgain)
{
    openFilm(12);
    house_.filmWindow.close();
    house_.click(QStringLiteral("bFilm"));
    EXPECT_EQ(shown(), storedName(0));
}

TEST_F(FilmWindow, ClosingPutsTheEnlargedImageAway)
{
    openFilm(12);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Return);
    house_.filmWindow.close();
    EXPECT_FALSE(house_.find<QWidget>(QStringLiteral("ZoomImage")).isVisible());
}

TEST_F(FilmWindow, EscapeCloses)
{
    openFilm(12);
    house_.filmWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.filmWindow));
    QTest::keyClick(house_.filmWindow.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(house_.filmWindow.isVisible());
    EXPECT_FALSE(house_.film.isOpen());
}

TEST_F(FilmWindow, OpensAtTheStoredPlace)
{
    house_.house.settings.write(u"Control", u"fCine.Top", 750);
    house_.house.settings.write(u"Control", u"fCine.left", 450);
    openFilm(12);
    EXPECT_EQ(house_.filmWindow.pos(), QPoint(30, 50));
}

TEST_F(FilmWindow, AStoredPlaceCountsUpToItsFirstLetter)
{
    house_.house.settings.write(u"Control", u"fCine.Top", QStringLiteral("750abc"));
    house_.house.settings.write(u"Control", u"fCine.left", QStringLiteral("450.4"));
    openFilm(12);
    EXPECT_EQ(house_.filmWindow.pos(), QPoint(30, 50));
}

TEST_F(FilmWindow, WithoutAStoredPlaceItStaysWhereItIs)
{
    house_.filmWindow.moveTo({600, 900});
    openFilm(12);
    EXPECT_EQ(house_.filmWindow.pos(), QPoint(60, 40));
}

TEST_F(FilmWindow, ComesToTheFrontAgainAndAgainWhileItIsOpen)
{
    openFilm(12);
    const auto &timer = house_.find<QTimer>(QStringLiteral("Timer1"));
    EXPECT_TRUE(timer.isActive());
    house_.filmWindow.close();
    EXPECT_FALSE(timer.isActive());
}

TEST_F(FilmWindow, IsLeftToTheWindowManagerWhereThereIsOne)
{
    openFilm(12);
    ASSERT_FALSE(house_.filmWindow.windowHandle()->frameMargins().isNull());
    const FrontCounter front(house_.filmWindow);
    house_.fire(QStringLiteral("Timer1"));
    EXPECT_EQ(front.count, 0);
}

TEST_F(FilmWindow, BelongsToTheBrowsersWindow)
{
    house_.filmWindow.standAbove(house_.window);
    openFilm(12);
    EXPECT_EQ(house_.filmWindow.windowHandle()->transientParent(), house_.window.windowHandle());
}

TEST_F(FilmWindow, ThePictureIsLoadedForAnotherSize)
{
    house_.house.addCamera({0, 0}, cameraUrl({0, 0}));
    house_.house.putImage({0, 0}, storedName(0), finePicture({2000, 1500}));
    house_.house.putImage({0, 0}, storedName(1), finePicture({2000, 1500}));
    begin();
    auto &view = house_.find<PictureView>(QStringLiteral("iCine"));
    house_.filmWindow.resize(2100, 1800);
    house_.settle();
    ASSERT_GE(view.width(), 2000);
    EXPECT_TRUE(isSharp(view));
}

TEST_F(FilmWindow, ADayThatWasSearchedForIsNotKeptForAnotherCamera)
{
    openFilm(12);
    house_.filmWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.filmWindow));
    house_.retype(QStringLiteral("tDebut"), QStringLiteral("2006"));
    house_.key(QStringLiteral("tDebut"), Qt::Key_Return);
    house_.addImages({0, 1}, 0);
    house_.house.putImage({0, 1}, QStringLiteral("20070102_0000000100.jpg"));
    house_.clickRow(QStringLiteral("lstCam"), 1);
    EXPECT_EQ(house_.film.face().tDebut, QStringLiteral("20070102"));
    EXPECT_EQ(box(QStringLiteral("tDebut")), QStringLiteral("20070102"));
}

} // namespace
} // namespace velmora::test
