// The look of a picture: the same with any decoder, and nothing has to wait for it.
#include "capture/PictureLook.h"

#include "support/BusyClock.h"
#include "support/FakeClock.h"
#include "support/RunTask.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace velmora::test {
namespace {

constexpr int kCells = 16 * 9;

// Darker to the right, and brighter below.
QImage picture(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const int grey = 120 - 100 * x / size.width() + 120 * y / size.height();
            image.setPixel(x, y, qRgb(grey, grey, grey));
        }
    }
    return image;
}

QByteArray written(const QImage &image, const char *format, bool inScans = false)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QBuffer::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(inScans);
    writer.write(image);
    return bytes;
}

class PictureLook : public testing::Test
{
protected:
    QByteArray cells(const QByteArray &bytes)
    {
        return QByteArray::fromBase64(resultOf(lookOf(bytes, &busy)));
    }

    static int greatestDifference(const QByteArray &a, const QByteArray &b)
    {
        int most = 0;
        for (qsizetype i = 0; i < std::min(a.size(), b.size()); ++i) {
            most = std::max(most, std::abs(static_cast<unsigned char>(a[i]) -
                                           static_cast<unsigned char>(b[i])));
        }
        return most;
    }

    FakeClock clock;
    BusyClock busy{clock};
};

TEST_F(PictureLook, IsTheSameOfEveryFormat)
{
    const QImage image = picture({1600, 900});
    const QByteArray plain = cells(written(image, "png"));
    ASSERT_EQ(plain.size(), kCells);
    EXPECT_GT(static_cast<unsigned char>(plain.front()), static_cast<unsigned char>(plain[15]));
    EXPECT_LT(static_cast<unsigned char>(plain.front()), static_cast<unsigned char>(plain[128]));
    for (const bool inScans : {false, true}) {
        const QByteArray look = cells(written(image, "jpg", inScans));
        ASSERT_EQ(look.size(), kCells);
        EXPECT_LE(greatestDifference(look, plain), 2);
    }
}

TEST_F(PictureLook, LetsEventsRunWhileAJpegIsDecoded)
{
    const QByteArray large = written(picture({4000, 3000}), "jpg");
    cells(large);
    EXPECT_GT(busy.takeYields(), 20);
    cells(written(picture({4000, 3000}), "jpg", true));
    EXPECT_GT(busy.takeYields(), 20);
}

TEST_F(PictureLook, IsWhatThereIsOfAJpegThatBreaksOff)
{
    const QByteArray bytes = written(picture({1600, 900}), "jpg");
    const QByteArray whole = cells(bytes);
    const QByteArray half = cells(bytes.first(bytes.size() / 2));
    EXPECT_EQ(half.first(16), whole.first(16));
    EXPECT_NE(half, whole);
    EXPECT_EQ(cells(bytes.first(40)), QByteArray());
}

TEST_F(PictureLook, IsNoneOfWhatIsNoPicture)
{
    EXPECT_EQ(cells(QByteArray(5000, 'x')), QByteArray());
    EXPECT_EQ(cells(QByteArray()), QByteArray());
}

// A few kilobytes can claim any size; what cannot be decoded bit by bit must not hold the program
// up.
TEST_F(PictureLook, IsNoneOfAPictureThatWouldTakeTooMuchMemory)
{
    QImage blank(2048, 1025, QImage::Format_Grayscale8);
    blank.fill(Qt::white);
    EXPECT_EQ(cells(written(blank, "png")), QByteArray());
    EXPECT_EQ(cells(written(blank.copy(0, 0, 2048, 1024), "png")).size(), kCells);
}

TEST_F(PictureLook, IsNoneOfAJpegInScansThatWouldTakeTooMuchMemory)
{
    QByteArray bytes = written(picture({1600, 900}), "jpg", true);
    ASSERT_EQ(cells(bytes).size(), kCells);
    const qsizetype frame = bytes.indexOf("\xFF\xC2");
    ASSERT_GT(frame, 0);
    bytes.replace(frame + 5, 4, QByteArray("\x20\0\x20\0", 4)); // 8192 lines and columns
    EXPECT_EQ(cells(bytes), QByteArray());
}

TEST_F(PictureLook, IsNoneOfAFormatThatNoCameraUses)
{
    EXPECT_EQ(cells(written(picture({160, 90}), "ppm")), QByteArray());
}

TEST_F(PictureLook, IsAlwaysTheSameOfATinyPicture)
{
    const QByteArray bytes = written(picture({5, 3}), "jpg");
    EXPECT_EQ(cells(bytes).size(), kCells);
    EXPECT_EQ(cells(bytes), cells(bytes));
}

} // namespace
} // namespace velmora::test
