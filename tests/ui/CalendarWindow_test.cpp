// The calendar and the window for films, by mouse and keys.
#include "ui/CalendarWindow.h"

#include "BrowserWindowHouse.h"

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

} // namespace
} // namespace velmora::test
