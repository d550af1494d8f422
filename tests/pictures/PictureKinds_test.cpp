// The kinds of pictures that cameras and users store.
#include "PictureMaker.h"
#include "pictures/PictureReader.h"

#include <QColorSpace>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace test;

constexpr PictureWish kSmall = {{80, 80}, Fit::KeepShape};

struct KindRow
{
    const char *name;
    QByteArray bytes;
};

class PictureKind : public testing::TestWithParam<KindRow>
{
};

TEST_P(PictureKind, IsRead)
{
    const QImage image = decodePicture(GetParam().bytes, kSmall);
    EXPECT_EQ(image.size(), QSize(80, 40));
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    EXPECT_EQ(cornersOf(image), kCorners);
}

TEST_P(PictureKind, IsReadAtItsOwnSize)
{
    const QImage image = decodePicture(GetParam().bytes, {});
    EXPECT_EQ(image.size(), QSize(320, 160));
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    EXPECT_EQ(cornersOf(image), kCorners);
}

QImage wide()
{
    return quarters({320, 160});
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, PictureKind,
    testing::Values(
        KindRow{"Jpeg", encoded(wide(), "jpg")},
        KindRow{"ProgressiveJpeg", encoded(wide(), "jpg", Progressive::Yes)},
        KindRow{"JpegOfFourInks", cmykJpeg({320, 160})}, KindRow{"Png", encoded(wide(), "png")},
        KindRow{"Png16", encoded(wide().convertToFormat(QImage::Format_RGBX64), "png")},
        KindRow{"PngPalette", encoded(wide().convertToFormat(QImage::Format_Indexed8), "png")},
        KindRow{"Bmp", encoded(wide(), "bmp")},
        KindRow{"BmpPalette", encoded(wide().convertToFormat(QImage::Format_Indexed8), "bmp")},
        KindRow{"BmpFromTheTop", bmpFromTheTop(wide())},
        KindRow{"BmpRunLengthCoded", runLengthBmp(wide())},
        KindRow{"BmpOfVersion4", bmpWithHead(wide(), 108)},
        KindRow{"BmpOfVersion5", bmpWithHead(wide(), 124)},
        KindRow{"Webp", encoded(wide(), "webp")}),
    [](const auto &row) { return row.param.name; });

TEST(PictureKinds, GreyPicturesComeInColourFormat)
{
    QImage grey(320, 160, QImage::Format_Grayscale8);
    grey.fill(77);
    for (const char *const format : {"jpg", "png"}) {
        const QImage image = decodePicture(encoded(grey, format), kSmall);
        EXPECT_EQ(image.format(), QImage::Format_RGB32);
        EXPECT_EQ(image.pixel(40, 20), qRgb(77, 77, 77));
    }
}

TEST(PictureKinds, TransparencyStays)
{
    QImage veil(16, 16, QImage::Format_ARGB32);
    veil.fill(0x80FF0000);
    const QImage image = decodePicture(encoded(veil, "png"), {});
    EXPECT_EQ(image.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(image.pixel(3, 3), 0x80800000);
}

TEST(PictureKinds, AnAnimationShowsItsFirstImage)
{
    const QImage image = decodePicture(animatedGif(), {});
    ASSERT_EQ(image.size(), QSize(1, 1));
    EXPECT_EQ(QRgb{image.pixel(0, 0) | 0xFF000000}, 0xFFFF0000);
}

// A screen of 8 by 6 pixels, with a frame of 3 by 2 at 2, 1.
TEST(PictureKinds, AFrameSmallerThanItsScreenStandsInItsPlace)
{
    const QImage image = decodePicture(smallFrameGif(), {});
    ASSERT_EQ(image.size(), QSize(8, 6));
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 8; ++x) {
            const bool inFrame = QRect(2, 1, 3, 2).contains(x, y);
            EXPECT_EQ(image.pixel(x, y), inFrame ? 0xFFFF0000 : 0x00000000) << x << ' ' << y;
        }
    }
}

TEST(PictureKinds, AProfileIsNotKept)
{
    QImage image = wide();
    image.setColorSpace(QColorSpace(QColorSpace::AdobeRgb));
    EXPECT_FALSE(decodePicture(encoded(image, "png"), {}).colorSpace().isValid());
}

struct TurnRow
{
    int orientation;
    QSize size;
    Corners corners;
};

class Orientation : public testing::TestWithParam<TurnRow>
{
};

constexpr QSize kUpright(40, 80);
constexpr QSize kLying(80, 40);
constexpr auto kR = Qt::red;
constexpr auto kG = Qt::green;
constexpr auto kB = Qt::blue;
constexpr auto kW = Qt::white;

TEST_P(Orientation, IsAppliedAndTheShownSizeIsForTheUprightPicture)
{
    const QByteArray jpeg = withOrientation(encoded(wide(), "jpg"), GetParam().orientation);
    const QImage image = decodePicture(jpeg, kSmall);
    EXPECT_EQ(image.size(), GetParam().size);
    EXPECT_EQ(cornersOf(image), GetParam().corners);
}

TEST_P(Orientation, IsAppliedWhenThePictureIsStretched)
{
    const QByteArray jpeg = withOrientation(encoded(wide(), "jpg"), GetParam().orientation);
    const QImage image = decodePicture(jpeg, {{100, 30}, Fit::Stretch});
    EXPECT_EQ(image.size(), QSize(100, 30));
    EXPECT_EQ(cornersOf(image), GetParam().corners);
}

TEST_P(Orientation, IsAppliedAtTheDecodersSize)
{
    const QByteArray jpeg = withOrientation(encoded(wide(), "jpg"), GetParam().orientation);
    const QImage image = decodePicture(jpeg, {{80, 80}, Fit::AtLeast});
    EXPECT_EQ(image.size(), GetParam().size);
    EXPECT_EQ(cornersOf(image), GetParam().corners);
}

INSTANTIATE_TEST_SUITE_P(
    All, Orientation,
    testing::Values(TurnRow{1, kLying, {kR, kG, kB, kW}}, TurnRow{2, kLying, {kG, kR, kW, kB}},
                    TurnRow{3, kLying, {kW, kB, kG, kR}}, TurnRow{4, kLying, {kB, kW, kR, kG}},
                    TurnRow{5, kUpright, {kR, kB, kG, kW}}, TurnRow{6, kUpright, {kB, kR, kW, kG}},
                    TurnRow{7, kUpright, {kW, kG, kB, kR}}, TurnRow{8, kUpright, {kG, kW, kR, kB}},
                    TurnRow{0, kLying, {kR, kG, kB, kW}}, TurnRow{9, kLying, {kR, kG, kB, kW}}),
    [](const auto &row) { return std::to_string(row.param.orientation); });

} // namespace
} // namespace velmora
