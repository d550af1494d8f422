// The order of names.
#include "base/NameOrder.h"

#include <QByteArray>

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct OrderRow
{
    const char *what;
    QByteArray first;
    QByteArray second;
};

class NameOrderTable : public testing::TestWithParam<OrderRow>
{
};

TEST_P(NameOrderTable, OrdersBothWays)
{
    EXPECT_TRUE(compareNames(GetParam().first, GetParam().second) < 0);
    EXPECT_TRUE(compareNames(GetParam().second, GetParam().first) > 0);
}

const OrderRow kRows[] = {
    {"ByBytes", "20a", "20b"},
    {"LettersIgnoreCase", "20a.jpg", "20B.jpg"},
    {"LettersIgnoreCaseTheOtherWay", "20A.jpg", "20b.jpg"},
    {"LaterDifferenceBeforeCase", "20b1", "20B2"},
    {"LaterDifferenceBeforeCaseTheOtherWay", "20B1", "20b2"},
    {"CapitalsFirstInATie", "20A", "20a"},
    {"FirstLetterSettlesATie", "20Ab", "20aB"},
    {"ShorterFirst", "20", "200"},
    {"ShorterFirstWhateverTheCase", "20a", "20A1"},
    {"DotBeforeDigits", "20.", "200"},
    {"DigitsBeforeUnderscore", "209", "20_"},
    {"UnderscoreBeforeLetters", "20_", "20A"},
    {"OtherBytesLast", "20z", "20\xC3\xA9"},
    {"OtherBytesKeepTheirCase", "20\xC3\x89", "20\xC3\xA9"},
    {"NothingBeforeAll", "", "2"},
};
INSTANTIATE_TEST_SUITE_P(Rows, NameOrderTable, testing::ValuesIn(kRows),
                         [](const auto &row) { return row.param.what; });

TEST(NameOrder, FindsANameEqualToItselfAlone)
{
    EXPECT_TRUE(compareNames("20Ab", "20Ab") == 0);
    EXPECT_FALSE(compareNames("20Ab", "20AB") == 0);
}

TEST(NameBeginsWith, IgnoresCase)
{
    EXPECT_TRUE(nameBeginsWith("20Ab.jpg", "20aB"));
    EXPECT_TRUE(nameBeginsWith("20", ""));
    EXPECT_TRUE(nameBeginsWith("20", "20"));
    EXPECT_FALSE(nameBeginsWith("20", "201"));
    EXPECT_FALSE(nameBeginsWith("20Ab", "20b"));
}

} // namespace
} // namespace velmora
