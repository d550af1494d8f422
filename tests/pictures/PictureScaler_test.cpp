// A picture scaled to a size.
#include "pictures/PictureScaler.h"

#include "PictureMaker.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace test;

QImage pixels(QSize size, std::initializer_list<QRgb> colours,
              QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    int at = 0;
    for (const QRgb colour : colours) {
        reinterpret_cast<QRgb *>(image.scanLine(at / size.width()))[at % size.width()] = colour;
        ++at;
    }
    return image;
}

TEST(PictureScaler, AveragesFourPixelsIntoOne)
{
    const QImage image = pixels({2, 2}, {0xFF000000, 0xFF402000, 0xFF804080, 0xFFC0A080});
    EXPECT_EQ(averaged(image, {1, 1}), pixels({1, 1}, {0xFF604040}));
}

TEST(PictureScaler, WeighsPixelsByTheirPart)
{
    const QImage image = pixels({3, 1}, {0xFF000000, 0xFF300000, 0xFFFF0000});
    EXPECT_EQ(averaged(image, {2, 1}), pixels({2, 1}, {0xFF100000, 0xFFBA0000}));
}

TEST(PictureScaler, RoundsHalvesUp)
{
    const QImage row = pixels({2, 1}, {0xFF000000, 0xFF010101});
    const QImage column = pixels({1, 2}, {0xFF000000, 0xFF010101});
    EXPECT_EQ(averaged(row, {1, 1}), pixels({1, 1}, {0xFF010101}));
    EXPECT_EQ(averaged(column, {1, 1}), pixels({1, 1}, {0xFF010101}));
}

TEST(PictureScaler, AveragesTransparencyLikeAColour)
{
    constexpr auto kFormat = QImage::Format_ARGB32_Premultiplied;
    const QImage image = pixels({2, 1}, {0x00000000, 0xFF800000}, kFormat);
    EXPECT_EQ(averaged(image, {1, 1}), pixels({1, 1}, {0x80400000}, kFormat));
}

TEST(PictureScaler, RepeatsPixelsWhereThePictureIsSmaller)
{
    const QImage image = pixels({2, 1}, {0xFF102030, 0xFF405060});
    EXPECT_EQ(averaged(image, {4, 2}),
              pixels({4, 2}, {0xFF102030, 0xFF102030, 0xFF405060, 0xFF405060, 0xFF102030,
                              0xFF102030, 0xFF405060, 0xFF405060}));
}

class PlainPicture : public testing::TestWithParam<std::pair<QSize, QSize>>
{
};

// White would overflow, black underflow.
TEST_P(PlainPicture, StaysPlain)
{
    for (const QRgb colour : {0xFFFFFFFF, 0xFF000000, 0xFF01FE7F}) {
        QImage image(GetParam().first, QImage::Format_RGB32);
        image.fill(colour);
        QImage expected(GetParam().second, QImage::Format_RGB32);
        expected.fill(colour);
        EXPECT_EQ(averaged(image, GetParam().second), expected);
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, PlainPicture,
                         testing::Values(std::pair{QSize(320, 240), QSize(240, 180)},
                                         std::pair{QSize(1000, 7), QSize(3, 5)},
                                         std::pair{QSize(9, 33), QSize(7, 31)},
                                         std::pair{QSize(1, 1), QSize(9, 9)},
                                         std::pair{QSize(2000, 1), QSize(1, 1)}));

TEST(PictureScaler, KeepsEveryPartInItsPlace)
{
    EXPECT_EQ(cornersOf(averaged(quarters({333, 111}), {77, 55})), kCorners);
}

TEST(PictureScaler, GivesNothingAtASizeThatNoImageCanHave)
{
    EXPECT_TRUE(averaged(quarters({2, 2}), {2000000000, 2}).isNull());
}

} // namespace
} // namespace velmora
