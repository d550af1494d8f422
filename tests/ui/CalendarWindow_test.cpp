// The calendar and the window for films, by mouse and keys.
#include "ui/CalendarWindow.h"

#include "BrowserWindowHouse.h"
#include "ui/DayNumbers.h"
#include "ui/HeatColour.h"
#include "ui/LateColour.h"

#include <QAbstractScrollArea>
#include <QHelpEvent>
#include <QToolTip>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace velmora::test {
namespace {

constexpr int kImages = 30;

class CalendarWindowTest : public testing::Test
{
protected:
    CalendarWindowTest()
    {
        house_.openOn(kImages);
        window_.present();
    }

    QWidget &part(const char *name) { return *window_.findChild<QWidget *>(QLatin1String(name)); }

    BrowserWindowHouse house_;
    Calendar calendar_{house_.browser};
    CalendarWindow window_{calendar_};
};

TEST_F(CalendarWindowTest, ItsPartsHaveNamesThatPeopleUnderstand)
{
    EXPECT_EQ(window_.objectName(), QStringLiteral("calendar"));
    for (const char *const name : {"calendarDays", "calendarHours", "calendarDay"}) {
        EXPECT_FALSE(part(name).accessibleName().isEmpty()) << name;
    }
    EXPECT_TRUE(part("calendarDays").accessibleDescription().contains(QStringLiteral("30")));
}

TEST_F(CalendarWindowTest, EnterGoesToTheFirstImageOfTheDay)
{
    house_.browser.chooseFile(kImages - 1);
    QTest::keyClick(&part("calendarDays"), Qt::Key_Return);
    EXPECT_EQ(house_.browser.shown().files.ListIndex(), 0);
}

// The middle of a day of the first month shown, in the viewport.
QPoint placeOfDay(const QAbstractScrollArea &map, int day)
{
    constexpr int kDays = 31;
    const QFontMetrics metrics = map.fontMetrics();
    const int label = metrics.horizontalAdvance(QStringLiteral("0000-00")) + 8;
    const int column = (map.viewport()->width() - label) / kDays;
    return {label + (day - 1) * column + column / 2, metrics.height() / 2};
}

TEST_F(CalendarWindowTest, AClickBelowTheNumberOfADayGoesToItsFirstOrTheNearestImage)
{
    auto &map = dynamic_cast<QAbstractScrollArea &>(part("calendarDays"));
    const QRect numbers = map.findChild<DayNumbers *>()->geometry();
    EXPECT_EQ(numbers.bottom() + 1, map.viewport()->y());
    EXPECT_EQ(numbers.width(), map.viewport()->width());
    for (const auto &[day, index] : {std::pair(8, kImages - 1), {7, 0}, {8, kImages - 1}, {6, 0}}) {
        QTest::mouseClick(map.viewport(), Qt::LeftButton, {}, placeOfDay(map, day));
        EXPECT_EQ(house_.browser.shown().files.ListIndex(), index) << day;
        EXPECT_TRUE(map.accessibleDescription().contains(QString::number(day) + u' '));
    }
}

TEST_F(CalendarWindowTest, AClickOnAnHourGoesToTheNearestImage)
{
    QWidget &hours = part("calendarHours");
    QTest::mouseClick(&hours, Qt::LeftButton, {}, {hours.width() - 3, 5});
    EXPECT_EQ(house_.browser.shown().files.ListIndex(), kImages - 1);
    EXPECT_TRUE(hours.accessibleDescription().startsWith(QStringLiteral("23 h")));
}

TEST_F(CalendarWindowTest, AnHourIsMeantOnlyIfItIsReleasedWhereItWasPressed)
{
    QWidget &hours = part("calendarHours");
    house_.browser.chooseFile(5);
    QTest::mousePress(&hours, Qt::LeftButton, {}, {3, 5});
    QTest::mouseRelease(&hours, Qt::LeftButton, {}, {hours.width() - 3, 5});
    EXPECT_EQ(house_.browser.shown().files.ListIndex(), 5);
    EXPECT_TRUE(hours.accessibleDescription().startsWith(QStringLiteral("12 h")));
}

TEST_F(CalendarWindowTest, TheHourPressedIsNotThatOfAnotherCamerasDay)
{
    house_.addImages({0, 1}, kImages);
    QWidget &hours = part("calendarHours");
    QTest::mousePress(&hours, Qt::LeftButton, {}, {3, 5});
    house_.browser.chooseCamera(1); // as the scan does
    house_.settle();
    ASSERT_EQ(house_.browser.shown().files.ListIndex(), kImages - 1);
    QTest::mouseRelease(&hours, Qt::LeftButton, {}, {3, 5});
    EXPECT_EQ(house_.browser.shown().files.ListIndex(), kImages - 1);
}

TEST_F(CalendarWindowTest, TheTipOfTheHoursIsThatOfTheHourUnderThePointer)
{
    QWidget &hours = part("calendarHours");
    const QPoint last(hours.width() - 3, 5);
    QHelpEvent help(QEvent::ToolTip, last, hours.mapToGlobal(last));
    QApplication::sendEvent(&hours, &help);
    EXPECT_TRUE(QToolTip::text().startsWith(QStringLiteral("23 h:")))
        << QToolTip::text().toStdString();
    QToolTip::hideText();
}

// Widths of what is drawn side by side, with less than a narrow gap within.
QList<int> widthsOfInk(const QImage &strip)
{
    constexpr int kGap = 3;
    QList<int> widths;
    int last = -kGap;
    for (int x = 0; x < strip.width(); ++x) {
        bool isInk = false;
        for (int y = 0; y < strip.height(); ++y) {
            isInk = isInk || qGray(strip.pixel(x, y)) < 230;
        }
        if (isInk) {
            if (x - last >= kGap) {
                widths.append(0);
            }
            widths.last() += widths.last() == 0 ? 1 : x - last;
            last = x;
        }
    }
    return widths;
}

TEST_F(CalendarWindowTest, TheNumbersOfTheHoursStandApart)
{
    QWidget &hours = part("calendarHours");
    const QFontMetrics letters = hours.fontMetrics();
    for (const int width : {800, 500, 350, 242, 150}) {
        hours.resize(width, hours.height());
        const QImage all = hours.grab().toImage();
        const QList<int> widths = widthsOfInk(
            all.copy(0, all.height() - letters.height(), all.width(), letters.height()));
        EXPECT_GE(widths.size(), 2) << width;
        for (const int number : widths) {
            EXPECT_LE(number, letters.horizontalAdvance(QStringLiteral("00"))) << width;
        }
    }
}

TEST_F(CalendarWindowTest, ShiftChoosesSeveralDays)
{
    house_.house.putImage({0, 0}, QStringLiteral("20060310_1200000101.jpg"));
    house_.browser.chooseCameraAgain();
    house_.settle();
    QList<DayRange> ranges;
    QObject::connect(&calendar_, &Calendar::rangeChosen, &calendar_,
                     [&](const DayRange &range) { ranges.append(range); });
    QTest::keyClick(&part("calendarDays"), Qt::Key_Home);
    QTest::keyClick(&part("calendarDays"), Qt::Key_End, Qt::ShiftModifier);
    ASSERT_EQ(ranges.size(), 1);
    using namespace std::chrono;
    EXPECT_EQ(ranges.first().first, (year{2006} / 3 / 7));
    EXPECT_EQ(ranges.first().last, (year{2006} / 3 / 10));
    const QString told = part("calendarDays").accessibleDescription();
    EXPECT_TRUE(told.contains(QStringLiteral("31 images"))) << told.toStdString();
    QTest::keyClick(&part("calendarDays"), Qt::Key_Left);
    EXPECT_FALSE(calendar_.range());
}

TEST_F(CalendarWindowTest, KeepsTheChosenDaysWhenItIsRaised)
{
    using namespace std::chrono;
    calendar_.choose(year{2006} / 3 / 7);
    calendar_.extendTo(year{2006} / 3 / 9);
    window_.present();
    ASSERT_TRUE(calendar_.range());
    EXPECT_EQ(calendar_.range()->last, (year{2006} / 3 / 9));
    window_.close();
    window_.present();
    EXPECT_FALSE(calendar_.range());
}

TEST_F(CalendarWindowTest, ADayLeadsToTheCameraOfAPausedFilmFromAnotherGroup)
{
    house_.addImages({1, 0}, 3);
    house_.click(QStringLiteral("bFilm"));
    house_.film.PauseCine_MouseDown();
    house_.tick(QStringLiteral("cCamera"));
    house_.clickRow(QStringLiteral("lstGroupe"), 1);
    ASSERT_EQ(house_.browser.shown().files.camera(), (CameraAddress{0, 0}));
    QTest::keyClick(&part("calendarDays"), Qt::Key_Return);
    house_.settle();
    EXPECT_EQ(house_.browser.shown().state.camera(), (CameraAddress{0, 0}));
    EXPECT_EQ(house_.browser.shown().state.view(), View::Camera);
    EXPECT_EQ(house_.browser.shown().files.ListIndex(), 0);
    EXPECT_EQ(house_.shown(0), storedName(0));
}

// A camera that is in two groups.
TEST_F(CalendarWindowTest, ADayLeadsToTheCameraOnShowThoughAnotherHasItsFolder)
{
    house_.house.addCamera({1, 0}, cameraUrl({0, 0}));
    house_.tick(QStringLiteral("cCamera"));
    for (const bool isOverFilm : {false, true}) {
        house_.clickRow(QStringLiteral("lstGroupe"), 0);
        if (isOverFilm) {
            house_.click(QStringLiteral("bFilm"));
            house_.film.PauseCine_MouseDown();
        }
        house_.clickRow(QStringLiteral("lstGroupe"), 1);
        house_.filmWindow.close();
        house_.settle();
        QTest::keyClick(&part("calendarDays"), Qt::Key_Return);
        house_.settle();
        EXPECT_EQ(house_.browser.shown().state.camera(), (CameraAddress{1, 0})) << isOverFilm;
        house_.tick(QStringLiteral("cCamera"));
    }
}

/// Black on white, and white on black.
std::array<QPalette, 2> plainPalettes()
{
    std::array<QPalette, 2> palettes;
    for (std::size_t i = 0; i < palettes.size(); ++i) {
        const QColor ground = i == 0 ? Qt::white : Qt::black;
        palettes.at(i).setColor(QPalette::Base, ground);
        palettes.at(i).setColor(QPalette::Mid, ground);
        palettes.at(i).setColor(QPalette::Text, i == 0 ? Qt::black : Qt::white);
    }
    return palettes;
}

/// Of light that is seen, 0 to 1, as sRGB defines it.
double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const auto [less, more] = std::minmax({luminance(a), luminance(b)});
    return (more + 0.05) / (less + 0.05);
}

