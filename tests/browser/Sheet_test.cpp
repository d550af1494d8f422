// What the cells, their frames and the zoom image show.
#include "browser/Sheet.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velmora {
namespace {

const ImageFile kImage{QStringLiteral("C:\\in\\a\\"), QStringLiteral("20060307_1.jpg")};
const ImageFile kOther{QStringLiteral("C:\\in\\a\\"), QStringLiteral("20060307_2.jpg")};

class SheetTest : public testing::Test
{
protected:
    void fill()
    {
        for (int cell = 0; cell < kCells; ++cell) {
            sheet_.setImage(cell, kImage);
            sheet_.setFrame(cell, FrameStyle::Framed);
        }
    }

    [[nodiscard]] int images() const
    {
        int count = 0;
        for (int cell = 0; cell < kCells; ++cell) {
            count += sheet_.image(cell).isNone() ? 0 : 1;
        }
        return count;
    }

    [[nodiscard]] int frames() const
    {
        int count = 0;
        for (int cell = 0; cell < kCells; ++cell) {
            count += sheet_.frame(cell) == FrameStyle::Framed ? 1 : 0;
        }
        return count;
    }

    Sheet sheet_;
};

TEST_F(SheetTest, IsEmptyPlainAndWithoutZoomAtFirst)
{
    EXPECT_EQ(images(), 0);
    EXPECT_EQ(frames(), 0);
    EXPECT_FALSE(sheet_.isZoomVisible());
}

TEST_F(SheetTest, TellsWhichCellChanged)
{
    const QSignalSpy imageChanges(&sheet_, &Sheet::imageChanged);
    const QSignalSpy frameChanges(&sheet_, &Sheet::frameChanged);
    sheet_.setImage(3, kImage);
    sheet_.setFrame(9, FrameStyle::Framed);
    ASSERT_EQ(imageChanges.size(), 1);
    EXPECT_EQ(imageChanges[0][0].toInt(), 3);
    ASSERT_EQ(frameChanges.size(), 1);
    EXPECT_EQ(frameChanges[0][0].toInt(), 9);
}

TEST_F(SheetTest, FramesAsTheFramesPropertyHasIt)
{
    EXPECT_EQ(static_cast<int>(FrameStyle::Plain), 0);
    EXPECT_EQ(static_cast<int>(FrameStyle::Framed), 1);
}

TEST_F(SheetTest, EmptiesEveryCellAndTakesEveryFrameAway)
{
    fill();
    sheet_.EffaceVue();
    EXPECT_EQ(images(), 0);
    EXPECT_EQ(frames(), 0);
}

TEST_F(SheetTest, EmptiesCellsAndLeavesFrames)
{
    fill();
    sheet_.clearImages();
    EXPECT_EQ(images(), 0);
    EXPECT_EQ(frames(), kCells);
}

TEST_F(SheetTest, TakesFramesAwayAndLeavesImages)
{
    fill();
    sheet_.clearFrames();
    EXPECT_EQ(images(), kCells);
    EXPECT_EQ(frames(), 0);
}

TEST_F(SheetTest, LaysTheZoomImageOver)
{
    const QSignalSpy changes(&sheet_, &Sheet::zoomChanged);
    sheet_.showZoom(kImage);
    EXPECT_TRUE(sheet_.isZoomVisible());
    EXPECT_EQ(sheet_.zoomed(), kImage);
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(SheetTest, HidesAndEmptiesTheZoomImageTogether)
{
    sheet_.showZoom(kImage);
    const QSignalSpy changes(&sheet_, &Sheet::zoomChanged);
    sheet_.hideZoom();
    EXPECT_FALSE(sheet_.isZoomVisible());
    EXPECT_TRUE(sheet_.zoomed().isNone());
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(SheetTest, LetsAVisibleZoomImageFollow)
{
    sheet_.showZoom(kImage);
    sheet_.followZoom(kOther);
    EXPECT_EQ(sheet_.zoomed(), kOther);
}

TEST_F(SheetTest, LeavesAHiddenZoomImageHiddenAndEmpty)
{
    sheet_.followZoom(kOther);
    EXPECT_FALSE(sheet_.isZoomVisible());
    EXPECT_TRUE(sheet_.zoomed().isNone());
}

} // namespace
} // namespace velmora
