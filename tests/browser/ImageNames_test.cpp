// The list of a folder's images: what it accepts, its order, and names of all kinds returned
// unchanged.
#include "browser/ImageNames.h"

#include "NameLists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <string>

namespace velmora {
namespace {

using test::all;
using test::listOf;

struct SortRow
{
    const char *what;
    QByteArrayList sorted;
};

class ImageNamesOrder : public testing::TestWithParam<SortRow>
{
};

TEST_P(ImageNamesOrder, IsTheSameFromAnyOrder)
{
    QByteArrayList names = GetParam().sorted;
    EXPECT_EQ(all(listOf(names)), GetParam().sorted);
    std::ranges::reverse(names);
    EXPECT_EQ(all(listOf(names)), GetParam().sorted);
    std::ranges::rotate(names, names.begin() + names.size() / 2);
    EXPECT_EQ(all(listOf(names)), GetParam().sorted);
}

const SortRow kOrders[] = {
    {"Empty", {}},
    {"One", {"20061005_1230450512.jpg"}},
    {"Times",
     {"20061005_1230450512.jpg", "20061005_1230460512.jpg", "20061005_1231000512.jpg",
      "20061006_0000000600.jpg", "20070101_0000000100.jpg"}},
    {"Downloads", {"20061005_1230450512.jpg", "20061005_1230450513.jpg"}},
    {"OlderForm",
     {"20061005_123045.jpg", "20061005_1230450000.jpg", "20061005_1230450512.jpg",
      "20061005_123046.jpg"}},
    {"Suffixes",
     {"20061005_1230450512", "20061005_1230450512.bmp", "20061005_1230450512.jpg",
      "20061005_1230450512.jpg2", "20061005_1230450512.png", "20061005_1230450512jpg",
      "20061005_1230460512.bmp"}},
    {"SuffixesInEitherCase",
     {"20061005_1230450512.BMP", "20061005_1230450512.bmp", "20061005_1230450512.JPG",
      "20061005_1230450512.Jpg", "20061005_1230450512.jpg", "20061005_1230450512.PNG"}},
    {"DigitsAsSuffix",
     {"20061005_1230450512.jpg", "20061005_12304505121.jpg", "20061005_1230450513.jpg"}},
    {"OddOnes",
     {"20", "20 holiday.jpg", "20.jpg", "2006.jpg", "20061005.jpg", "20061005_12.jpg",
      "2006_Beach.jpg", "2006_beach.jpg", "2006_CAR.jpg", "20d\xC3\xA9p.jpg", "20\xFF.jpg"}},
    {"OddOnesAmongTheOthers",
     {"20 first.jpg", "20061005_1230.jpg", "20061005_1230450512.jpg", "20061005_1230450512_2.jpg",
      "20061005_1230450513.jpg", "20061005a.jpg", "20061006_0000000600.jpg", "20x.jpg"}},
};
INSTANTIATE_TEST_SUITE_P(Orders, ImageNamesOrder, testing::ValuesIn(kOrders),
                         [](const auto &row) { return row.param.what; });

TEST(ImageNames, TakesNamesThatBeginWith20Alone)
{
    const QByteArrayList names = {"",
                                  "2",
                                  "19991231_2359593123.jpg",
                                  "2100",
                                  "220",
                                  "IMG_2006.jpg",
                                  " 20061005_1230450512.jpg",
                                  "20nodot",
                                  "20.",
                                  "20061005_1230450512.jpg"};
    EXPECT_EQ(all(listOf(names)), QByteArrayList({"20.", "20061005_1230450512.jpg", "20nodot"}));
}

TEST(ImageNames, KeepsLongNamesAndLineBreaks)
{
    const QByteArrayList names = {
        "20" + QByteArray(253, '\n'), "20061005_1230450512" + QByteArray(236, 'x'),
        "20061005_123045." + QByteArray(239, 'x'), "20" + QByteArray(253, '\xFF')};
    const QByteArrayList sorted = {names[0], names[2], names[1], names[3]};
    EXPECT_EQ(all(listOf(names)), sorted);
}

TEST(ImageNames, KeepsMoreKindsOfSuffixesThanHaveNumbers)
{
    QByteArrayList names;
    for (char kind = 'a'; kind <= 'z'; ++kind) {
        names += QByteArray("20061005_1230450512.") + kind;
        names += QByteArray("20061006_1230450512.") + kind;
    }
    QByteArrayList sorted = names;
    std::ranges::sort(sorted);
    const ImageNames list = listOf(names);
    EXPECT_EQ(all(list), sorted);
    for (qsizetype i = 0; i < sorted.size(); ++i) {
        EXPECT_EQ(list.find(sorted[i]), std::optional(i)) << sorted[i].constData();
    }
}

TEST(ImageNames, TakesEightBytesForAUsualName)
{
    QByteArrayList names;
    for (int i = 0; i < 100'000; ++i) {
        names += "20061005_12" + QByteArray::number(10'000'000 + i) + ".jpg";
    }
    EXPECT_LE(listOf(names).bytes(), 1'100'000U);
}

class RandomNames
{
public:
    QByteArrayList take(int count)
    {
        QByteArrayList names;
        while (names.size() < count) {
            names.append(name());
        }
        std::ranges::sort(names);
        names.erase(std::ranges::unique(names).begin(), names.end());
        std::ranges::shuffle(names, random_);
        return names;
    }

private:
    int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }

    QByteArray digits(int count)
    {
        QByteArray text;
        for (int i = 0; i < count; ++i) {
            text += static_cast<char>('0' + below(3) * below(4));
        }
        return text;
    }

    QByteArray letters(int count)
    {
        QByteArray text;
        for (int i = 0; i < count; ++i) {
            text += "aAbB_.9\xC3"[below(8)];
        }
        return text;
    }

    QByteArray name()
    {
        switch (below(6)) {
        case 0:
            return "20" + letters(1 + below(6));
        case 1:
            return "20061005_" + digits(6) + ".jpg";
        case 2:
            return "20061005_" + digits(below(14)) + letters(below(3));
        default:
            return "200610" + digits(2) + '_' + digits(10) + suffix();
        }
    }

    QByteArray suffix() { return below(9) > 0 ? ".jpg" : '.' + letters(below(3)); }

    std::mt19937 random_{20061005};
};

QByteArrayList sortedPlainly(const QByteArrayList &names)
{
    std::vector<std::pair<std::string, std::string>> keys;
    for (const QByteArray &name : names) {
        std::string lower = name.toStdString();
        std::ranges::transform(lower, lower.begin(), [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
        });
        keys.emplace_back(lower, name.toStdString());
    }
    std::ranges::sort(keys);
    QByteArrayList sorted;
    for (const auto &[lower, name] : keys) {
        sorted.append(QByteArray::fromStdString(name));
    }
    return sorted;
}

class RandomMixture : public testing::TestWithParam<int>
{
};

TEST_P(RandomMixture, IsSortedAndFoundAsByAPlainSort)
{
    const QByteArrayList names = RandomNames().take(GetParam());
    const QByteArrayList sorted = sortedPlainly(names);
    const ImageNames list = listOf(names);
    ASSERT_EQ(list.count(), sorted.size());
    EXPECT_EQ(all(list), sorted);
    for (qsizetype i = 0; i < sorted.size(); ++i) {
        ASSERT_EQ(list.find(sorted[i]), std::optional(i)) << sorted[i].constData();
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, RandomMixture,
                         testing::Values(1, 2, 3, 10, 64, 65, 128, 129, 1000, 20'000));

} // namespace
} // namespace velmora
