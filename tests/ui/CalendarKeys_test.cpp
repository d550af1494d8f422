// The calendar by keys alone, and what it says of the day under the pointer.
#include "BrowserWindowHouse.h"
#include "ui/CalendarWindow.h"

#include <QAbstractScrollArea>
#include <QHelpEvent>
#include <QToolTip>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::year_month_day;

constexpr int kImages = 30; // of 7 March 2006

class CalendarKeys : public testing::Test
{
protected:
    CalendarKeys()
    {
        house_.openOn(kImages);
        for (const char *const name : {"20050131_1200003112.jpg", "20070310_2345001023.jpg"}) {
            house_.house.putImage({0, 0}, QLatin1String(name));
        }
        house_.browser.chooseCameraAgain();
        house_.settle();
        window_.present();
    }

    QWidget &part(const char *name) { return *window_.findChild<QWidget *>(QLatin1String(name)); }

    [[nodiscard]] int selected() { return house_.browser.shown().files.ListIndex(); }

    BrowserWindowHouse house_;
    Calendar calendar_{house_.browser};
    CalendarWindow window_{calendar_};
};

struct KeyRow
{
    const char *name;
    Qt::Key key;
    year_month_day from;
    year_month_day to;
};

void PrintTo(const KeyRow &row, std::ostream *out)
{
    *out << row.name;
}

class CalendarDayKey : public CalendarKeys, public testing::WithParamInterface<KeyRow>
{
};

TEST_P(CalendarDayKey, LeadsToTheDay)
{
    calendar_.choose(GetParam().from);
    const int before = selected();
    QTest::keyClick(&part("calendarDays"), GetParam().key);
    EXPECT_EQ(calendar_.chosen(), GetParam().to);
    EXPECT_EQ(selected(), before);
}

INSTANTIATE_TEST_SUITE_P(
    Calendar, CalendarDayKey,
    testing::Values(KeyRow{"DayBefore", Qt::Key_Left, 2006y / 3 / 1, 2006y / 2 / 28},
                    KeyRow{"DayAfter", Qt::Key_Right, 2006y / 12 / 31, 2007y / 1 / 1},
                    KeyRow{"MonthBefore", Qt::Key_Up, 2006y / 4 / 15, 2006y / 3 / 15},
                    KeyRow{"ShorterMonthBefore", Qt::Key_Up, 2006y / 3 / 31, 2006y / 2 / 28},
                    KeyRow{"ShorterMonthAfter", Qt::Key_Down, 2006y / 5 / 31, 2006y / 6 / 30},
                    KeyRow{"YearBefore", Qt::Key_PageUp, 2006y / 3 / 7, 2005y / 3 / 7},
                    KeyRow{"YearAfter", Qt::Key_PageDown, 2006y / 2 / 7, 2007y / 2 / 7},
                    KeyRow{"NotBeforeTheFirst", Qt::Key_PageUp, 2005y / 6 / 1, 2005y / 1 / 31},
                    KeyRow{"NotAfterTheLast", Qt::Key_Down, 2007y / 3 / 1, 2007y / 3 / 10},
                    KeyRow{"First", Qt::Key_Home, 2006y / 3 / 7, 2005y / 1 / 31},
                    KeyRow{"Last", Qt::Key_End, 2006y / 3 / 7, 2007y / 3 / 10},
                    KeyRow{"NoOther", Qt::Key_A, 2006y / 3 / 7, 2006y / 3 / 7}),
    [](const auto &row) { return row.param.name; });

TEST_F(CalendarKeys, SpaceGoesToTheFirstImageOfTheDay)
{
    calendar_.choose(2006y / 3 / 7);
    QTest::keyClick(&part("calendarDays"), Qt::Key_Space);
    EXPECT_EQ(selected(), 1);
}

