// Check boxes, search boxes and the film button of the browser's window.
#include "BrowserWindowHouse.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

const QString kAuto = QStringLiteral("cAuto");
const QString kCamera = QStringLiteral("cCamera");
const QString kScan = QStringLiteral("cScan");
const QString kDate = QStringLiteral("lDate");
const QString kTime = QStringLiteral("lTime");
const QString kZoom = QStringLiteral("ZoomImage");

class PlancheModes : public testing::Test
{
protected:
    bool isOn(const QString &box) { return house_.find<QCheckBox>(box).isChecked(); }

    QString box(const QString &name) { return house_.find<QLineEdit>(name).text(); }

    bool isVisible(const QString &control) { return house_.find<QWidget>(control).isVisible(); }

    QString position() { return house_.text(QStringLiteral("NbI")); }

    bool scans() { return house_.find<QTimer>(QStringLiteral("TimerScan")).isActive(); }

    void enlarge()
    {
        house_.press(QStringLiteral("Vue0"), Qt::RightButton);
        ASSERT_TRUE(isVisible(kZoom));
    }

    BrowserWindowHouse house_;
};

TEST_F(PlancheModes, StoredModesAreTakenOver)
{
    house_.house.settings.write(u"Control", u"Auto", 1);
    house_.house.settings.write(u"Control", u"Camera", 1);
    house_.house.settings.write(u"Control", u"Scan", 1);
    house_.openOn(3);
    EXPECT_TRUE(isOn(kAuto));
    EXPECT_TRUE(isOn(kCamera));
    EXPECT_TRUE(isOn(kScan));
    EXPECT_TRUE(scans());
    EXPECT_TRUE(isVisible(QStringLiteral("LstDirCam")));
}

TEST_F(PlancheModes, EachClickIsStored)
{
    house_.openOn(3);

    const struct
    {
        QString box;
        QString key;
    } rows[] = {{kAuto, QStringLiteral("Auto")},
                {kCamera, QStringLiteral("Camera")},
                {kScan, QStringLiteral("Scan")}};

    for (const auto &row : rows) {
        SCOPED_TRACE(row.key.toStdString());
        house_.tick(row.box);
        EXPECT_TRUE(isOn(row.box));
        EXPECT_EQ(house_.stored(row.key), QStringLiteral("1"));
        house_.tick(row.box);
        EXPECT_FALSE(isOn(row.box));
        EXPECT_EQ(house_.stored(row.key), QStringLiteral("0"));
    }
}

TEST_F(PlancheModes, TheScanTimerRunsWhileTheBoxIsTicked)
{
    house_.openOn(3);
    EXPECT_FALSE(scans());
    house_.tick(kScan);
    EXPECT_TRUE(scans());
    house_.tick(kScan);
    EXPECT_FALSE(scans());
}

TEST_F(PlancheModes, TheScanWalksToTheNextCamera)
{
    house_.addImages({0, 0}, 3);
    house_.addImages({0, 1}, 2);
    house_.open();
    house_.tick(kScan);
    house_.fire(QStringLiteral("TimerScan"));
    house_.settle();
    EXPECT_EQ(position(), QStringLiteral("2 / 2"));
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("1"));
}

TEST_F(PlancheModes, TheScanShowsTheNewestImageOfARowWithTheSameAddress)
{
    house_.openOn(12);
    house_.house.addCamera({0, 1}, cameraUrl({0, 0}));
    house_.tick(kScan);
    house_.clickRow(QStringLiteral("LstDir"), 3);
    house_.fire(QStringLiteral("TimerScan"));
    house_.settle();
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("1"));
    EXPECT_EQ(position(), QStringLiteral("12 / 12"));
}

TEST_F(PlancheModes, TheScanEndsWhenTheWindowIsUnloaded)
{
    house_.openOn(3);
    house_.tick(kScan);
    house_.window.unload();
    EXPECT_FALSE(scans());
    EXPECT_EQ(house_.stored(u"Scan"), QStringLiteral("1"));
}

TEST_F(PlancheModes, ShowsNowWhenItOpens)
{
    house_.openOn(3);
    EXPECT_EQ(box(kDate), QStringLiteral("07/03/2006"));
    EXPECT_EQ(box(kTime), QStringLiteral("14:05:09"));
    EXPECT_TRUE(house_.find<QWidget>(kDate).isEnabled());
}

TEST_F(PlancheModes, GroupViewShowsNowAndTakesNoSearch)
{
    house_.openOn(3);
    house_.retype(kDate, QStringLiteral("01/01/2005"));
    house_.clock.advance(std::chrono::seconds{61});
    house_.tick(kCamera);
    EXPECT_FALSE(house_.find<QWidget>(kDate).isEnabled());
    EXPECT_FALSE(house_.find<QWidget>(kTime).isEnabled());
    EXPECT_EQ(box(kDate), QStringLiteral("07/03/2006"));
    EXPECT_EQ(box(kTime), QStringLiteral("14:06:10"));
    house_.tick(kCamera);
    EXPECT_TRUE(house_.find<QWidget>(kDate).isEnabled());
    EXPECT_TRUE(house_.find<QWidget>(kTime).isEnabled());
}

