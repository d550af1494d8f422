// The range of a film to keep: what is typed, the film's sliders, and the days of the calendar.
#include "DroppedText.h"
#include "FilmKeepTest.h"
#include "ui/PictureView.h"

#include <QSlider>
#include <QSpinBox>

namespace velmora::test {
namespace {

TEST_F(FilmKeepTest, WhatIsTypedIsTheRangeOfTheFilm)
{
    house_.click(QStringLiteral("bFilm"));
    house_.holdFilm();
    window_.present({});
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:05"));
    QTest::keyClick(&find<QLineEdit>("filmFrom"), Qt::Key_Return);
    EXPECT_EQ(house_.film.face().range, (PlayRange{6, kImages}));
    retype("filmTo", QStringLiteral("2006-03-07 00:00:19"));
    QTest::keyClick(&find<QLineEdit>("filmTo"), Qt::Key_Return);
    EXPECT_EQ(house_.film.face().range, (PlayRange{6, 20}));
}

TEST_F(FilmKeepTest, PreviewsTheImagesOfItsRangeAsTheyComeAndGo)
{
    const auto &preview = find<PictureView>("filmPreview");
    const auto shows = [&](int second) {
        const QString path = house_.imagePath({0, 0}, storedName(second));
        return QTest::qWaitFor([&] { return preview.path() == path; });
    };
    retype("filmTo", QStringLiteral("2006-03-07 00:00:06"));
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:05"));
    QTest::keyClick(&find<QLineEdit>("filmFrom"), Qt::Key_Return);
    EXPECT_TRUE(shows(5));
    EXPECT_TRUE(shows(6));
    ASSERT_TRUE(QFile::remove(house_.imagePath({0, 0}, storedName(6))));
    store(storedName(kImages));
    ASSERT_TRUE(shows(5));
    const QSignalSpy ticks(&find<QTimer>("filmPreviewTimer"), &QTimer::timeout);
    for (int tick = 1; tick <= 3; ++tick) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return ticks.count() >= tick; }));
        EXPECT_EQ(preview.path(), house_.imagePath({0, 0}, storedName(5)));
    }
}

TEST_F(FilmKeepTest, ItsPreviewGoesOnWhenAnImageIsStored)
{
    const auto &preview = find<PictureView>("filmPreview");
    const QString first = house_.imagePath({0, 0}, storedName(0));
    find<QSpinBox>("filmRate").setValue(2); // slower than what follows
    ASSERT_TRUE(QTest::qWaitFor([&] { return preview.path() == first; }));
    ASSERT_TRUE(QTest::qWaitFor([&] { return preview.path() != first; }));
    store(storedName(kImages));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
    EXPECT_NE(preview.path(), first);
}

TEST_F(FilmKeepTest, TheSlidersOfTheFilmAreItsRange)
{
    house_.click(QStringLiteral("bFilm"));
    house_.holdFilm();
    window_.present({});
    find<QPushButton>("filmMake").setFocus();
    house_.film.sDebut_Change(11);
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:10"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("20 images")));
}

TEST_F(FilmKeepTest, TheSlidersReachABoxInWhichTheCursorStands)
{
    openFilm();
    find<QLineEdit>("filmTo").setFocus();
    house_.film.sDebut_Change(11);
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:10"));
    retype("filmTo", QStringLiteral("2006-03-07 00:00:19"));
    QTest::keyClick(&find<QLineEdit>("filmTo"), Qt::Key_Return);
    house_.film.sFin_Change(25);
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:24"));
}

TEST_F(FilmKeepTest, ItsRangeEndsWithAnImageThatWasStoredSince)
{
    store(storedName(kImages));
    openFilm();
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("31 images"))) << forecast().toStdString();
}

TEST_F(FilmKeepTest, ItsRangeGrowsWithoutAFilm)
{
    store(storedName(kImages));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("31 images"))) << forecast().toStdString();
}

TEST_F(FilmKeepTest, ItsRangeStaysWithoutAFilmOnceItIsDropped)
{
    find<QWidget>("filmMake").setFocus();
    find<QLineEdit>("filmTo").clear();
    dropText(find<QWidget>("filmTo"), QStringLiteral("2006-03-07 00:00:19"));
    store(storedName(kImages));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:19"));
    find<QWidget>("filmMake").setFocus();
    store(storedName(kImages + 1));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("20 images"))) << forecast().toStdString();
}

