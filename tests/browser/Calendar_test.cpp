// The calendar of the camera on show, and the way from a day to its images.
#include "browser/Calendar.h"

#include "browser/BrowserTest.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

namespace velmora::test {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

class CalendarTest : public BrowserTest
{
protected:
    void SetUp() override
    {
        house_.addCamera(kCamera, {QStringLiteral("20061230_1200003012.jpg"),
                                   QStringLiteral("20061231_0800003108.jpg"),
                                   QStringLiteral("20061231_1430003114.jpg"),
                                   QStringLiteral("20070102_0000000100.jpg")});
        house_.addCamera({0, 1}, {QStringLiteral("20050101_1200003012.jpg")});
        house_.show(kCamera);
        calendar_.open();
    }

    Calendar calendar_{browser_};
};

TEST_F(CalendarTest, ShowsTheNewestDayFirst)
{
    EXPECT_EQ(calendar_.days().size(), 3U);
    EXPECT_EQ(calendar_.most(), 2);
    EXPECT_EQ(calendar_.chosen(), 2007y / 1 / 2);
    EXPECT_EQ(calendar_.imagesOf(2006y / 12 / 31), 2);
    EXPECT_EQ(calendar_.imagesOf(2007y / 1 / 1), 0);
}

TEST_F(CalendarTest, GoesToTheFirstImageOfADay)
{
    calendar_.goToDay(2006y / 12 / 31);
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(calendar_.hours().at(14).count, 1);
    calendar_.goToHour(14);
    EXPECT_EQ(selected(), 2);
}

TEST_F(CalendarTest, GoesToTheNearestImageWhereThereIsNone)
{
    calendar_.goToDay(2007y / 1 / 1);
    EXPECT_EQ(selected(), 3);
    calendar_.choose(2006y / 12 / 31);
    calendar_.goToHour(23);
    EXPECT_EQ(selected(), 2);
}

TEST_F(CalendarTest, FollowsTheCameraOnShow)
{
    house_.show({0, 1});
    EXPECT_EQ(calendar_.days(), (std::vector<DayCount>{{2005y / 1 / 1, {0, 1}}}));
    calendar_.close();
    house_.show(kCamera);
    EXPECT_EQ(calendar_.days().size(), 1U);
}

TEST_F(CalendarTest, CountsAnImageThatIsStored)
{
    const QSignalSpy counted(&calendar_, &Calendar::counted);
    calendar_.follow(kCamera, QStringLiteral("20070102_1000000110.jpg"));
    calendar_.follow(kCamera, QStringLiteral("20070103_1000000110.jpg"));
    calendar_.follow({0, 1}, QStringLiteral("20070103_1000000110.jpg"));
    calendar_.follow(kCamera, QStringLiteral("20070102_0000000100.jpg")); // listed already
    EXPECT_EQ(counted.count(), 2);
    EXPECT_EQ(calendar_.imagesOf(2007y / 1 / 2), 2);
    EXPECT_EQ(calendar_.imagesOf(2007y / 1 / 3), 1);
}

TEST_F(CalendarTest, CountsWhatARowWithTheSameAddressStores)
{
    house_.capture.addCamera({4, 0}, house_.capture.table.url(kCamera));
    calendar_.follow({4, 0}, QStringLiteral("20070103_1000000110.jpg"));
    EXPECT_EQ(calendar_.imagesOf(2007y / 1 / 3), 1);
}

TEST_F(CalendarTest, DoesNotCountWhatIsStoredForTheCamerasNextAddress)
{
    house_.capture.addCamera(kCamera, QStringLiteral("http://other/a.jpg"));
    calendar_.follow(kCamera, QStringLiteral("20070103_1000000110.jpg"));
    EXPECT_EQ(calendar_.imagesOf(2007y / 1 / 3), 0);
}

TEST_F(CalendarTest, CountsAnImageThatIsStoredInTheHoursOfItsDay)
{
    calendar_.follow(kCamera, QStringLiteral("20070102_1000000110.jpg"));
    calendar_.follow(kCamera, QStringLiteral("20070102_1059000110.jpg"));
    calendar_.follow(kCamera, QStringLiteral("20061231_1000000110.jpg")); // another day
    EXPECT_EQ(calendar_.hours().at(10).count, 2);
    EXPECT_EQ(calendar_.hours().at(0).count, 1);
    calendar_.choose(2006y / 12 / 31);
    EXPECT_EQ(calendar_.hours().at(10).count, 1);
}

// Someone has deleted it in between.
TEST_F(CalendarTest, CountsAnImageOnceThatIsStoredAgain)
{
    calendar_.follow(kCamera, QStringLiteral("20070102_1000000110.jpg"));
    calendar_.follow(kCamera, QStringLiteral("20070102_1000000110.jpg"));
    EXPECT_EQ(calendar_.imagesOf(2007y / 1 / 2), 2);
    EXPECT_EQ(calendar_.hours().at(10).count, 1);
}

TEST_F(CalendarTest, GoesToAnImageThatWasStoredSinceTheListWasRead)
{
    const QString stored = QStringLiteral("20070103_1000000110.jpg");
    house_.capture.putImage(kCamera, stored);
    calendar_.follow(kCamera, stored);
    calendar_.goToDay(2007y / 1 / 3);
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(house_.data.files.file(selected()).name, stored);
    const QString later = QStringLiteral("20070103_1100000110.jpg");
    house_.capture.putImage(kCamera, later);
    calendar_.follow(kCamera, later);
    calendar_.goToHour(11);
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(house_.data.files.file(selected()).name, later);
}

TEST_F(CalendarTest, GoesToTheNearestWhereAStoredImageIsGoneAgain)
{
    calendar_.follow(kCamera, QStringLiteral("20070103_1000000110.jpg"));
    calendar_.goToDay(2007y / 1 / 3);
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(selected(), 3);
}

TEST_F(CalendarTest, GoesToNoImageOfACameraThatIsChosenMeanwhile)
{
    house_.addCamera({0, 1}, {QStringLiteral("20070101_1200003012.jpg")});
    house_.showGroup(0);
    calendar_.goToDay(2006y / 12 / 30);
    browser_.chooseCamera(1);
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(house_.data.state.camera(), (CameraAddress{0, 1}));
    EXPECT_EQ(selected(), 1) << "the newest of its two images";
}

TEST_F(CalendarTest, LeavesTheGroupViewForTheImage)
{
    house_.showGroup(0);
    calendar_.goToDay(2006y / 12 / 30);
    house_.finish();
    QCoreApplication::processEvents(); // it continues once the listing of the images has finished
    EXPECT_EQ(state().view(), View::Camera);
    EXPECT_EQ(selected(), 0);
}

TEST_F(CalendarTest, GoesToTheDayChosenLastThoughTheListIsStillReadForTheOneBefore)
{
    house_.showGroup(0);
    state().cameraChosen(kCamera);
    calendar_.goToDay(2006y / 12 / 30);
    calendar_.goToDay(2006y / 12 / 31);
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(selected(), 1);
}

TEST_F(CalendarTest, LeavesAnImageThatIsChosenWhileTheListIsReadForADay)
{
    const QString stored = QStringLiteral("20070103_1000000110.jpg");
    house_.capture.putImage(kCamera, stored);
    calendar_.follow(kCamera, stored);
    calendar_.goToDay(2007y / 1 / 3);
    browser_.chooseFile(1);
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(selected(), 1) << "chosen after the day";
}

TEST_F(CalendarTest, GoesToTheDayThoughAnImageThatIsFollowedArrivesBeforeItsListIsRead)
{
    browser_.setMode(Mode::Auto, true);
    house_.finish();
    const QString stored = QStringLiteral("20070103_1000000110.jpg");
    house_.capture.putImage(kCamera, stored);
    house_.capture.putImage(kCamera, QStringLiteral("20070104_1000000110.jpg"));
    calendar_.follow(kCamera, stored);
    calendar_.goToDay(2007y / 1 / 3);
    browser_.follow(kCamera);
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(house_.data.files.selected().name, stored);
}

TEST_F(CalendarTest, CountsNoImagesThatWereDeletedForTheirAgeInGroupView)
{
    house_.show(kCamera);
    house_.showGroup(0);
    ASSERT_EQ(calendar_.imagesOf(2006y / 12 / 30), 1);
    house_.remove(kCamera, QStringLiteral("20061230_1200003012.jpg"));
    browser_.showDeletion(kCamera);
    house_.finish();
    EXPECT_EQ(calendar_.imagesOf(2006y / 12 / 30), 0);
    EXPECT_EQ(state().view(), View::Group);
}

TEST_F(CalendarTest, ForgetsADayThatTheGroupViewOvertook)
{
    house_.showGroup(0);
    calendar_.goToDay(2006y / 12 / 30);
    browser_.setMode(Mode::Camera, true);
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    ASSERT_EQ(state().view(), View::Group);
    browser_.setMode(Mode::Camera, false);
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(selected(), 3) << "the newest";
}

TEST_F(CalendarTest, ForgetsADayWhoseListCouldNotBeRead)
{
    QCoreApplication::processEvents(); // what the first listing has left
    const QString stored = QStringLiteral("20070101_1000000110.jpg");
    house_.capture.putImage(kCamera, stored);
    calendar_.follow(kCamera, stored);
    house_.capture.storage.beginEdit();
    calendar_.goToDay(2007y / 1 / 1);
    house_.finish();
    calendar_.goToDay(2006y / 12 / 30);
    ASSERT_EQ(selected(), 0);
    house_.capture.storage.putInForce();
    QCoreApplication::processEvents();
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(selected(), 4) << "the newest: another day was chosen since";
}

TEST_F(CalendarTest, DoesNotCountAnImageWhoseNameTheBrowserDoesNotList)
{
    calendar_.follow(kCamera, QStringLiteral("18991230_0000000714.jpg"));
    EXPECT_EQ(calendar_.days().front().day, 2006y / 12 / 30);
}

TEST_F(CalendarTest, GoesToTheDayOfAPausedFilmThoughItsFolderTakesLongerToRead)
{
    const CameraAddress filmed{2, 0};
    house_.addFullFolder(filmed);
    house_.addImages({3, 0}, 2);
    house_.show(filmed);
    film_.pause();
    state().filmOpened();
    house_.showGroup(3);
    ASSERT_EQ(calendar_.camera(), filmed);
    const StorageFolder &storage = house_.capture.storage;
    const QByteArray folder = QFile::encodeName(storage.native(storage.cameraFolderText(filmed)));
    ASSERT_EQ(::utimensat(AT_FDCWD, folder.constData(), nullptr, 0), 0); // to be read again
    calendar_.goToDay(2006y / 3 / 7);
    house_.finish();
    QCoreApplication::processEvents();
    house_.finish();
    EXPECT_EQ(state().camera(), filmed);
    EXPECT_EQ(selected(), 0);
}

} // namespace
} // namespace velmora::test