TEST(LineColour, IsSeenOnEveryGround)
{
    for (const QPalette &palette : plainPalettes()) {
        const QColor ground = palette.color(QPalette::Base);
        EXPECT_GT(std::abs(lineColour(palette).lightness() - ground.lightness()), 60);
    }
}

// 4.5 is what people with weak eyes need to read a text. Pure red has 4.0 on white.
TEST(LateColour, CanBeReadOnEveryGroundAndIsRed)
{
    for (const QPalette &palette : plainPalettes()) {
        const QColor late = lateColour(palette);
        EXPECT_GT(contrast(late, palette.color(QPalette::Base)), 4.5);
        EXPECT_GT(late.red(), 2 * late.green());
    }
}

TEST_F(CalendarWindowTest, TheDayPressedIsMeantThoughTheListChangesBeforeTheRelease)
{
    house_.house.putImage({0, 0}, QStringLiteral("20060310_1200000101.jpg"));
    house_.browser.chooseCameraAgain();
    house_.settle();
    auto &map = dynamic_cast<QAbstractScrollArea &>(part("calendarDays"));
    QTest::mousePress(map.viewport(), Qt::LeftButton, {}, placeOfDay(map, 7));
    house_.house.putImage({0, 0}, QStringLiteral("20060101_1200000101.jpg")); // by an import
    house_.browser.chooseCameraAgain();
    house_.settle();
    QTest::mouseRelease(map.viewport(), Qt::LeftButton, {}, placeOfDay(map, 7));
    using namespace std::chrono;
    EXPECT_EQ(calendar_.chosen(), (year{2006} / 3 / 7));
}

TEST_F(CalendarWindowTest, FollowsTheCameraOnShowAfterItWasMinimised)
{
    house_.addImages({0, 1}, 3);
    window_.showMinimized();
    QCoreApplication::processEvents();
    window_.showNormal(); // as a window manager does it
    QCoreApplication::processEvents();
    ASSERT_TRUE(window_.isVisible());
    house_.clickRow(QStringLiteral("lstCam"), 1);
    using namespace std::chrono;
    EXPECT_EQ(calendar_.imagesOf(year{2006} / 3 / 7), 3);
}

TEST_F(CalendarWindowTest, KeepsTheChosenDaysWhenItIsMinimisedAndRaised)
{
    house_.house.putImage({0, 0}, QStringLiteral("20060310_1200000101.jpg"));
    house_.browser.chooseCameraAgain();
    house_.settle();
    QTest::keyClick(&part("calendarDays"), Qt::Key_Home);
    QTest::keyClick(&part("calendarDays"), Qt::Key_End, Qt::ShiftModifier);
    ASSERT_TRUE(calendar_.range());
    window_.showMinimized();
    QCoreApplication::processEvents();
    window_.present();
    EXPECT_TRUE(calendar_.range());
}

} // namespace
} // namespace velmora::test
