// The calendar and the window for films, by mouse and keys.
#include "ui/CalendarWindow.h"

#include "BrowserWindowHouse.h"
#include "ui/HeatColour.h"

#include <gtest/gtest.h>

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

TEST_F(CalendarWindowTest, AClickOnAnHourGoesToTheNearestImage)
{
    QWidget &hours = part("calendarHours");
    QTest::mouseClick(&hours, Qt::LeftButton, {}, {hours.width() - 3, 5});
    EXPECT_EQ(house_.browser.shown().files.ListIndex(), kImages - 1);
    EXPECT_TRUE(hours.accessibleDescription().startsWith(QStringLiteral("23 h")));
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

TEST(LineColour, IsSeenOnEveryGround)
{
    for (const auto &[ground, text] : {std::pair(Qt::white, Qt::black), {Qt::black, Qt::white}}) {
        QPalette palette;
        palette.setColor(QPalette::Base, ground);
        palette.setColor(QPalette::Mid, ground);
        palette.setColor(QPalette::Text, text);
        EXPECT_GT(std::abs(lineColour(palette).lightness() - QColor(ground).lightness()), 60);
    }
}

} // namespace
} // namespace velmora::test
