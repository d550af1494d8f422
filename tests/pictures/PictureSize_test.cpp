// The sizes of a picture on its way to the window.
#include "pictures/PictureSize.h"

#include "PictureMaker.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct SizeRow
{
    const char *name;
    QSize own;
    PictureWish wish;
    QSize wanted;
};

class WantedSize : public testing::TestWithParam<SizeRow>
{
};

TEST_P(WantedSize, FollowsTheFit)
{
    EXPECT_EQ(wantedSize(GetParam().own, GetParam().wish), GetParam().wanted);
}

constexpr QSize kCell(240, 180);

INSTANTIATE_TEST_SUITE_P(
    Fits, WantedSize,
    testing::Values(SizeRow{"NoSizeIsItsOwn", {640, 480}, {{}, Fit::Stretch}, {640, 480}},
                    SizeRow{"NoHeightIsItsOwn", {640, 480}, {{240, 0}, Fit::KeepShape}, {640, 480}},
                    SizeRow{"StretchedToTheCell", {1920, 1080}, {kCell, Fit::Stretch}, kCell},
                    SizeRow{"StretchedThoughLow", {1000, 100}, {kCell, Fit::Stretch}, kCell},
                    SizeRow{"SmallLeftToThePainter", {240, 179}, {kCell, Fit::Stretch}, {240, 179}},
                    SizeRow{"KeptInAWideCell", {1920, 1080}, {kCell, Fit::KeepShape}, {240, 135}},
                    SizeRow{"KeptWhenHigh", {480, 960}, {kCell, Fit::KeepShape}, {90, 180}},
                    SizeRow{"NeverEnlarged", {100, 50}, {kCell, Fit::KeepShape}, {100, 50}},
                    SizeRow{"ExactlyTheCell", kCell, {kCell, Fit::KeepShape}, kCell},
                    SizeRow{"NeverWithoutHeight", {10000, 1}, {kCell, Fit::KeepShape}, {240, 1}},
                    SizeRow{
                        "AtLeastThatOfKeepShape", {1920, 1080}, {kCell, Fit::AtLeast}, {240, 135}}),
    [](const auto &row) { return row.param.name; });

struct DivisorRow
{
    const char *name;
    QSize stored;
    QSize needed;
    int divisor;
};

class JpegDivisor : public testing::TestWithParam<DivisorRow>
{
};

TEST_P(JpegDivisor, LeavesAtLeastTheNeededSize)
{
    EXPECT_EQ(jpegDivisor(GetParam().stored, GetParam().needed), GetParam().divisor);
}

INSTANTIATE_TEST_SUITE_P(Sizes, JpegDivisor,
                         testing::Values(DivisorRow{"Eighth", {1920, 1440}, kCell, 8},
                                         DivisorRow{"QuarterJustBelow", {1919, 1440}, kCell, 4},
                                         DivisorRow{"QuarterForTheHeight", {1920, 1439}, kCell, 4},
                                         DivisorRow{"Quarter", {960, 720}, kCell, 4},
                                         DivisorRow{"Half", {640, 480}, kCell, 2},
                                         DivisorRow{"HalfExactly", {480, 360}, kCell, 2},
                                         DivisorRow{"Whole", {479, 360}, kCell, 1},
                                         DivisorRow{"WholeWhenSmaller", {100, 50}, kCell, 1},
                                         DivisorRow{"WholeWhenLow", {4000, 100}, kCell, 1},
                                         DivisorRow{
                                             "NeverBelowAnEighth", {30000, 30000}, {1, 1}, 8}),
                         [](const auto &row) { return row.param.name; });

} // namespace
} // namespace velmora
