// Searches in the list of a folder's images.
#include "NameLists.h"
#include "browser/ImageNames.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::listOf;

const QByteArrayList kNames = {
    "20 20061231_x.jpg",       //
    "20051231_2006123101.jpg", //
    "20061231_0000003100.jpg", //
    "20061231_1430.jpg",       // odd
    "20061231_143045.JPG",     //
    "20061231_1430450114.JPG", //
    "20061231_1430450114.jpg", //
    "20061231_1430460114.jpg", //
    "20070101_0000000100.jpg", //
    "2007_copy of 20070102_00.jpg",
    "20Beach.jpg",
    "20beach.JPG",
};

struct SearchRow
{
    const char *what;
    QByteArray key;
    std::optional<qsizetype> place;
};

class FirstContaining : public testing::TestWithParam<SearchRow>
{
};

TEST_P(FirstContaining, IsThePlaceInTheList)
{
    EXPECT_EQ(listOf(kNames).firstContaining(GetParam().key), GetParam().place);
}

const SearchRow kContaining[] = {
    {"DayAndTime", "20061231_1430", 3},
    {"DayAndTimeOfAUsualName", "20061231_143046", 7},
    {"DayAndTimeOfTheOlderForm", "20061231_143045.", 4},
    {"WholeName", "20061231_1430450114.jpg", 6},
    {"CaseCounts", "20061231_143045.jpg", std::nullopt},
    {"DayAndAnything", "20061231_", 0},
    {"DayAndBlank", "20070101_", 8},
    {"DayInsideAnOddName", "20070102_", 9},
    {"NoSuchTime", "20061231_1500", std::nullopt},
    {"AfterTheLast", "20990101_0000", std::nullopt},
    {"BeforeTheFirst", "20010101_0000", std::nullopt},
    {"NoTime", "20061231_noon", std::nullopt},
    {"Day", "20070101", 8},
    {"DayInsideAnOddNameAlone", "20070102", 9},
    {"DayIsNoTime", "20061231", 0},
    {"NoSuchDay", "20070103", std::nullopt},
    {"TimeAlone", "_143046", 7},
    {"TextOfAnOddName", "each", 10},
    {"Suffix", ".JPG", 4},
    {"NineDigits", "200612310", 1},
    {"NotThere", "zzz", std::nullopt},
    {"Empty", "", std::nullopt},
};
INSTANTIATE_TEST_SUITE_P(Rows, FirstContaining, testing::ValuesIn(kContaining),
                         [](const auto &row) { return row.param.what; });

TEST(FirstContaining, OfADayIsAnImageOfThatDay)
{
    const ImageNames names = listOf({"20051231_2006123101.jpg", "20061231_0000003100.jpg"});
    EXPECT_EQ(names.firstContaining("20061231"), std::optional<qsizetype>(1));
}

class FirstBeginningWith : public testing::TestWithParam<SearchRow>
{
};

TEST_P(FirstBeginningWith, IsThePlaceInTheList)
{
    EXPECT_EQ(listOf(kNames).firstBeginningWith(GetParam().key), GetParam().place);
}

const SearchRow kBeginning[] = {
    {"Anything", "", 0},
    {"Century", "20", 0},
    {"Year", "2005", 1},
    {"Day", "20061231", 2},
    {"Time", "20061231_1430", 3},
    {"OddOne", "20061231_1430.", 3},
    {"EitherCase", "20061231_143045.jpg", 4},
    {"EitherCaseOfSeveral", "20061231_1430450114.jpg", 5},
    {"EitherCaseOfOddOnes", "20BEACH", 10},
    {"SmallLetters", "20beach.jpg", 10},
    {"Last", "20beach.JPG", 10},
    {"NotThere", "20061232", std::nullopt},
    {"PartInsideANameOnly", "1430", std::nullopt},
    {"AfterTheLast", "21", std::nullopt},
};
INSTANTIATE_TEST_SUITE_P(Rows, FirstBeginningWith, testing::ValuesIn(kBeginning),
                         [](const auto &row) { return row.param.what; });

TEST(ImageNamesSearch, FindsTheExactNameAlone)
{
    const ImageNames names = listOf(kNames);
    EXPECT_EQ(names.find("20061231_1430450114.jpg"), std::optional<qsizetype>(6));
    EXPECT_EQ(names.find("20beach.JPG"), std::optional<qsizetype>(11));
    for (const QByteArray &other :
         {QByteArray("20061231_1430450114.Jpg"), QByteArray("20BEACH.jpg"), QByteArray("2"),
          QByteArray("20061231_14304501140.jpg"), QByteArray("21"), QByteArray()}) {
        EXPECT_FALSE(names.find(other).has_value()) << other.constData();
    }
}

TEST(ImageNamesSearch, FindsNothingInAnEmptyList)
{
    const ImageNames names;
    EXPECT_EQ(names.count(), 0);
    EXPECT_FALSE(names.find("20").has_value());
    EXPECT_FALSE(names.firstContaining("20061231_1430").has_value());
    EXPECT_FALSE(names.firstContaining("x").has_value());
    EXPECT_FALSE(names.firstBeginningWith("").has_value());
}

} // namespace
} // namespace velmora
