// Where cells, frames and zoom image are, and how they look.
#include "ui/ContactSheet.h"

#include "BrowserWindowHouse.h"
#include "ui/SheetLayout.h"

#include <QLayout>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr int kTwips = 15; // a pixel

struct CellRow
{
    int left; // twips
    int top;
};

constexpr CellRow kCellPlaces[kCells] = {{0, 0},       {3600, 0},    {7200, 0}, {0, 2700},
                                         {3600, 2700}, {7200, 2700}, {0, 5400}, {3600, 5400},
                                         {7200, 5400}, {7200, 8100}};

QRect placeInPixels(int cell)
{
    const CellRow &place = kCellPlaces[cell];
    return {place.left / kTwips, place.top / kTwips, 240, 180};
}

TEST(SheetLayout, CellsStandAtTheirPlacesAtTheUsualSize)
{
    const SheetLayout layout(SheetLayout::kUsual);
    for (int i = 0; i < kCells; ++i) {
        EXPECT_EQ(layout.cell(i), placeInPixels(i)) << i;
    }
}

TEST(SheetLayout, TheZoomImageCoversTheNineCells)
{
    EXPECT_EQ(SheetLayout(SheetLayout::kUsual).zoom(), QRect(0, 0, 721, 542));
}

TEST(SheetLayout, TheControlsFillTheCornerThatTheTenthCellLeaves)
{
    EXPECT_EQ(SheetLayout(SheetLayout::kUsual).controls(), QRect(0, 540, 480, 180));
}

TEST(SheetLayout, GrowsInProportion)
{
    const SheetLayout layout(SheetLayout::kUsual * 2);
    for (int i = 0; i < kCells; ++i) {
        const QRect small = placeInPixels(i);
        EXPECT_EQ(layout.cell(i), QRect(small.topLeft() * 2, small.size() * 2)) << i;
    }
    EXPECT_EQ(layout.zoom().size(), QSize(1442, 1084));
}

TEST(SheetLayout, ShrinksInProportionToSixtyHundredths)
{
    const SheetLayout layout(SheetLayout::kSmallest);
    for (int i = 0; i < kCells; ++i) {
        const QRect usual = placeInPixels(i);
        EXPECT_EQ(layout.cell(i), QRect(usual.topLeft() * 0.6, usual.size() * 0.6)) << i;
    }
    EXPECT_EQ(layout.controls(), QRect(0, 324, 288, 108));
}

TEST(SheetLayout, StandsInTheMiddleOfAWideRoom)
{
    const SheetLayout layout({920, 720});
    EXPECT_EQ(layout.cell(0), QRect(100, 0, 240, 180));
    EXPECT_EQ(layout.cell(9), QRect(580, 540, 240, 180));
    EXPECT_EQ(layout.zoom().topLeft(), QPoint(100, 0));
}

TEST(SheetLayout, NeighboursTouchAtEverySize)
{
    for (int width = 720; width < 1000; width += 7) {
        const SheetLayout layout({width, 720 + width % 11});
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 2; ++column) {
                const QRect left = layout.cell(3 * row + column);
                EXPECT_EQ(left.right() + 1, layout.cell(3 * row + column + 1).left()) << width;
            }
        }
        for (int cell = 0; cell < 6; ++cell) {
            EXPECT_EQ(layout.cell(cell).bottom() + 1, layout.cell(cell + 3).top()) << width;
        }
        EXPECT_EQ(layout.cell(8).bottom() + 1, layout.cell(9).top()) << width;
        EXPECT_EQ(layout.cell(8).left(), layout.cell(9).left()) << width;
        EXPECT_EQ(layout.controls().right() + 1, layout.cell(9).left()) << width;
    }
}

TEST(SheetLayout, StaysInsideItsRoom)
{
    for (int width = 1; width < 900; width += 13) {
        const QSize room(width, 900 - width);
        for (int cell = 0; cell < kCells; ++cell) {
            EXPECT_TRUE(QRect(QPoint(), room).contains(SheetLayout(room).cell(cell)) ||
                        SheetLayout(room).cell(cell).isEmpty())
                << width;
        }
    }
}

class ContactSheetTest : public testing::Test
{
protected:
    ContactSheet &sheet() { return house_.find<ContactSheet>(QStringLiteral("contactSheet")); }

