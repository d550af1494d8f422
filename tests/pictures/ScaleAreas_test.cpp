// How much each pixel contributes when a line is shortened or lengthened.
#include "pictures/ScaleAreas.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace velmora {
namespace {

std::vector<int> weightsOf(const ScaleAreas &areas, int target)
{
    return {areas.weights(target), areas.weights(target) + areas.length()};
}

TEST(ScaleAreas, TakeEachPixelOfALineOfTheSameLength)
{
    const ScaleAreas areas(3, 3);
    EXPECT_EQ(areas.length(), 1);
    EXPECT_EQ(areas.first(2), 2);
    EXPECT_EQ(weightsOf(areas, 2), std::vector{256});
}

TEST(ScaleAreas, ShareTwoPixelsEqually)
{
    const ScaleAreas areas(4, 2);
    EXPECT_EQ(areas.first(1), 2);
    EXPECT_EQ(weightsOf(areas, 1), (std::vector{128, 128}));
}

TEST(ScaleAreas, CountAPixelByThePartThatIsCovered)
{
    const ScaleAreas areas(3, 2); // each area is a pixel and a half
    EXPECT_EQ(areas.first(0), 0);
    EXPECT_EQ(weightsOf(areas, 0), (std::vector{171, 85}));
    EXPECT_EQ(areas.first(1), 1);
    EXPECT_EQ(weightsOf(areas, 1), (std::vector{85, 171}));
}

TEST(ScaleAreas, RepeatPixelsOfAShorterLine)
{
    const ScaleAreas areas(1, 3);
    EXPECT_EQ(areas.length(), 1);
    EXPECT_EQ(areas.first(2), 0);
    EXPECT_EQ(weightsOf(areas, 2), std::vector{256});
}

class ScaleAreasOf : public testing::TestWithParam<std::pair<int, int>>
{
};

TEST_P(ScaleAreasOf, LieWithinTheLineAndAddUpToOne)
{
    const auto [from, to] = GetParam();
    const ScaleAreas areas(from, to);
    for (int i = 0; i < to; ++i) {
        const std::vector<int> weights = weightsOf(areas, i);
        EXPECT_EQ(std::accumulate(weights.begin(), weights.end(), 0), 256);
        EXPECT_GE(areas.first(i), 0);
        EXPECT_LE(areas.first(i) + areas.length(), from);
    }
}

INSTANTIATE_TEST_SUITE_P(Lengths, ScaleAreasOf,
                         testing::Values(std::pair{320, 240}, std::pair{500, 240},
                                         std::pair{241, 240}, std::pair{240, 241}, std::pair{2, 3},
                                         std::pair{7, 5}, std::pair{9999, 7}, std::pair{30000, 1},
                                         std::pair{1, 1}));

} // namespace
} // namespace velmora
