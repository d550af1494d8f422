// Pictures at the size at which they are shown.
#include "pictures/PictureReader.h"

#include "PictureMaker.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace test;

constexpr QSize kCell(240, 180);

QSize decodedSize(QSize stored, const PictureWish &wish, const char *format = "jpg")
{
    const QImage image = decodePicture(encoded(quarters(stored), format), wish);
    EXPECT_EQ(cornersOf(image), kCorners);
    return image.size();
}

TEST(PictureReader, GivesItsOwnSizeWhenNoneIsWished)
{
    EXPECT_EQ(decodedSize({333, 222}, {}), QSize(333, 222));
    EXPECT_EQ(decodedSize({333, 222}, {{0, 180}, Fit::Stretch}), QSize(333, 222));
}

TEST(PictureReader, StretchesToExactlyTheShownSize)
{
    EXPECT_EQ(decodedSize({640, 480}, {kCell, Fit::Stretch}), kCell);
    EXPECT_EQ(decodedSize({1921, 1083}, {kCell, Fit::Stretch}), kCell);
    EXPECT_EQ(decodedSize({1000, 100}, {kCell, Fit::Stretch}), kCell);
    EXPECT_EQ(decodedSize({640, 480}, {kCell, Fit::Stretch}, "png"), kCell);
}

TEST(PictureReader, LeavesSmallPicturesToThePainter)
{
    EXPECT_EQ(decodedSize({64, 48}, {kCell, Fit::Stretch}), QSize(64, 48));
}

TEST(PictureReader, KeepsTheShape)
{
    EXPECT_EQ(decodedSize({1920, 1080}, {kCell, Fit::KeepShape}), QSize(240, 135));
    EXPECT_EQ(decodedSize({480, 960}, {kCell, Fit::KeepShape}, "bmp"), QSize(90, 180));
}

TEST(PictureReader, NeverEnlarges)
{
    EXPECT_EQ(decodedSize({64, 48}, {kCell, Fit::KeepShape}), QSize(64, 48));
    EXPECT_EQ(decodedSize({64, 48}, {kCell, Fit::AtLeast}), QSize(64, 48));
}

TEST(PictureReader, ReducesAJpegByHalvesWhenThePainterScales)
{
    EXPECT_EQ(decodedSize({1920, 1440}, {kCell, Fit::AtLeast}), QSize(240, 180));
    EXPECT_EQ(decodedSize({1600, 1200}, {kCell, Fit::AtLeast}), QSize(400, 300));
    EXPECT_EQ(decodedSize({640, 480}, {kCell, Fit::AtLeast}), QSize(320, 240));
    EXPECT_EQ(decodedSize({479, 359}, {kCell, Fit::AtLeast}), QSize(479, 359));
}

TEST(PictureReader, ReducesAJpegOfAnOddSizeByHalvesToo)
{
    EXPECT_EQ(decodedSize({1927, 1447}, {kCell, Fit::AtLeast}), QSize(240, 180));
    EXPECT_EQ(decodedSize({963, 723}, {kCell, Fit::AtLeast}), QSize(240, 180));
    EXPECT_EQ(decodedSize({641, 481}, {kCell, Fit::AtLeast}), QSize(320, 240));
}

// Stripes as wide as the decoder's blocks: a column left out or repeated shows.
TEST(PictureReader, LeavesNoColumnOutOfAJpegOfAnOddSize)
{
    QImage stripes(1927, 1447, QImage::Format_RGB32);
    for (int x = 0; x < stripes.width(); ++x) {
        for (int y = 0; y < stripes.height(); ++y) {
            stripes.setPixel(x, y, x / 8 % 2 == 0 ? 0xFF000000 : 0xFFFFFFFF);
        }
    }
    const QImage image = decodePicture(encoded(stripes, "jpg"), {kCell, Fit::AtLeast});
    for (int x = 0; x < image.width(); ++x) {
        EXPECT_EQ(qGreen(image.pixel(x, 90)) > 128, x % 2 == 1) << x;
    }
}

TEST(PictureReader, GivesOtherFormatsWholeWhenThePainterScales)
{
    EXPECT_EQ(decodedSize({640, 480}, {kCell, Fit::AtLeast}, "png"), QSize(640, 480));
}

TEST(PictureReader, AveragesWhatItReduces)
{
    QImage stripes(480, 360, QImage::Format_RGB32);
    for (int x = 0; x < stripes.width(); ++x) {
        for (int y = 0; y < stripes.height(); ++y) {
            stripes.setPixel(x, y, x % 2 == 0 ? 0xFF000000 : 0xFFFFFFFF);
        }
    }
    const QImage image = decodePicture(encoded(stripes, "png"), {kCell, Fit::Stretch});
    EXPECT_EQ(image.pixel(100, 100), 0xFF808080);
}

TEST(PictureReader, ReadsAFileWhateverItsName)
{
    const TempTree tree;
    tree.write(u"\u00e9t\u00e9 1jpg", encoded(quarters({320, 240}), "png"));
    const QImage image = readPicture(tree.path(u"\u00e9t\u00e9 1jpg"), {kCell, Fit::KeepShape});
    EXPECT_EQ(image.size(), kCell);
    EXPECT_EQ(cornersOf(image), kCorners);
}

TEST(PictureReader, FindsNoPictureInAMissingFile)
{
    EXPECT_TRUE(readPicture(TempTree().path(u"none.jpg"), {}).isNull());
}

} // namespace
} // namespace velmora
