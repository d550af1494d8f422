// Whether a JPEG is complete, judging by its markers.
#include "pictures/JpegStream.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

QByteArray picture()
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "jpeg");
    return bytes;
}

TEST(JpegStream, KnowsSizeAndLengthOfAWholePicture)
{
    const QByteArray bytes = picture();
    const auto stream = jpegStream(bytes + QByteArray(100, '\0'));
    ASSERT_TRUE(stream);
    EXPECT_EQ(stream->size, QSize(40, 30));
    EXPECT_EQ(stream->bytes, bytes.size());
    EXPECT_TRUE(stream->isPlain);
    EXPECT_FALSE(stream->isTagged);
}

TEST(JpegStream, IsNoneWhereverItBreaksOff)
{
    const QByteArray bytes = picture();
    for (qsizetype length = 0; length < bytes.size(); ++length) {
        EXPECT_FALSE(jpegStream(bytes.first(length))) << length;
    }
}

TEST(JpegStream, IsNoneOfAnotherFile)
{
    EXPECT_FALSE(jpegStream("<html>no picture here</html>"));
    EXPECT_FALSE(jpegStream(QByteArray(5000, '\xff')));
    EXPECT_FALSE(jpegStream(QByteArray("\xff\xd8\xff\xd9")));
}

} // namespace
} // namespace velmora::test
