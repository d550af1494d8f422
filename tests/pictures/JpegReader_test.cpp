// Ordinary JPEGs come out as the toolkit's reader has them, pixel by pixel.
#include "pictures/JpegReader.h"

#include "PictureMaker.h"
#include "pictures/JpegStream.h"

#include <QBuffer>
#include <QImageReader>

#include <gtest/gtest.h>

#include <tuple>

namespace velmora {
namespace {

using namespace test;

constexpr int kRoughQuality = 40;

QImage slope(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixel(x, y,
                           qRgb(x * 255 / size.width(), y * 255 / size.height(), x * y % 256));
        }
    }
    return image;
}

QImage asTheToolkitReads(QByteArray bytes, QSize stored, int divisor, JpegCare care)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "jpg");
    const QSize reduced(stored.width() / divisor, stored.height() / divisor);
    reader.setClipRect(QRect(QPoint(0, 0), reduced * divisor));
    reader.setScaledSize(reduced);
    reader.setQuality(care == JpegCare::Rough ? kRoughQuality : -1);
    return reader.read().convertToFormat(QImage::Format_RGB32);
}

enum class Kind { Colour, Grey, Progressive };

class ReadJpeg : public testing::TestWithParam<std::tuple<QSize, int, JpegCare, Kind>>
{
};

TEST_P(ReadJpeg, GivesThePixelsOfTheToolkit)
{
    const auto [size, divisor, care, kind] = GetParam();
    const QImage picture = slope(size);
    const QByteArray bytes =
        encoded(kind == Kind::Grey ? picture.convertToFormat(QImage::Format_Grayscale8) : picture,
                "jpg", kind == Kind::Progressive ? Progressive::Yes : Progressive::No);
    const QImage image = readJpeg(bytes, size, divisor, care);
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    EXPECT_EQ(image, asTheToolkitReads(bytes, size, divisor, care));
}

INSTANTIATE_TEST_SUITE_P(
    Jpegs, ReadJpeg,
    testing::Combine(testing::Values(QSize(8, 8), QSize(64, 48), QSize(333, 251)),
                     testing::Values(1, 2, 4, 8), testing::Values(JpegCare::Full, JpegCare::Rough),
                     testing::Values(Kind::Colour, Kind::Grey, Kind::Progressive)));

constexpr QSize kSize(320, 160);

QByteArray jpeg()
{
    return encoded(quarters(kSize), "jpg");
}

TEST(JpegReader, FillsTheUnusedByte)
{
    const QImage image = readJpeg(jpeg(), kSize, 1, JpegCare::Full);
    EXPECT_EQ(qAlpha(*reinterpret_cast<const QRgb *>(image.constScanLine(0))), 255);
}

TEST(JpegReader, ReducesNothingBelowAPixel)
{
    EXPECT_TRUE(readJpeg(encoded(quarters({4, 40}), "jpg"), {4, 40}, 8, JpegCare::Rough).isNull());
}

// A second frame in the file may claim any size; memory goes by the one that is decoded.
TEST(JpegReader, DecodesNoOtherSizeThanTheOneThatWasJudged)
{
    EXPECT_TRUE(readJpeg(claiming(jpeg(), {60000, 60000}), kSize, 1, JpegCare::Full).isNull());
    EXPECT_FALSE(readJpeg(jpeg(), kSize, 1, JpegCare::Full).isNull());
}

TEST(JpegReader, GivesNothingOfWhatTheDecoderCannotGoOnWith)
{
    QByteArray headOnly = jpeg().first(20);
    EXPECT_TRUE(readJpeg(headOnly, kSize, 1, JpegCare::Full).isNull());
    EXPECT_TRUE(readJpeg("not a picture", kSize, 1, JpegCare::Full).isNull());
    EXPECT_TRUE(readJpeg({}, kSize, 1, JpegCare::Full).isNull());
    QByteArray noTables = jpeg();
    for (qsizetype at = 0; (at = noTables.indexOf("\xff\xdb", at)) >= 0;) {
        noTables[at + 1] = static_cast<char>(0xfe); // a comment instead
    }
    EXPECT_TRUE(readJpeg(noTables, kSize, 1, JpegCare::Full).isNull());
}

} // namespace
} // namespace velmora
