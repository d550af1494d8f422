// Files that are not pictures, broken ones, and ones made to exhaust whatever opens them.
#include "PictureMaker.h"
#include "pictures/PictureReader.h"

#include <QBuffer>
#include <QImageWriter>
#include <QtEndian>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <sys/resource.h>

namespace velmora {
namespace {

using namespace test;

constexpr PictureWish kThumbnail = {{240, 180}, Fit::Stretch};

bool holdsNoPicture(const QByteArray &bytes)
{
    return decodePicture(bytes, kThumbnail).isNull() && decodePicture(bytes, {}).isNull();
}

QByteArray jpeg(Progressive progressive = Progressive::No)
{
    return encoded(quarters({320, 240}), "jpg", progressive);
}

QImage noise(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixel(x, y, qRgb(x * 7 % 256, y * 5 % 256, x * y % 256));
        }
    }
    return image;
}

TEST(HostilePicture, IsNoneInOtherFiles)
{
    EXPECT_TRUE(holdsNoPicture({}));
    EXPECT_TRUE(holdsNoPicture("<html>404</html>"));
    EXPECT_TRUE(holdsNoPicture(QByteArray(100000, '\0')));
    EXPECT_TRUE(holdsNoPicture(encoded(quarters({32, 32}), "ppm")));
    EXPECT_TRUE(holdsNoPicture(encoded(quarters({32, 32}), "ico")));
}

TEST(HostilePicture, IsNoneInABeginningAlone)
{
    for (const char *const format : {"jpg", "png", "bmp", "webp"}) {
        EXPECT_TRUE(holdsNoPicture(encoded(quarters({320, 240}), format).first(20))) << format;
    }
    EXPECT_TRUE(holdsNoPicture(animatedGif().first(12)));
}

TEST(HostilePicture, ShowsWhatThereIsOfAJpegThatBreaksOff)
{
    const QByteArray whole = jpeg();
    const QImage image = decodePicture(whole.first(whole.size() * 6 / 10), {});
    ASSERT_EQ(image.size(), QSize(320, 240));
    EXPECT_EQ(cornersOf(image)[0], Qt::red);
    EXPECT_EQ(cornersOf(image)[1], Qt::green);
}

// A BMP starts with its lowest line.
TEST(HostilePicture, ShowsWhatThereIsOfAnotherFormatThatBreaksOff)
{
    for (const char *const format : {"png", "bmp", "webp"}) {
        const QByteArray whole = encoded(noise({320, 240}), format);
        const QImage all = decodePicture(whole, {});
        const QImage part = decodePicture(whole.first(whole.size() * 6 / 10), {});
        ASSERT_EQ(part.size(), all.size()) << format;
        const int y = format == std::string_view("bmp") ? 200 : 40;
        EXPECT_EQ(part.copy(0, y, 320, 8), all.copy(0, y, 320, 8)) << format;
        EXPECT_NE(part, all) << format;
    }
}

QByteArray losslessWebp(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "webp");
    writer.setQuality(100);
    writer.write(image);
    return bytes;
}

TEST(HostilePicture, ShowsTheLinesThatThereAreOfALosslessWebpThatBreaksOff)
{
    const QByteArray whole = losslessWebp(noise({320, 240}));
    ASSERT_EQ(whole.sliced(12, 4), "VP8L");
    const QImage all = decodePicture(whole, {});
    const QImage part = decodePicture(whole.first(whole.size() * 6 / 10), {});
    ASSERT_EQ(part.size(), all.size());
    EXPECT_EQ(part.copy(0, 0, 320, 80), all.copy(0, 0, 320, 80));
    EXPECT_EQ(part.pixelColor(160, 239), QColor(Qt::black));
}

TEST(HostilePicture, LeavesTheRestOfATransparentLosslessWebpEmpty)
{
    QImage glass = noise({320, 240}).convertToFormat(QImage::Format_ARGB32);
    glass.setPixel(0, 0, qRgba(10, 20, 30, 128));
    const QByteArray whole = losslessWebp(glass);
    const QImage all = decodePicture(whole, {});
    const QImage part = decodePicture(whole.first(whole.size() * 6 / 10), {});
    ASSERT_EQ(part.size(), all.size());
    EXPECT_EQ(part.copy(0, 0, 320, 80), all.copy(0, 0, 320, 80));
    EXPECT_EQ(part.pixelColor(160, 239), QColor(Qt::transparent));
}

// None of them may hold up or end the program, whatever can be seen of it.
TEST(HostilePicture, TakesALosslessWebpThatBreaksOffAnywhere)
{
    const QByteArray whole = losslessWebp(noise({64, 48}));
    for (qsizetype size = 0; size < whole.size(); size += 7) {
        const QImage part = decodePicture(whole.first(size), {});
        EXPECT_TRUE(part.isNull() || part.size() == QSize(64, 48)) << size;
    }
}

TEST(HostilePicture, ShowsWhatThereIsOfASmallPngThatBreaksOff)
{
    const QByteArray whole = encoded(noise({40, 30}), "png");
    const QImage all = decodePicture(whole, {});
    const QImage part = decodePicture(whole.first(whole.size() * 6 / 10), {});
    ASSERT_EQ(part.size(), all.size());
    EXPECT_EQ(part.copy(0, 0, 40, 8), all.copy(0, 0, 40, 8));
    EXPECT_NE(part, all);
}