TEST_F(PlancheModes, EnterInTheDateFindsTheMoment)
{
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("00:00:07"));
    house_.retype(kDate, QStringLiteral("7/3/2006"));
    house_.key(kDate, Qt::Key_Return);
    EXPECT_EQ(position(), QStringLiteral("8 / 30"));
    EXPECT_EQ(house_.framed(), QList<int>{4});
}

TEST_F(PlancheModes, EnterInTheTimeFindsTheMoment)
{
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("00:00:12"));
    house_.key(kTime, Qt::Key_Enter);
    EXPECT_EQ(position(), QStringLiteral("13 / 30"));
}

TEST_F(PlancheModes, LeavingAChangedBoxSearches)
{
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("00:00:12"));
    house_.find<QWidget>(QStringLiteral("LstDir")).setFocus();
    house_.settle();
    EXPECT_EQ(position(), QStringLiteral("13 / 30"));
}

TEST_F(PlancheModes, LeavingAnUnchangedBoxDoesNotSearch)
{
    house_.openOn(30);
    house_.house.putImage({0, 0}, QStringLiteral("20060307_1405090714.jpg"), pictureBytes(Qt::red));
    house_.keyInWindow(Qt::Key_F5);
    house_.clickRow(QStringLiteral("LstDir"), 3);
    house_.find<QWidget>(kTime).setFocus();
    house_.find<QWidget>(QStringLiteral("LstDir")).setFocus();
    house_.settle();
    EXPECT_EQ(position(), QStringLiteral("4 / 31"));
}

TEST_F(PlancheModes, LeavingABoxAfterEnterDoesNotSearchAgain)
{
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("00:00:12"));
    house_.key(kTime, Qt::Key_Return);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Home);
    house_.find<QWidget>(kTime).setFocus();
    house_.find<QWidget>(QStringLiteral("LstDir")).setFocus();
    house_.settle();
    EXPECT_EQ(position(), QStringLiteral("1 / 30"));
}

TEST_F(PlancheModes, WithoutThatMomentTheFirstImageOfTheDayIsFound)
{
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("23:59"));
    house_.key(kTime, Qt::Key_Return);
    EXPECT_EQ(position(), QStringLiteral("1 / 30"));
}

TEST_F(PlancheModes, AnInvalidDateFindsNothing)
{
    house_.openOn(30);
    house_.retype(kDate, QStringLiteral("31/02/2006"));
    house_.key(kDate, Qt::Key_Return);
    EXPECT_EQ(position(), QStringLiteral("30 / 30"));
}

TEST_F(PlancheModes, PressingGroupOrScanPutsTheEnlargedImageAway)
{
    house_.openOn(3);
    for (const QString &mode : {kCamera, kScan}) {
        enlarge();
        house_.press(mode, Qt::LeftButton);
        EXPECT_FALSE(isVisible(kZoom)) << mode.toStdString();
        QTest::mouseRelease(&house_.find<QWidget>(mode), Qt::LeftButton, {}, QPoint(-3, -3));
    }
}

TEST_F(PlancheModes, PressingAutoKeepsTheEnlargedImage)
{
    house_.openOn(3);
    enlarge();
    house_.press(kAuto, Qt::LeftButton);
    EXPECT_TRUE(isVisible(kZoom));
}

TEST_F(PlancheModes, WithAutoANewImageIsShownAtOnce)
{
    house_.openOn(3);
    house_.tick(kAuto);
    house_.clickRow(QStringLiteral("LstDir"), 0);
    house_.source.answer(
        cameraUrl({0, 0}),
        {pictureBytes(Qt::red), QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"), {}, {}, {}});
    house_.house.load({0, 0});
    house_.settle();
    EXPECT_EQ(position(), QStringLiteral("4 / 4"));
    EXPECT_EQ(house_.framed(), QList<int>{3});
    EXPECT_TRUE(house_.cell(3).holdsPicture());
}

TEST_F(PlancheModes, WithoutAutoTheSheetStaysAsItIs)
{
    house_.openOn(3);
    house_.source.answer(
        cameraUrl({0, 0}),
        {pictureBytes(Qt::red), QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"), {}, {}, {}});
    house_.house.load({0, 0});
    house_.settle();
    EXPECT_EQ(position(), QStringLiteral("3 / 3"));
}

TEST_F(PlancheModes, TheFilmButtonOpensAndClosesTheFilmWhenPressed)
{
    house_.openOn(12);
    house_.press(QStringLiteral("bFilm"), Qt::LeftButton);
    EXPECT_TRUE(house_.filmWindow.isVisible());
    EXPECT_TRUE(house_.data.state.CineActif());
    QTest::mouseRelease(&house_.find<QWidget>(QStringLiteral("bFilm")), Qt::LeftButton);
    house_.press(QStringLiteral("bFilm"), Qt::LeftButton);
    EXPECT_FALSE(house_.filmWindow.isVisible());
    EXPECT_FALSE(house_.data.state.CineActif());
}

TEST_F(PlancheModes, TheScanStandsStillWhileTheFilmRuns)
{
    house_.addImages({0, 1}, 2);
    house_.openOn(12);
    house_.tick(kScan);
    house_.click(QStringLiteral("bFilm"));
    house_.fire(QStringLiteral("TimerScan"));
    house_.settle();
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("0"));
}

} // namespace
} // namespace velmora::test