TEST_F(FilmKeepTest, ItsRangeStaysWithoutAFilmWhileTheFolderIsChosen)
{
    click("filmCopy");
    store(storedName(kImages));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:29"));
}

TEST_F(FilmKeepTest, ItsRangeStaysWithoutAFilmOnceItIsTyped)
{
    find<QLineEdit>("filmTo").setFocus();
    retype("filmTo", QStringLiteral("2006-03-07 00:00:19"));
    store(storedName(kImages));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:19"));
    QTest::keyClick(&find<QLineEdit>("filmTo"), Qt::Key_Return);
    store(storedName(kImages + 1));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:19"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("20 images"))) << forecast().toStdString();
}

TEST_F(FilmKeepTest, ItsRangeGrowsWithAPausedFilm)
{
    pauseFilm();
    find<QLineEdit>("filmFrom").setFocus();
    store(storedName(kImages));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("31 images"))) << forecast().toStdString();
}

TEST_F(FilmKeepTest, ItsRangeEndsWithTheLastImageLeft)
{
    pauseFilm();
    for (int i = 20; i < kImages; ++i) {
        ASSERT_TRUE(QFile::remove(house_.imagePath({0, 0}, storedName(i))));
    }
    store(storedName(5));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("20 images"))) << forecast().toStdString();
    house_.film.sDebut_Change(3);
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:02"));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:19"));
}

TEST_F(FilmKeepTest, LeavesAPausedFilmPaused)
{
    pauseFilm();
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:05"));
    QTest::keyClick(&find<QLineEdit>("filmFrom"), Qt::Key_Return);
    EXPECT_EQ(house_.film.face().range, (PlayRange{6, kImages}));
    expectPaused();
    retype("filmTo", QStringLiteral("2006-03-07 00:00:19"));
    QTest::keyClick(&find<QLineEdit>("filmTo"), Qt::Key_Return);
    EXPECT_EQ(house_.film.face().range, (PlayRange{6, 20}));
    expectPaused();
    using std::chrono::year;
    window_.takeDays({year{2006} / 3 / 7, year{2006} / 3 / 9});
    EXPECT_EQ(house_.film.face().range, (PlayRange{1, kImages}));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-09")); // as it was chosen
    expectPaused();
}

TEST_F(FilmKeepTest, AMomentHalfTypedIsNotTakenWhenAnotherWindowComesUp)
{
    store(QStringLiteral("20060308_1200000812.jpg"));
    openFilm();
    find<QLineEdit>("filmTo").setFocus();
    retype("filmTo", QStringLiteral("2006-03-07"));
    house_.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    EXPECT_EQ(house_.film.face().range, (PlayRange{1, kImages + 1}));
    house_.film.sDebut_Change(5);
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07"));
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    QTest::keyClicks(&find<QLineEdit>("filmTo"), QStringLiteral(" 00:00:15"));
    find<QPushButton>("filmMake").setFocus(); // leaves the box
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:15"));
    EXPECT_EQ(house_.film.face().range.end, 16);
}

TEST_F(FilmKeepTest, WhatIsNoMomentYetOutlivesAnotherWindow)
{
    house_.click(QStringLiteral("bFilm"));
    house_.holdFilm();
    window_.present({});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    find<QLineEdit>("filmFrom").setFocus();
    retype("filmFrom", QStringLiteral("2006-0"));
    house_.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    house_.film.sDebut_Change(11);
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-0"));
}

TEST_F(FilmKeepTest, TakesTheDaysOfTheCalendar)
{
    using namespace std::chrono;
    window_.takeDays({year{2006} / 3 / 7, year{2006} / 3 / 9});
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07"));
    EXPECT_EQ(find<QLineEdit>("filmTo").text(), QStringLiteral("2006-03-09"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("30 images")));
}

TEST_F(FilmKeepTest, BeginsWithTheDaysThatAreChosen)
{
    window_.close();
    using std::chrono::year;
    window_.present(DayRange{year{2006} / 3 / 6, year{2006} / 3 / 9});
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-06"));
    EXPECT_EQ(find<QLineEdit>("filmTo").text(), QStringLiteral("2006-03-09"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("30 images")));
}

