// Dates of the settings file: how they are written, and what is accepted as one.
#include "base/DateText.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

#include <vector>

namespace velmora {
namespace {

using namespace std::chrono_literals;
using namespace std::chrono;

struct DateRow
{
    const char *name;
    QString text;
    WallTime time;
};

WallTime day(int y, unsigned m, unsigned d)
{
    return local_days{std::chrono::year{y} / static_cast<int>(m) / static_cast<int>(d)};
}

const std::vector<DateRow> &dates()
{
    static const std::vector<DateRow> rows = {
        {"full", QStringLiteral("07/03/2006 14:05:09"), day(2006, 3, 7) + 14h + 5min + 9s},
        {"one digit", QStringLiteral("7/3/2006 4:5:9"), day(2006, 3, 7) + 4h + 5min + 9s},
        {"no time", QStringLiteral("07/03/2006"), day(2006, 3, 7)},
        {"no seconds", QStringLiteral("07/03/2006 14:05"), day(2006, 3, 7) + 14h + 5min},
        {"blanks around", QStringLiteral("  07/03/2006   14:05:09 "),
         day(2006, 3, 7) + 14h + 5min + 9s},
        {"leap day", QStringLiteral("29/02/2004"), day(2004, 2, 29)},
        {"leap day of a fourth century", QStringLiteral("29/02/2000"), day(2000, 2, 29)},
        {"last second", QStringLiteral("31/12/1999 23:59:59"),
         day(1999, 12, 31) + 23h + 59min + 59s},
        {"first year", QStringLiteral("01/01/100"), day(100, 1, 1)},
        {"last year", QStringLiteral("31/12/9999 23:59:59"), day(9999, 12, 31) + 23h + 59min + 59s},
        {"zero date", QStringLiteral("30/12/1899 00:00:00"), kZeroDate},
        {"before the zero date", QStringLiteral("01/02/1850 01:02:03"),
         day(1850, 2, 1) + 1h + 2min + 3s},
    };
    return rows;
}

const std::vector<DateRow> &noDates()
{
    static const std::vector<DateRow> rows = {
        {"empty", QString(), {}},
        {"blanks", QStringLiteral("   "), {}},
        {"words", QStringLiteral("yesterday"), {}},
        {"time alone", QStringLiteral("14:05:09"), {}},
        {"29 February of a common year", QStringLiteral("29/02/2005"), {}},
        {"29 February of a century", QStringLiteral("29/02/1900"), {}},
        {"31 April", QStringLiteral("31/04/2006"), {}},
        {"day 0", QStringLiteral("00/04/2006"), {}},
        {"month 0", QStringLiteral("01/00/2006"), {}},
        {"month 13", QStringLiteral("01/13/2006"), {}},
        {"month first", QStringLiteral("03/27/2006"), {}},
        {"year too early", QStringLiteral("01/01/99"), {}},
        {"year of five digits", QStringLiteral("01/01/10000"), {}},
        {"day of three digits", QStringLiteral("001/01/2006"), {}},
        {"two fields", QStringLiteral("01/2006"), {}},
        {"four fields", QStringLiteral("01/01/2006/1"), {}},
        {"empty field", QStringLiteral("01//2006"), {}},
        {"sign", QStringLiteral("+1/01/2006"), {}},
        {"dashes", QStringLiteral("01-01-2006"), {}},
        {"hour 24", QStringLiteral("01/01/2006 24:00:00"), {}},
        {"minute 60", QStringLiteral("01/01/2006 10:60:00"), {}},
        {"second 60", QStringLiteral("01/01/2006 10:00:60"), {}},
        {"hour alone", QStringLiteral("01/01/2006 10"), {}},
        {"four time fields", QStringLiteral("01/01/2006 10:00:00:00"), {}},
        {"text behind", QStringLiteral("01/01/2006 10:00:00 GMT"), {}},
        {"digits of another script", QStringLiteral("\u0661/01/2006"), {}},
        {"tab between", QStringLiteral("01/01/2006\t10:00"), {}},
    };
    return rows;
}

TEST(DateText, ReadsDatesDayFirst)
{
    for (const DateRow &row : dates()) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(dateFromText(row.text) == row.time);
    }
}

TEST(DateText, RefusesWhatIsNoDate)
{
    for (const DateRow &row : noDates()) {
        SCOPED_TRACE(row.name);
        EXPECT_FALSE(dateFromText(row.text).has_value());
    }
}

TEST(DateText, ReadsBackWhatItWrites)
{
    for (const DateRow &row : dates()) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(dateFromText(dateText(row.time)) == row.time);
    }
}

TEST(DateText, WritesAllFieldsWithLeadingZeros)
{
    EXPECT_EQ(dateText(day(2006, 3, 7) + 4h + 5min + 9s), QStringLiteral("07/03/2006 04:05:09"));
    EXPECT_EQ(dateText(day(100, 1, 1)), QStringLiteral("01/01/0100 00:00:00"));
    EXPECT_EQ(dateText(kZeroDate), QStringLiteral("30/12/1899 00:00:00"));
}

TEST(DateText, TakesATimeBeforeTheEpochApart)
{
    const WallFields at = wallFields(day(1969, 12, 31) + 23h + 59min + 58s);
    EXPECT_EQ(at.year, 1969);
    EXPECT_EQ(at.month, 12);
    EXPECT_EQ(at.day, 31);
    EXPECT_EQ(at.hour, 23);
    EXPECT_EQ(at.minute, 59);
    EXPECT_EQ(at.second, 58);
}

TEST(DateText, HasADayAndATime)
{
    EXPECT_EQ(dayText(day(2006, 3, 7) + 4h + 5min + 9s), QStringLiteral("07/03/2006"));
    EXPECT_EQ(isoDayText(day(206, 3, 7) + 4h + 5min + 9s), QStringLiteral("0206-03-07"));
    EXPECT_EQ(timeText(day(2006, 3, 7) + 4h + 5min + 9s), QStringLiteral("04:05:09"));
    EXPECT_EQ(timeText(100, 5, 9), QStringLiteral("100:05:09"));
}

TEST(DateText, HasAFormForReports)
{
    EXPECT_EQ(universalTimeText(day(2006, 3, 7) + 4h + 5min + 9s),
              QStringLiteral("2006-03-07T04:05:09Z"));
}

TEST(DateText, PadsToTwoDigits)
{
    EXPECT_EQ(twoDigits(0), QStringLiteral("00"));
    EXPECT_EQ(twoDigits(9), QStringLiteral("09"));
    EXPECT_EQ(twoDigits(10), QStringLiteral("10"));
    EXPECT_EQ(twoDigits(123), QStringLiteral("123"));
}

} // namespace
} // namespace velmora