/// The greatest distance between the colours of two pictures.
int distance(const QImage &one, const QImage &other)
{
    int most = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            most = std::max({most, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                             std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return most;
}

TEST(HostilePicture, ShowsAPngInPassesCoarselyWhereItBreaksOff)
{
    QImage slope({320, 240}, QImage::Format_RGB32);
    for (int y = 0; y < slope.height(); ++y) {
        for (int x = 0; x < slope.width(); ++x) {
            slope.setPixel(x, y, qRgb(x / 2, y, (x + y) / 3));
        }
    }
    const QByteArray whole = pngInPasses(slope);
    EXPECT_EQ(distance(decodePicture(whole, {}), slope), 0);
    for (const int tenths : {2, 4, 6, 8}) {
        const QImage part = decodePicture(whole.first(whole.size() * tenths / 10), {});
        ASSERT_EQ(part.size(), slope.size());
        EXPECT_GT(distance(part, slope), 0);
        EXPECT_LE(distance(part, slope), 8) << tenths;
    }
}

TEST(HostilePicture, LeavesNoTraceOfMemoryWhereItBreaksOff)
{
    const QByteArray whole = encoded(noise({320, 240}), "bmp");
    const QByteArray half = whole.first(whole.size() / 2);
    EXPECT_EQ(decodePicture(half, {}).pixel(5, 5), 0xFF000000);
}

struct BombRow
{
    const char *name;
    QByteArray bytes;
};

class PixelBomb : public testing::TestWithParam<BombRow>
{
};

qint64 peakKilobytes()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST_P(PixelBomb, IsRefusedWithoutSpendingMemory)
{
    const qint64 before = peakKilobytes();
    EXPECT_TRUE(holdsNoPicture(GetParam().bytes));
    EXPECT_LT(peakKilobytes() - before, 32 * 1024);
}

QByteArray bmpClaiming(QSize size)
{
    QByteArray bmp = encoded(quarters({32, 32}), "bmp");
    qToLittleEndian(size.width(), bmp.data() + 18);
    qToLittleEndian(size.height(), bmp.data() + 22);
    return bmp;
}

QByteArray gifClaiming(QSize size)
{
    QByteArray gif = animatedGif();
    qToLittleEndian(static_cast<quint16>(size.width()), gif.data() + 6);
    qToLittleEndian(static_cast<quint16>(size.height()), gif.data() + 8);
    return gif;
}

constexpr QSize kHuge(30000, 30000);
constexpr QSize kNone(0, 0);

INSTANTIATE_TEST_SUITE_P(
    Sizes, PixelBomb,
    testing::Values(BombRow{"Jpeg", claiming(jpeg(), kHuge)},
                    BombRow{"ProgressiveJpeg", claiming(jpeg(Progressive::Yes), kHuge)},
                    BombRow{"JpegJustTooLarge", claiming(jpeg(), {8192, 8193})},
                    BombRow{"JpegTurned", withOrientation(claiming(jpeg(), kHuge), 6)},
                    BombRow{"Png", claiming(encoded(quarters({32, 32}), "png"), kHuge)},
                    BombRow{"PngBeyondNumbers",
                            claiming(encoded(quarters({32, 32}), "png"), {0x7FFFFFFF, 0x7FFFFFFF})},
                    BombRow{"Bmp", bmpClaiming(kHuge)},
                    BombRow{"BmpUpsideDown", bmpClaiming({30000, -30000})},
                    BombRow{"BmpNegativeWidth", bmpClaiming({-32, 32})},
                    BombRow{"Gif", gifClaiming(kHuge)},
                    BombRow{"JpegOfNoSize", claiming(jpeg(), kNone)},
                    BombRow{"PngOfNoSize", claiming(encoded(quarters({32, 32}), "png"), kNone)},
                    BombRow{"BmpOfNoSize", bmpClaiming(kNone)}),
    [](const auto &row) { return row.param.name; });

TEST(HostilePicture, MayHave64MebipixelsAtMost)
{
    EXPECT_EQ(decodePicture(claiming(jpeg(), {8192, 8192}), kThumbnail).size(), QSize(240, 180));
}

// Each scan goes over all coefficients: 64 scans of 16 Mi pixels are the limit.
QByteArray jpegWithScans(int scans)
{
    QByteArray picture = claiming(jpeg(Progressive::Yes), {4096, 4096});
    const qsizetype first = picture.indexOf("\xFF\xDA");
    const QByteArray head =
        picture.sliced(first, 2 + qFromBigEndian<quint16>(picture.constData() + first + 2));
    return picture.insert(first, head.repeated(scans - 10));
}

TEST(HostilePicture, HasABoundedNumberOfScans)
{
    EXPECT_FALSE(decodePicture(jpegWithScans(64), kThumbnail).isNull());
    EXPECT_TRUE(decodePicture(jpegWithScans(65), kThumbnail).isNull());
}

TEST(HostilePicture, CannotUnpackTextsOfAPng)
{
    QByteArray png = encoded(quarters({32, 32}), "png");
    const QByteArray text =
        QByteArray("k\0\0", 3) + qCompress(QByteArray(7'000'000, 'x')).sliced(4);
    png.insert(33, pngChunk("zTXt", text).repeated(30));
    const qint64 before = peakKilobytes();
    const QImage image = decodePicture(png, {});
    EXPECT_EQ(cornersOf(image), kCorners);
    EXPECT_TRUE(image.textKeys().isEmpty());
    EXPECT_LT(peakKilobytes() - before, 32 * 1024);
}

} // namespace
} // namespace velmora