TEST_F(CalendarKeys, AnHourIsChosenWithinItsDayAndEnterGoesThere)
{
    calendar_.choose(2007y / 3 / 10);
    house_.browser.chooseFile(0);
    QWidget &hours = part("calendarHours");
    const auto hour = [&hours] { return hours.accessibleDescription().section(u' ', 0, 0); };
    for (int i = 0; i < 30; ++i) {
        QTest::keyClick(&hours, Qt::Key_Left);
    }
    EXPECT_EQ(hour(), QStringLiteral("0"));
    for (int i = 0; i < 30; ++i) {
        QTest::keyClick(&hours, Qt::Key_Right);
    }
    EXPECT_EQ(hour(), QStringLiteral("23"));
    QTest::keyClick(&hours, Qt::Key_B);
    EXPECT_EQ(hour(), QStringLiteral("23"));
    EXPECT_EQ(selected(), 0);
    QTest::keyClick(&hours, Qt::Key_Return);
    EXPECT_EQ(selected(), kImages + 1);
}

TEST_F(CalendarKeys, TheHourThatTheKeysMeanIsFramed)
{
    QWidget &hours = part("calendarHours");
    QImage without(hours.size(), QImage::Format_RGB32);
    hours.render(&without);
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    hours.setFocus();
    ASSERT_TRUE(hours.hasFocus());
    QImage with(hours.size(), QImage::Format_RGB32);
    hours.render(&with);
    EXPECT_NE(with, without);
}

// Its frame, in colours of a dark desktop, where the highlight is dark too.
TEST_F(CalendarKeys, TheFramedHourIsSeenOnADarkGround)
{
    constexpr int kHour = 12;
    QWidget &hours = part("calendarHours");
    QPalette dark = hours.palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(238, 238, 236));
    dark.setColor(QPalette::Highlight, QColor(21, 83, 158));
    hours.setPalette(dark);
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    hours.setFocus();
    QImage shown(hours.size(), QImage::Format_RGB32);
    hours.render(&shown);
    const int left = kHour * hours.width() / 24;
    EXPECT_GT(qGray(shown.pixel(left, 10)), 120);
    int brightest = 0;
    for (int x = left + 2; x < left + hours.width() / 24 - 2; ++x) {
        for (int y = hours.height() - hours.fontMetrics().height() + 2; y < hours.height() - 2;
             ++y) {
            brightest = std::max(brightest, qGray(shown.pixel(x, y)));
        }
    }
    EXPECT_GT(brightest, 120);
}

TEST_F(CalendarKeys, NothingHappensWithoutImages)
{
    house_.browser.chooseCamera(5);
    house_.settle();
    ASSERT_TRUE(calendar_.days().empty());
    QTest::keyClick(&part("calendarDays"), Qt::Key_Return);
    QTest::keyClick(&part("calendarDays"), Qt::Key_Down);
    EXPECT_FALSE(calendar_.chosen());
    QImage picture(part("calendarDays").size(), QImage::Format_RGB32);
    part("calendarDays").render(&picture); // says that there are none
    EXPECT_FALSE(picture.isNull());
}

TEST_F(CalendarKeys, TheTipOfADayTellsItsImages)
{
    auto &map = dynamic_cast<QAbstractScrollArea &>(part("calendarDays"));
    const int label = map.fontMetrics().horizontalAdvance(QStringLiteral("0000-00")) + 8;
    const int column = (map.viewport()->width() - label) / 31;
    calendar_.choose(2005y / 1 / 31); // which shows its line at the top
    const QPoint place(label + 30 * column + column / 2, 5);
    QHelpEvent help(QEvent::ToolTip, place, map.viewport()->mapToGlobal(place));
    QApplication::sendEvent(map.viewport(), &help);
    const QString text = QToolTip::text();
    EXPECT_TRUE(text.contains(QStringLiteral("31 January 2005"))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral(": 1 image"))) << text.toStdString();
    QToolTip::hideText();
}

} // namespace
} // namespace velmora::test
