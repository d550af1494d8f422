// Dates of HTTP headers: which texts are dates, and what they become.
#include "capture/HttpDate.h"

#include "base/DateText.h"
#include "support/Printers.h"

#include <QScopeGuard>

#include <gtest/gtest.h>

#include <ctime>

namespace velmora::test {
namespace {

struct DateRow
{
    const char *name;
    QString header;
    QString date; // day first
};

void PrintTo(const DateRow &row, std::ostream *out)
{
    *out << row.header.toStdString();
}

class CalculDateReads : public testing::TestWithParam<DateRow>
{
};

TEST_P(CalculDateReads, TheDayFirstDate)
{
    const std::optional<WallTime> date = CalculDate(GetParam().header);
    ASSERT_TRUE(date.has_value());
    EXPECT_EQ(dateText(*date), GetParam().date);
}

const DateRow kDates[] = {
    {"January", QStringLiteral("Sun, 02 Jan 2005 03:04:05 GMT"),
     QStringLiteral("02/01/2005 03:04:05")},
    {"February", QStringLiteral("Tue, 29 Feb 2000 00:00:00 GMT"),
     QStringLiteral("29/02/2000 00:00:00")},
    {"March", QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"),
     QStringLiteral("07/03/2006 14:05:09")},
    {"April", QStringLiteral("Sun, 30 Apr 2006 23:59:59 GMT"),
     QStringLiteral("30/04/2006 23:59:59")},
    {"May", QStringLiteral("Mon, 01 May 2006 12:00:00 GMT"), QStringLiteral("01/05/2006 12:00:00")},
    {"June", QStringLiteral("Thu, 15 Jun 2006 06:30:00 GMT"),
     QStringLiteral("15/06/2006 06:30:00")},
    {"July", QStringLiteral("Mon, 31 Jul 2006 10:11:12 GMT"),
     QStringLiteral("31/07/2006 10:11:12")},
    {"August", QStringLiteral("Thu, 31 Aug 2006 10:11:12 GMT"),
     QStringLiteral("31/08/2006 10:11:12")},
    {"September", QStringLiteral("Sat, 30 Sep 2006 10:11:12 GMT"),
     QStringLiteral("30/09/2006 10:11:12")},
    {"October", QStringLiteral("Thu, 05 Oct 2006 01:02:03 GMT"),
     QStringLiteral("05/10/2006 01:02:03")},
    {"November", QStringLiteral("Tue, 15 Nov 1994 08:12:31 GMT"),
     QStringLiteral("15/11/1994 08:12:31")},
    {"December", QStringLiteral("Sun, 31 Dec 2006 23:59:59 GMT"),
     QStringLiteral("31/12/2006 23:59:59")},
    {"BlanksAround", QStringLiteral(" \tTue, 15 Nov 1994 08:12:31 GMT  "),
     QStringLiteral("15/11/1994 08:12:31")},
    {"AnyWeekday", QStringLiteral("Xyz, 15 Nov 1994 08:12:31 GMT"),
     QStringLiteral("15/11/1994 08:12:31")},
    {"WithoutZone", QStringLiteral("Tue, 15 Nov 1994 08:12:31"),
     QStringLiteral("15/11/1994 08:12:31")},
    {"OtherZoneUnshifted", QStringLiteral("Tue, 15 Nov 1994 08:12:31 +0200"),
     QStringLiteral("15/11/1994 08:12:31")},
    {"WithoutTime", QStringLiteral("Tue, 15 Nov 1994"), QStringLiteral("15/11/1994 00:00:00")},
    {"OneDigitDay", QStringLiteral("Tue, 1 Nov 1994 08:12:31 GMT"),
     QStringLiteral("01/11/1994 08:12:31")},
    // The time begins at the 18th character wherever the server has put it.
    {"FieldsByTheirPlace", QStringLiteral("Tue, 1 Nov 1994 18:12:31 GMT"),
     QStringLiteral("01/11/1994 08:12:31")},
};

INSTANTIATE_TEST_SUITE_P(HttpDate, CalculDateReads, testing::ValuesIn(kDates),
                         [](const auto &info) { return std::string(info.param.name); });

struct NoDateRow
{
    const char *name;
    QString header;
};

void PrintTo(const NoDateRow &row, std::ostream *out)
{
    *out << row.header.toStdString();
}

class CalculDateRefuses : public testing::TestWithParam<NoDateRow>
{
};

TEST_P(CalculDateRefuses, ATextThatIsNoDate)
{
    EXPECT_FALSE(CalculDate(GetParam().header).has_value());
}

const NoDateRow kNoDates[] = {
    {"Empty", QString()},
    {"BlanksAlone", QStringLiteral("   ")},
    {"LowerCaseMonth", QStringLiteral("Tue, 15 nov 1994 08:12:31 GMT")},
    {"UpperCaseMonth", QStringLiteral("Tue, 15 NOV 1994 08:12:31 GMT")},
    {"UnknownMonth", QStringLiteral("Tue, 15 Fev 1994 08:12:31 GMT")},
    {"LongMonthName", QStringLiteral("Tue, 15 November 1994 08:12:31 GMT")},
    {"Rfc850Form", QStringLiteral("Sunday, 06-Nov-94 08:49:37 GMT")},
    {"AsctimeForm", QStringLiteral("Sun Nov  6 08:49:37 1994")},
    {"IsoForm", QStringLiteral("1994-11-15T08:12:31Z")},
    {"WithoutWeekday", QStringLiteral("15 Nov 1994 08:12:31 GMT")},
    {"NoSuchDay", QStringLiteral("Thu, 30 Feb 2006 08:12:31 GMT")},
    {"NotALeapYear", QStringLiteral("Wed, 29 Feb 2006 08:12:31 GMT")},
    {"DayZero", QStringLiteral("Tue, 00 Nov 1994 08:12:31 GMT")},
    {"HourTwentyFour", QStringLiteral("Tue, 15 Nov 1994 24:00:00 GMT")},
    {"LeapSecond", QStringLiteral("Sat, 31 Dec 2005 23:59:60 GMT")},
    {"TwoDigitYear", QStringLiteral("Tue, 15 Nov 94 08:12:31 GMT")},
    {"CutInTheTime", QStringLiteral("Tue, 15 Nov 1994 08:1x")},
    {"Number", QStringLiteral("0")},
    {"Words", QStringLiteral("the day before yesterday at noon")},
};

INSTANTIATE_TEST_SUITE_P(HttpDate, CalculDateRefuses, testing::ValuesIn(kNoDates),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(CalculDate, KeepsTheGmtTimeInEveryZone)
{
    const QByteArray zone = qgetenv("TZ");
    const auto restore = qScopeGuard([&] {
        zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
        ::tzset();
    });
    qputenv("TZ", "Pacific/Auckland");
    ::tzset();
    const std::optional<WallTime> date =
        CalculDate(QStringLiteral("Tue, 15 Nov 1994 08:12:31 GMT"));
    ASSERT_TRUE(date.has_value());
    EXPECT_EQ(dateText(*date), QStringLiteral("15/11/1994 08:12:31"));
}

} // namespace
} // namespace velmora::test