    // Makes the window large enough for the sheet to have this size.
    void resizeSheet(QSize size)
    {
        house_.window.resize(house_.window.size() + size - sheet().size());
        house_.settle();
    }

    BrowserWindowHouse house_;
};

TEST_F(ContactSheetTest, TheWindowCannotBeMadeSmallerThanTheSheet)
{
    house_.open();
    house_.window.resize(10, 10);
    house_.settle();
    EXPECT_EQ(sheet().size(), QSize(432, 432));
}

TEST_F(ContactSheetTest, OpensAtItsUsualSize)
{
    house_.open();
    EXPECT_EQ(sheet().size(), QSize(720, 720));
}

TEST_F(ContactSheetTest, TheLineAtTheFootSaysWhatHappenedAlsoWhenItIsSmall)
{
    house_.open();
    auto &line = house_.find<QLabel>(QStringLiteral("txtLog"));
    line.setText(QStringLiteral("Camera 0:3: Couldn't connect to server"));
    resizeSheet({432, 432});
    EXPECT_EQ(sheet().size(), QSize(432, 432));
    EXPECT_GE(line.width(), 90);
}

TEST_F(ContactSheetTest, TheControlsStayInTheirCornerAsItShrinks)
{
    house_.open();
    auto &controls = house_.find<QWidget>(QStringLiteral("controls"));
    const QFont usual = controls.font();
    for (const int side : {680, 640, 560, 500, 432}) {
        resizeSheet({side, side});
        const QSize needed = controls.layout()->minimumSize();
        EXPECT_LE(needed.width(), controls.width()) << side;
        EXPECT_LE(needed.height(), controls.height()) << side;
        EXPECT_LT(controls.font().pointSizeF(), usual.pointSizeF());
    }
    resizeSheet({720, 720});
    EXPECT_EQ(controls.font().pointSizeF(), usual.pointSizeF());
}

TEST_F(ContactSheetTest, CellsAndFramesStandAtTheirPlaces)
{
    house_.open();
    resizeSheet({720, 720});
    for (int i = 0; i < kCells; ++i) {
        EXPECT_EQ(house_.cell(i).geometry(), placeInPixels(i));
        EXPECT_EQ(house_.find<QWidget>(QStringLiteral("Cadre%1").arg(i)).geometry(),
                  placeInPixels(i));
    }
    EXPECT_EQ(house_.find<QWidget>(QStringLiteral("ZoomImage")).geometry(), QRect(0, 0, 721, 542));
}

TEST_F(ContactSheetTest, GrowsWithTheWindow)
{
    house_.open();
    resizeSheet({1080, 1080});
    EXPECT_EQ(house_.cell(9).geometry(), QRect(720, 810, 360, 270));
}

TEST_F(ContactSheetTest, EveryControlHasRoomAtTheSmallestSize)
{
    house_.openOn(3);
    resizeSheet({720, 720});
    auto &controls = house_.find<QWidget>(QStringLiteral("controls"));
    for (const QWidget *const control :
         controls.findChildren<QWidget *>(QRegularExpression(QStringLiteral("^[A-Za-z]+$")))) {
        if (control->isVisible() && control->parentWidget() == &controls) {
            EXPECT_TRUE(controls.rect().contains(control->geometry()))
                << control->objectName().toStdString();
            EXPECT_GE(control->height(), control->minimumSizeHint().height())
                << control->objectName().toStdString();
        }
    }
}

TEST_F(ContactSheetTest, AFrameIsDrawnOnlyAroundTheSelectedCell)
{
    house_.openOn(12);
    const QColor highlight = house_.window.palette().color(QPalette::Highlight);
    ASSERT_EQ(house_.framed(), QList<int>{9});
    for (int i = 0; i < kCells; ++i) {
        const QImage look = sheet().grab(house_.cell(i).geometry()).toImage();
        const QColor corner = look.pixelColor(1, look.height() / 2);
        EXPECT_EQ(corner == highlight, i == 9) << i;
    }
}

TEST_F(ContactSheetTest, TheMouseGoesThroughAFrame)
{
    house_.openOn(12);
    auto &cell = house_.cell(9);
    EXPECT_EQ(sheet().childAt(cell.geometry().center()), &cell);
}

} // namespace
} // namespace velmora::test