TEST_F(FilmKeepTest, TakesNoDaysOfAnotherCamera)
{
    house_.addImages({0, 1}, 3);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    using std::chrono::year;
    window_.takeDays({year{2006} / 3 / 7, year{2006} / 3 / 9});
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:00"));
}

TEST_F(FilmKeepTest, KeepsItsRangeWhenAFilmOfAnotherCameraPlays)
{
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:10"));
    find<QComboBox>("filmForm").setFocus();
    house_.addImages({0, 1}, 3);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    house_.click(QStringLiteral("bFilm"));
    house_.settle();
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:10"));
}

TEST_F(FilmKeepTest, KeepsWhatIsTypedWhenItIsOpenedAgain)
{
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:10"));
    using std::chrono::year;
    window_.present(DayRange{year{2006} / 3 / 6, year{2006} / 3 / 9});
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:10"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("20 images")));
    house_.addImages({0, 1}, 3);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    window_.present({});
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:00"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("3 images")));
}

TEST_F(FilmKeepTest, KeepsTheRangeThatWasTypedWhenTheCaptureRestartsTheFilm)
{
    beginRangeOfFollowingFilm(QStringLiteral("2006-03-07 00:00:10"));
    find<QPushButton>("filmCopy").setFocus();
    ASSERT_TRUE(forecast().startsWith(QStringLiteral("20 images"))) << forecast().toStdString();
    storeAnImage();
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:10"));
}

TEST_F(FilmKeepTest, KeepsTheRangeThatWasTypedWhenTheFilmIsOpened)
{
    find<QLineEdit>("filmFrom").setFocus();
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:10"));
    QTest::keyClick(&find<QLineEdit>("filmFrom"), Qt::Key_Return);
    find<QPushButton>("filmMake").setFocus();
    house_.click(QStringLiteral("bFilm"));
    house_.holdFilm();
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:10"));
}

TEST_F(FilmKeepTest, BeginsWithAllImagesThoughAPausedFilmOfAnotherCameraHasARange)
{
    pauseFilm();
    house_.film.setRange({5, 10});
    window_.close();
    house_.addImages({0, 1}, 20);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    window_.present({});
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:00"));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:19"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("20 images"))) << forecast().toStdString();
}

TEST_F(FilmKeepTest, ItsRangeEndsWithTheNewestImageThoughThereAreAsManyAsBefore)
{
    openFilm();
    house_.tick(QStringLiteral("cAuto"));
    ASSERT_TRUE(QFile::remove(house_.imagePath({0, 0}, storedName(0))));
    storeAnImage();
    ASSERT_EQ(house_.film.face().range, (PlayRange{1, kImages}));
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:01"));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
}

TEST_F(FilmKeepTest, ItsRangeGrowsAfterAFilmOfAllImagesWasClosed)
{
    openFilm();
    house_.filmWindow.close();
    store(storedName(kImages));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
}

TEST_F(FilmKeepTest, ItsRangeStaysAfterAFilmOfSomeImagesWasClosed)
{
    openFilm();
    house_.film.sDebut_Change(11);
    house_.filmWindow.close();
    store(storedName(kImages));
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:10"));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:29"));
}

TEST_F(FilmKeepTest, ItsRangeIsThatOfTheFilmAlsoWhenImagesAreGone)
{
    openFilm();
    house_.film.sDebut_Change(11);
    ASSERT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:10"));
    removeFirst(5);
    ASSERT_EQ(house_.film.face().range.start, 11);
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:15"));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:29"));
}

TEST_F(FilmKeepTest, ATypedRangeStaysThatOfTheFilmWhenImagesAreGone)
{
    openFilm();
    find<QLineEdit>("filmFrom").setFocus();
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:10"));
    QTest::keyClick(&find<QLineEdit>("filmFrom"), Qt::Key_Return);
    ASSERT_EQ(house_.film.face().range, (PlayRange{11, kImages}));
    removeFirst(5);
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:10"));
    EXPECT_EQ(house_.film.face().range, (PlayRange{6, kImages - 5}));
}

TEST_F(FilmKeepTest, TheSlidersReachTheEndOfATypedRangeThatHasGrown)
{
    openFilm();
    find<QLineEdit>("filmTo").setFocus();
    retype("filmTo", QStringLiteral("2006-03-07"));
    QTest::keyClick(&find<QLineEdit>("filmTo"), Qt::Key_Return);
    store(storedName(kImages));
    EXPECT_EQ(house_.film.face().range, (PlayRange{1, kImages + 1}));
    EXPECT_EQ(house_.find<QSlider>(QStringLiteral("sFin")).value(), kImages + 1);
}

