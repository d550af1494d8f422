#include "pictures/PictureReader.h"

#include "base/PictureFormat.h"
#include "pictures/BmpLength.h"
#include "pictures/JpegScans.h"
#include "pictures/PictureFile.h"
#include "pictures/PictureScaler.h"
#include "pictures/PictureSize.h"
#include "pictures/PngChunks.h"

#include <QBuffer>
#include <QImageReader>

namespace velmora {
namespace {

constexpr qint64 kMaxPixels = qint64{64} * 1024 * 1024;
constexpr int kMaxImageMegabytes = 256; // of kMaxPixels in 32 bits
constexpr qint64 kMaxScannedPixels = 16 * kMaxPixels;

// Below 50 Qt's JPEG decoder takes the fast transform and the merged upsampling. The difference is
// smaller than what the reduction takes away.
constexpr int kReducedQuality = 40;

bool isBearable(QSize stored)
{
    return !stored.isEmpty() && qint64{stored.width()} * stored.height() <= kMaxPixels;
}

// A few bytes can ask the decoder to go through all coefficients once more.
bool isBearableJpeg(const QByteArray &bytes, QSize stored)
{
    const qint64 pixels = qint64{stored.width()} * stored.height();
    return pixels * countJpegScans(bytes) <= kMaxScannedPixels;
}

QImage forPainting(QImage image)
{
    const QImage::Format format =
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    image.convertTo(format);
    return image;
}

// The decoder reduces by clipping: asked for a size alone it takes the next larger fraction when
// the size is rounded. So up to seven pixels at the right and lower edge are left out.
void reduce(QImageReader &reader, QSize stored, QSize needed)
{
    const int divisor = jpegDivisor(stored, needed);
    if (divisor > 1) {
        const QSize reduced(stored.width() / divisor, stored.height() / divisor);
        reader.setClipRect(QRect(QPoint(0, 0), reduced * divisor));
        reader.setScaledSize(reduced);
    }
    if (needed != stored) {
        reader.setQuality(kReducedQuality);
    }
}

QImage decode(QImageReader &reader, const QByteArray &bytes, const PictureWish &wish)
{
    const QSize stored = reader.size();
    if (!isBearable(stored)) {
        return {};
    }
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize wanted = wantedSize(turned ? stored.transposed() : stored, wish);
    if (reader.format() == kJpegFormat) {
        if (!isBearableJpeg(bytes, stored)) {
            return {};
        }
        reduce(reader, stored, turned ? wanted.transposed() : wanted);
    }
    const QImage image = forPainting(reader.read());
    const bool isDone = image.isNull() || image.size() == wanted || wish.fit == Fit::AtLeast;
    return isDone ? image : averaged(image, wanted);
}

} // namespace

QImage decodePicture(const QByteArray &bytes, const PictureWish &wish)
{
    const QByteArray format = pictureFormat(bytes);
    if (format.isEmpty() || (format == kBmpFormat && !isWholeBmp(bytes))) {
        return {};
    }
    QBuffer buffer;
    buffer.setData(format == kPngFormat ? paintedPngChunks(bytes) : bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader::setAllocationLimit(kMaxImageMegabytes);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    return decode(reader, bytes, wish);
}

QImage readPicture(const QString &path, const PictureWish &wish)
{
    return decodePicture(PictureFile(path).read(), wish);
}

} // namespace velmora
