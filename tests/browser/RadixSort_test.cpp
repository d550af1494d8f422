// Sorting numbers in steps.
#include "browser/RadixSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace velmora {
namespace {

using Values = std::vector<quint64>;

struct Sorted
{
    Values values;
    int steps = 0;
};

Sorted sorted(const Values &values)
{
    Sorted result;
    RadixSort sort(values);
    while (sort.sortSome()) {
        ++result.steps;
    }
    result.values = sort.take();
    return result;
}

void expectSorted(Values values)
{
    const Values result = sorted(values).values;
    std::ranges::sort(values);
    EXPECT_EQ(result, values);
}

Values randomValues(std::size_t count, quint64 lowest, quint64 highest)
{
    std::mt19937_64 random(20061005);
    std::uniform_int_distribution<quint64> value(lowest, highest);
    Values values(count);
    std::ranges::generate(values, [&] { return value(random); });
    return values;
}

constexpr quint64 kMost = std::numeric_limits<quint64>::max();

TEST(RadixSort, SortsShortLists)
{
    expectSorted({});
    expectSorted({7});
    expectSorted({2, 1});
    expectSorted({1, 2});
    expectSorted({3, 1, 2});
    expectSorted({5, 5, 5});
    expectSorted({kMost, 0, kMost, 1});
}

TEST(RadixSort, SortsNumbersOfAnySize)
{
    expectSorted(randomValues(1000, 0, kMost));
    expectSorted(randomValues(1000, kMost - 300, kMost));
    expectSorted(randomValues(1000, 0, 2047));
    expectSorted(randomValues(1000, 2047, 2050));
    expectSorted(randomValues(1000, 1ULL << 40U, (1ULL << 40U) + 5000));
}

TEST(RadixSort, SortsListsLongerThanAStep)
{
    expectSorted(randomValues(200'000, 0, kMost));
    expectSorted(randomValues(65'536, 0, kMost));
    expectSorted(randomValues(65'537, 0, kMost));
}

TEST(RadixSort, LeavesOutDigitsThatDoNotVary)
{
    Values values;
    for (quint64 i = 0; i < 1000; ++i) {
        values.push_back((i * 7 % 1000) << 44U);
    }
    expectSorted(values);
    EXPECT_LE(sorted(values).steps, 3);
}

TEST(RadixSort, TurnsADescendingListRoundInOneLook)
{
    Values values = randomValues(100'000, 0, kMost);
    std::ranges::sort(values, std::greater<>());
    expectSorted(values);
    EXPECT_LE(sorted(values).steps, 2);
    std::ranges::reverse(values);
    expectSorted(values);
    EXPECT_LE(sorted(values).steps, 2);
}

TEST(RadixSort, WorksInManySteps)
{
    EXPECT_GE(sorted(randomValues(500'000, 0, kMost)).steps, 50);
}

} // namespace
} // namespace velmora