TEST_F(FilmKeepTest, ItsRangeStaysUnderAFilmThatBeginsAgainWhileTheFolderIsChosen)
{
    openFilm();
    house_.tick(QStringLiteral("cAuto"));
    house_.film.sDebut_Change(11);
    ASSERT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:10"));
    click("filmCopy");
    storeAnImage();
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:10"));
    answer(out());
    EXPECT_EQ(QDir(out()).entryList(QDir::Files).size(), kImages - 10);
}

TEST_F(FilmKeepTest, ItsRangeIsTheFilmsAgainOnceItIsMade)
{
    openFilm();
    house_.tick(QStringLiteral("cAuto"));
    click("filmCopy");
    storeAnImage();
    ASSERT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:29"));
    answer(out());
    EXPECT_EQ(QDir(out()).entryList(QDir::Files).size(), kImages);
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
}

TEST_F(FilmKeepTest, ItsRangeIsTheFilmsAgainWhenNoFolderIsChosen)
{
    openFilm();
    house_.tick(QStringLiteral("cAuto"));
    click("filmCopy");
    storeAnImage();
    ASSERT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:29"));
    window_.findChild<QFileDialog *>()->reject();
    house_.settle();
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
}

TEST_F(FilmKeepTest, TheDaysChosenInTheCalendarStayItsRangeWhenImagesOfTheFilmAreGone)
{
    using std::chrono::year;
    openFilm();
    window_.takeDays({year{2006} / 3 / 7, year{2006} / 3 / 8});
    removeFirst(5);
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07"));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-08"));
}

TEST_F(FilmKeepTest, ItsRangeStaysAfterAFilmOfSomeImagesFollowedTheOthersAndWasClosed)
{
    openFilm();
    house_.film.sDebut_Change(11);
    removeFirst(5);
    house_.filmWindow.close();
    store(storedName(kImages));
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:15"));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:29"));
}

TEST_F(FilmKeepTest, ItsRangeStaysThatWasTypedThoughItIsThatOfAllImagesOfAClosedFilm)
{
    openFilm();
    find<QLineEdit>("filmFrom").setFocus();
    for (const int second : {5, 0}) {
        retype("filmFrom", QStringLiteral("2006-03-07 00:00:0%1").arg(second));
        QTest::keyClick(&find<QLineEdit>("filmFrom"), Qt::Key_Return);
    }
    house_.filmWindow.close();
    store(storedName(kImages));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:29"));
}

TEST_F(FilmKeepTest, ItsRangeIsThatOfTheFilmThatComesBackFromAnotherCameraOfAsManyImages)
{
    house_.addImages({0, 1}, kImages);
    openFilm();
    house_.clickRow(QStringLiteral("lstCam"), 1);
    ASSERT_TRUE(QFile::remove(house_.imagePath({0, 0}, storedName(0))));
    house_.house.putImage({0, 0}, storedName(kImages), pictureBytes(Qt::red));
    house_.clickRow(QStringLiteral("lstCam"), 0);
    ASSERT_EQ(house_.film.face().range, (PlayRange{1, kImages}));
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:01"));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
}

TEST_F(FilmKeepTest, TheFirstImageOfACameraIsItsRangeWhenAFilmOfOneImageWasPlayedBefore)
{
    house_.addImages({0, 1}, 1);
    house_.house.addCamera({0, 2}, cameraUrl({0, 2}));
    house_.clickRow(QStringLiteral("lstCam"), 1);
    openFilm();
    house_.click(QStringLiteral("bFilm"));
    house_.clickRow(QStringLiteral("lstCam"), 2);
    window_.close();
    window_.present({});
    house_.clickRow(QStringLiteral("lstCam"), 0);
    house_.click(QStringLiteral("bFilm"));
    house_.house.putImage({0, 2}, storedName(7), pictureBytes(Qt::red));
    house_.clickRow(QStringLiteral("lstCam"), 2);
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:07"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("1 image,"))) << forecast().toStdString();
}

} // namespace
} // namespace velmora::test
