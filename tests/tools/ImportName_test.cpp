// The names that imported files get.
#include "tools/ImportName.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr WallTime kCreated =
    std::chrono::local_days{std::chrono::year{2006} / std::chrono::October / 5} + 12h + 30min + 45s;
constexpr WallTime kSmallFields =
    std::chrono::local_days{std::chrono::year{2006} / std::chrono::January / 2} + 3h + 4min + 5s;

struct KeptRow
{
    const char *what;
    QByteArray name;
    bool isRenamed;
};

void PrintTo(const KeptRow &row, std::ostream *out)
{
    *out << row.what;
}

class NameIsKept : public testing::TestWithParam<KeptRow>
{
};

TEST_P(NameIsKept, WhenItIsADateAlready)
{
    EXPECT_EQ(needsImportName(GetParam().name), GetParam().isRenamed);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NameIsKept,
    testing::Values(KeptRow{"of the rule", "20061005_1230450000.jpg", false},
                    KeptRow{"of any century", "2abcdefghijklmnopqr.x", false},
                    KeptRow{"dot at the 20th place and another", "20061005_1230450000.a.b", false},
                    KeptRow{"nothing behind the dot", "20061005_1230450000.", false},
                    KeptRow{"a letter of two bytes", "2006100\xC3\xA9_123045000.jpg", true},
                    KeptRow{"20th character in bytes", "2006100\xC3\xA9_1230450000.jpg", false},
                    KeptRow{"no UTF-8", "2006100\xFF_1230450000.jpg", false},
                    KeptRow{"a lone following byte", "2006100\x80_1230450000.jpg", false},
                    KeptRow{"dot at the 19th place", "20061005_123045000.jpg", true},
                    KeptRow{"dot at the 21st place", "20061005_12304500000.jpg", true},
                    KeptRow{"earlier dot", "2.061005_1230450000.jpg", true},
                    KeptRow{"dot too early", "2abc.jpg", true},
                    KeptRow{"first character", "A0061005_1230450000.jpg", true},
                    KeptRow{"first century", "10061005_1230450000.jpg", true},
                    KeptRow{"no dot", "20061005_1230450000jpg", true},
                    KeptRow{"19 characters and no dot", "20061005_1230450000", true},
                    KeptRow{"dots only", "...", true}, KeptRow{"nothing", "", true}));

struct NewNameRow
{
    const char *what;
    QByteArray name;
    qint16 collisions;
    QByteArray expected;
};

void PrintTo(const NewNameRow &row, std::ostream *out)
{
    *out << row.what;
}

class NewName : public testing::TestWithParam<NewNameRow>
{
};

TEST_P(NewName, IsTheDateTheNumberAndWhatStandsBehindTheFirstDot)
{
    EXPECT_EQ(importName(GetParam().name, kCreated, GetParam().collisions), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NewName,
    testing::Values(NewNameRow{"capital extension", "IMG_1.JPG", 0, "20061005_1230450000.JPG"},
                    NewNameRow{"two extensions", "photo.tar.gz", 0, "20061005_1230450000.tar.gz"},
                    NewNameRow{"no dot", "README", 0, "20061005_1230450000.README"},
                    NewNameRow{"hidden", ".jpg", 0, "20061005_1230450000.jpg"},
                    NewNameRow{"dot at the end", "photo.", 0, "20061005_1230450000."},
                    NewNameRow{"dots only", "...", 0, "20061005_1230450000..."},
                    NewNameRow{"no UTF-8", "\xFF.\xFE", 0, "20061005_1230450000.\xFE"},
                    NewNameRow{"after some collisions", "a.jpg", 7, "20061005_1230450007.jpg"},
                    NewNameRow{"four digits", "a.jpg", 9999, "20061005_1230459999.jpg"},
                    NewNameRow{"five digits: the last four", "a.jpg", 10000,
                               "20061005_1230450000.jpg"},
                    NewNameRow{"the largest", "a.jpg", 32767, "20061005_1230452767.jpg"}));

TEST(ImportName, FieldsOfTheDateHaveTwoDigits)
{
    EXPECT_EQ(importName("a.jpg", kSmallFields, 0), "20060102_0304050000.jpg");
}

TEST(ImportName, ALongNameWithoutADotGetsEvenLonger)
{
    EXPECT_EQ(importName(QByteArray(255, 'n'), kCreated, 0).size(), 275);
}

class NextName : public testing::TestWithParam<NewNameRow>
{
};

TEST_P(NextName, HasTheNumberInItsPlaceAndLosesItsTwentiethCharacter)
{
    EXPECT_EQ(nameAfterCollision(GetParam().name, GetParam().collisions), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NextName,
    testing::Values(NewNameRow{"first: the dot", "20061005_1230450000.jpg", 1,
                               "20061005_1230450001jpg"},
                    NewNameRow{"second", "20061005_1230450001jpg", 2, "20061005_1230450002pg"},
                    NewNameRow{"third", "20061005_1230450002pg", 3, "20061005_1230450003g"},
                    NewNameRow{"20 characters", "20061005_1230450003g", 4, "20061005_1230450004"},
                    NewNameRow{"number of five digits", "20061005_1230450000.jpg", 12345,
                               "20061005_1230452345jpg"},
                    NewNameRow{"characters, not bytes", "2006100\xC3\xA9_1230450000.jpg", 1,
                               "2006100\xC3\xA9_1230450001jpg"}));

TEST(ImportName, ANameOfFewerThan20CharactersHasNoNext)
{
    EXPECT_EQ(nameAfterCollision("20061005_1230450004", 5), std::nullopt);
    EXPECT_EQ(nameAfterCollision("", 1), std::nullopt);
    EXPECT_EQ(nameAfterCollision(QByteArray("\xC3\xA9").repeated(19), 1), std::nullopt);
}

} // namespace
} // namespace velmora::test
