// What is searched for a typed date and time.
#include "browser/NameSearch.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct Typed
{
    const char *name;
    const char *date;
    const char *time;
    const char *moment;
};

class SearchKeysOf : public testing::TestWithParam<Typed>
{
};

TEST_P(SearchKeysOf, JoinDayAndTime)
{
    const Typed &typed = GetParam();
    const auto keys = searchKeys(QString::fromLatin1(typed.date), QString::fromLatin1(typed.time));
    ASSERT_TRUE(keys);
    EXPECT_EQ(keys->moment, QByteArray(typed.moment));
    EXPECT_EQ(keys->day, QByteArray(typed.moment).left(8));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SearchKeysOf,
    testing::Values(Typed{"HoursAndMinutes", "31/12/2006", "14:30", "20061231_1430"},
                    Typed{"Seconds", "31/12/2006", "14:30:59", "20061231_143059"},
                    Typed{"NoTime", "31/12/2006", "", "20061231_"},
                    Typed{"TimeWithoutColons", "31/12/2006", "1430", "20061231_1430"},
                    Typed{"TimeThatIsNone", "31/12/2006", "Time", "20061231_Time"},
                    Typed{"ColonsAlone", "31/12/2006", ":::", "20061231_"},
                    Typed{"OneDigitDayAndMonth", "7/3/2006", "1:02", "20060307_102"},
                    Typed{"LeapDay", "29/02/2008", "00:00", "20080229_0000"},
                    Typed{"Hyphens", "31-12-2006", "14:30", "20061231_1430"},
                    Typed{"Dots", "31.12.2006", "14:30", "20061231_1430"},
                    Typed{"YearFirst", "2006-12-31", "14:30", "20061231_1430"},
                    Typed{"BlanksAround", " 31/12/2006 ", "14:30", "20061231_1430"},
                    Typed{"BlanksAroundYearFirst", " 2006-12-31 ", "14:30", "20061231_1430"},
                    Typed{"YearOfThreeDigits", "1/1/0999", "00:00", "09990101_0000"}),
    [](const testing::TestParamInfo<Typed> &info) { return info.param.name; });

class NoDate : public testing::TestWithParam<const char *>
{
};

TEST_P(NoDate, GivesNoKeys)
{
    EXPECT_EQ(searchKeys(QString::fromLatin1(GetParam()), QStringLiteral("14:30")), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Texts, NoDate,
                         testing::Values("", "Date", "31", "31/12", "29/02/2006", "32/12/2006",
                                         "31/13/2006", "0/12/2006", "31/12/2006/1", "//",
                                         "-1/12/2006"));

} // namespace
} // namespace velmora
