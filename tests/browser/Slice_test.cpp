// Which ten images are on the contact sheet, for every selection in lists of many lengths.
#include "browser/Slice.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct Expected
{
    int count;
    int index;
    int start;
    int frame;
};

class SliceRow : public testing::TestWithParam<Expected>
{
};

TEST_P(SliceRow, StartsAndFramesWhereTheListAllows)
{
    const Expected &row = GetParam();
    const Slice slice = sliceAround(row.index, row.count);
    EXPECT_EQ(slice.start, row.start);
    EXPECT_EQ(slice.frame, row.frame);
}

INSTANTIATE_TEST_SUITE_P(
    Positions, SliceRow,
    testing::Values(
        // Ten at most: the first is in cell 0 whatever is selected.
        Expected{1, 0, 0, 0}, Expected{9, 8, 0, 8}, Expected{10, 0, 0, 0}, Expected{10, 5, 0, 5},
        Expected{10, 9, 0, 9},
        // One more than fits.
        Expected{11, 0, 0, 0}, Expected{11, 4, 0, 4}, Expected{11, 5, 1, 4}, Expected{11, 6, 1, 5},
        Expected{11, 10, 1, 9},
        // Two more: in one position the selected one is centred between the two ends.
        Expected{12, 4, 0, 4}, Expected{12, 5, 1, 4}, Expected{12, 6, 2, 4}, Expected{12, 7, 2, 5},
        Expected{12, 11, 2, 9},
        // Many.
        Expected{120, 0, 0, 0}, Expected{120, 4, 0, 4}, Expected{120, 5, 1, 4},
        Expected{120, 60, 56, 4}, Expected{120, 113, 109, 4}, Expected{120, 114, 110, 4},
        Expected{120, 115, 110, 5}, Expected{120, 119, 110, 9}),
    [](const testing::TestParamInfo<Expected> &info) {
        return "Count" + std::to_string(info.param.count) + "Index" +
               std::to_string(info.param.index);
    });

class SliceCount : public testing::TestWithParam<int>
{
};

// The rule's two thresholds exactly as given, in one line each.
int startByTheRule(int index, int count)
{
    int start = 0;
    if (count > 10) {
        start = index - 6;
        if (start + 13 > count) {
            start = count - 10;
        } else if (start < -1) {
            start = 0;
        } else {
            start = index - 4;
        }
    }
    return start;
}

int frameByTheRule(int index, int count)
{
    const int start = startByTheRule(index, count);
    int framed = -1;
    for (int i = 0; i < 10; ++i) {
        const bool centred = start > 0 && count - index > 5;
        if (centred ? i == 4 : i == index - start) {
            framed = i;
        }
    }
    return framed;
}

TEST_P(SliceCount, FollowsTheRuleForEveryIndex)
{
    const int count = GetParam();
    for (int index = 0; index < count; ++index) {
        const Slice slice = sliceAround(index, count);
        EXPECT_EQ(slice.start, startByTheRule(index, count)) << index;
        EXPECT_EQ(slice.frame, frameByTheRule(index, count)) << index;
    }
}

TEST_P(SliceCount, FramesTheCellInWhichTheSelectedImageStands)
{
    const int count = GetParam();
    for (int index = 0; index < count; ++index) {
        const Slice slice = sliceAround(index, count);
        EXPECT_EQ(slice.start + slice.frame, index);
        EXPECT_TRUE(slice.frame >= 0 && slice.frame < 10) << index;
    }
}

TEST_P(SliceCount, LeavesNoCellEmptyThatTheListCouldFill)
{
    const int count = GetParam();
    for (int index = 0; index < count; ++index) {
        const int start = sliceAround(index, count).start;
        EXPECT_GE(start, 0);
        EXPECT_LE(start, std::max(0, count - 10));
    }
}

INSTANTIATE_TEST_SUITE_P(Lists, SliceCount,
                         testing::Values(1, 2, 9, 10, 11, 12, 13, 14, 15, 16, 20, 120, 3000),
                         testing::PrintToStringParamName());

} // namespace
} // namespace velmora
