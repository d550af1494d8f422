// Where a window's frame may be.
#include "ui/FrameReach.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

constexpr QRect kScreen{0, 0, 1280, 720};
constexpr QRect kRight{1280, 100, 1000, 600};
constexpr int kTitle = 20;

struct ReachRow
{
    const char *name;
    QRect frame;
    int titleHeight;
    QPoint corner;
};

void PrintTo(const ReachRow &row, std::ostream *out)
{
    *out << row.name;
}

class CornerInReach : public testing::TestWithParam<ReachRow>
{
};

TEST_P(CornerInReach, IsTheNearestWhereTheTitleBarIs)
{
    EXPECT_EQ(cornerInReach(GetParam().frame, GetParam().titleHeight, {kScreen, kRight}),
              GetParam().corner);
}

const ReachRow kRows[] = {
    {"AsStored", {40, 20, 700, 500}, kTitle, {40, 20}},
    {"AtTheCorner", {0, 0, 700, 500}, kTitle, {0, 0}},
    {"AboveTheScreen", {40, -1, 700, 500}, kTitle, {40, 0}},
    {"FarAbove", {40, -500, 700, 500}, kTitle, {40, 0}},
    {"PartlyLeft", {-500, 20, 700, 500}, kTitle, {-500, 20}},
    {"FarLeft", {-2000, 20, 700, 500}, kTitle, {-600, 20}},
    {"BelowTheScreen", {40, 710, 700, 500}, kTitle, {40, 700}},
    {"AtTheLowerEdge", {40, 700, 700, 500}, kTitle, {40, 700}},
    {"OnTheOtherScreen", {1300, 110, 700, 500}, kTitle, {1300, 110}},
    {"AboveTheOtherScreen", {1300, 50, 700, 500}, kTitle, {1300, 100}},
    {"RightOfBoth", {5000, 200, 700, 500}, kTitle, {2180, 200}},
    {"NarrowWindow", {-60, 20, 50, 50}, kTitle, {0, 20}},
    {"WithoutTitleBarAbove", {40, -10, 700, 500}, 0, {40, -10}},
    {"WithoutTitleBarOutOfSight", {40, -600, 700, 500}, 0, {40, 0}},
};

INSTANTIATE_TEST_SUITE_P(FrameReach, CornerInReach, testing::ValuesIn(kRows),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(CornerInReachOfAScreen, ThatIsLowerThanTheTitleBarIsItsTop)
{
    EXPECT_EQ(cornerInReach({40, -30, 700, 500}, 42, {QRect(0, 0, 1280, 30)}), QPoint(40, 0));
}

} // namespace
} // namespace velmora
