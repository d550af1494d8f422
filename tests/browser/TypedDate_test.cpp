// The forms in which users type dates.
#include "browser/TypedDate.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct Form
{
    const char *name;
    const char *text;
    const char *date;
};

class TypedDateOf : public testing::TestWithParam<Form>
{
};

TEST_P(TypedDateOf, IsRead)
{
    const auto date = typedDate(QString::fromUtf8(GetParam().text));
    ASSERT_TRUE(date);
    EXPECT_EQ(dateText(*date).section(u' ', 0, 0), QString::fromUtf8(GetParam().date));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, TypedDateOf,
    testing::Values(Form{"DayFirst", "07/03/2006", "07/03/2006"},
                    Form{"WithoutZeros", "7/3/2006", "07/03/2006"},
                    Form{"TwoDigitYear", "7/3/06", "07/03/2006"},
                    Form{"TheLastTwoDigitYearOfThisCentury", "1/1/29", "01/01/2029"},
                    Form{"TheFirstTwoDigitYearOfTheLast", "1/1/30", "01/01/1930"},
                    Form{"Hyphens", "07-03-2006", "07/03/2006"},
                    Form{"Dots", "7.3.2006", "07/03/2006"},
                    Form{"DotsAndBlanks", "7. 3. 2006", "07/03/2006"},
                    Form{"Blanks", "7 3 2006", "07/03/2006"},
                    Form{"BlanksAround", "  7/3/2006 ", "07/03/2006"},
                    Form{"YearFirst", "2006-03-07", "07/03/2006"},
                    Form{"YearFirstWithStrokes", "2006/3/7", "07/03/2006"},
                    Form{"Compact", "20060307", "07/03/2006"},
                    Form{"CompactDayFirst", "31122006", "31/12/2006"},
                    Form{"EnglishMonth", "7 March 2006", "07/03/2006"},
                    Form{"EnglishMonthFirst", "Mar 7, 2006", "07/03/2006"},
                    Form{"FrenchMonth", "7 mars 2006", "07/03/2006"},
                    Form{"FrenchMonthCut", "7 juil. 2006", "07/07/2006"},
                    Form{"FrenchMonthWithAccents", "25 DÉCEMBRE 2006", "25/12/2006"},
                    Form{"FrenchMonthWithoutAccents", "15 aout 06", "15/08/2006"},
                    Form{"MonthBetweenHyphens", "7-feb-2006", "07/02/2006"},
                    Form{"ATimeBehind", "7/3/2006 14:30", "07/03/2006"},
                    Form{"LeapDay", "29/2/08", "29/02/2008"}),
    [](const testing::TestParamInfo<Form> &info) { return info.param.name; });

class NoTypedDate : public testing::TestWithParam<const char *>
{
};

TEST_P(NoTypedDate, IsRead)
{
    EXPECT_EQ(typedDate(QString::fromUtf8(GetParam())), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Texts, NoTypedDate,
                         testing::Values("", " ", "Date", "7", "7/3", "29/2/2006", "31/11/2006",
                                         "2006-02-30", "99999999", "2006030", "7 ju 2006",
                                         "7 jui 2006", "7 xyz 2006", "mars 2006", "-7/3/2006",
                                         "7//2006", "7/3/2006/1", "7/3/2006 25:00", "14:30",
                                         "a/b/c", "mars avril mai", "+7/3/2006"));

} // namespace
} // namespace velmora
