// The age of an image by its name.
#include "capture/ImageAge.h"

#include "base/DateText.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;

WallTime time(const char *text)
{
    return dateFromText(QString::fromLatin1(text)).value();
}

TEST(DateInName, IsThatOfAStoredImage)
{
    EXPECT_EQ(dateInName("20060307_1405090714.jpg"), time("07/03/2006 14:05:09"));
    EXPECT_EQ(dateInName("20240229_2359590000.tar.gz"), time("29/02/2024 23:59:59"));
    EXPECT_EQ(dateInName("19991231_0000009999."), time("31/12/1999 00:00:00"));
}

TEST(DateInName, IsNoneOfAnotherForm)
{
    for (const char *const name :
         {"", ".", "20060307_140509.jpg", "20060307_14050907.jpg", "20060307_1405090714",
          "20060307_1405090714jpg", "20060307_14050907141.jpg", "20060307-1405090714.jpg",
          "2006030a_1405090714.jpg", "20060307_14050907b4.jpg", "x20060307_1405090714.jpg",
          "Target.jpg", "20060307_1405090714,jpg"}) {
        EXPECT_EQ(dateInName(name), std::nullopt) << name;
    }
}

TEST(DateInName, IsNoneOfADateThatDoesNotExist)
{
    for (const char *const name :
         {"20061307_1405090714.jpg", "20060007_1405090714.jpg", "20060230_1405090714.jpg",
          "20060300_1405090714.jpg", "20060307_2405090714.jpg", "20060307_1460090714.jpg",
          "20060307_1405600714.jpg", "20230229_1405090714.jpg"}) {
        EXPECT_EQ(dateInName(name), std::nullopt) << name;
    }
}

TEST(DateInName, IsNoneOfAnImageFiledUnderTheZeroDate)
{
    EXPECT_EQ(dateInName("18991230_0000000714.jpg"), std::nullopt);
    EXPECT_EQ(dateInName("18991230_0000010714.jpg"), time("30/12/1899 00:00:01"));
}

TEST(OneMonthBefore, IsTheSameDayAndTimeOfTheMonthBefore)
{
    EXPECT_EQ(oneMonthBefore(time("07/03/2006 14:05:09")), time("07/02/2006 14:05:09"));
    EXPECT_EQ(oneMonthBefore(time("15/01/2024 00:00:00")), time("15/12/2023 00:00:00"));
    EXPECT_EQ(oneMonthBefore(time("28/03/2023 23:59:59")), time("28/02/2023 23:59:59"));
}

TEST(OneMonthBefore, IsTheLastDayOfAShorterMonth)
{
    EXPECT_EQ(oneMonthBefore(time("31/03/2023 12:00:00")), time("28/02/2023 12:00:00"));
    EXPECT_EQ(oneMonthBefore(time("29/03/2023 12:00:00")), time("28/02/2023 12:00:00"));
    EXPECT_EQ(oneMonthBefore(time("31/03/2024 12:00:00")), time("29/02/2024 12:00:00"));
    EXPECT_EQ(oneMonthBefore(time("31/12/2024 12:00:00")), time("30/11/2024 12:00:00"));
}

} // namespace
} // namespace velmora
