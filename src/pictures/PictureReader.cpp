#include "pictures/PictureReader.h"

#include "base/PictureFormat.h"
#include "pictures/BmpPixels.h"
#include "pictures/GifFrame.h"
#include "pictures/JpegReader.h"
#include "pictures/JpegScans.h"
#include "pictures/JpegStream.h"
#include "pictures/PictureFile.h"
#include "pictures/PictureScaler.h"
#include "pictures/PictureSize.h"
#include "pictures/PngChunks.h"
#include "pictures/PngPasses.h"
#include "pictures/WebpPart.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kMaxImageMegabytes = 256; // of kMaxPixels in 32 bits
constexpr qint64 kMaxScannedPixels = 16 * kMaxPixels;

// Below 50, Qt's JPEG decoder uses the fast transform and merged upsampling. The loss is smaller
// than that of the reduction.
constexpr int kReducedQuality = 40;

// A few bytes can make the decoder go through all coefficients once more.
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

// The decoder reduces by clipping: asked for a size alone, it takes the next larger fraction when
// the size is rounded. So up to seven pixels at the right and lower edges are left out.
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

QImage toSize(const QImage &image, QSize wanted, Fit fit)
{
    const bool isDone = image.isNull() || image.size() == wanted || fit == Fit::AtLeast;
    return isDone ? image : averaged(image, wanted);
}

// Nearly all pictures: whole, upright, in the usual form.
QImage decodeOrdinaryJpeg(const QByteArray &bytes, const PictureWish &wish)
{
    const std::optional<JpegStream> stream = jpegStream(bytes);
    if (!stream || !stream->isPlain || stream->isTagged || !isBearable(stream->size) ||
        !isBearableJpeg(bytes, stream->size)) {
        return {};
    }
    const QSize wanted = wantedSize(stream->size, wish);
    const JpegCare care = wanted == stream->size ? JpegCare::Full : JpegCare::Rough;
    const int divisor = jpegDivisor(stream->size, wanted);
    return toSize(readJpeg(bytes, stream->size, divisor, care), wanted, wish.fit);
}

QImage decodeJpeg(QImageReader &reader, const QByteArray &bytes, const PictureWish &wish)
{
    const QSize stored = reader.size();
    if (!isBearable(stored) || !isBearableJpeg(bytes, stored)) {
        return {};
    }
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize wanted = wantedSize(turned ? stored.transposed() : stored, wish);
    reduce(reader, stored, turned ? wanted.transposed() : wanted);
    return toSize(forPainting(reader.read()), wanted, wish.fit);
}

// A BMP's height is negative when its first line is the top one.
QSize upright(QSize stored)
{
    const bool isUpsideDown = stored.height() < 0 && stored.height() > -kMaxPixels;
    return isUpsideDown ? QSize(stored.width(), -stored.height()) : stored;
}

constexpr uint kDark = 0;
constexpr uint kBright = ~kDark;

QImage blank(QSize size, QImage::Format format, uint ground = kDark)
{
    QImage image = format == QImage::Format_Invalid ? QImage() : QImage(size, format);
    image.fill(ground);
    return image;
}

struct Part
{
    QImage image;
    bool isWhole = false;
};

// A truncated picture leaves the rest of the image that it is read into as it was. One of which
// nothing was read does not count.
Part readPart(QImageReader &reader, QSize size, uint ground = kDark)
{
    const QImage::Format format = reader.imageFormat();
    QImage image = blank(size, format, ground);
    const bool isWhole = reader.read(&image);
    const bool isAny = isWhole || image != blank(size, format, ground);
    return {isAny ? image : QImage(), isWhole};
}

QImage readWhatThereIs(QImageReader &reader, const QByteArray &bytes, QSize size)
{
    if (reader.format() == kWebpFormat && isPartOfWebp(bytes)) {
        const QImage lines = linesOfWebp(bytes, size);
        return lines.isNull() ? readPart(reader, size).image : lines;
    }
    const Part part = readPart(reader, size);
    if (part.isWhole || reader.format() != kPngFormat || !comesInPasses(bytes)) {
        return part.image;
    }
    reader.device()->seek(0);
    QImageReader again(reader.device(), reader.format());
    return withPassesFilled(part.image, readPart(again, size, kBright).image);
}

// The decoder fills the rest of the screen with a colour that no other program shows.
QImage onItsScreen(const QImage &image, QRect frame)
{
    if (image.isNull() || frame.contains(image.rect()) || !frame.intersects(image.rect())) {
        return image;
    }
    const QRect seen = frame.intersected(image.rect());
    QImage screen = blank(image.size(), QImage::Format_ARGB32_Premultiplied);
    const QImage shown = image.convertToFormat(screen.format());
    for (int y = seen.top(); y <= seen.bottom(); ++y) {
        const auto *const from = reinterpret_cast<const QRgb *>(shown.constScanLine(y));
        auto *const to = reinterpret_cast<QRgb *>(screen.scanLine(y));
        std::copy(from + seen.left(), from + seen.right() + 1, to + seen.left());
    }
    return screen;
}

QImage decodeOther(QImageReader &reader, const QByteArray &bytes, const PictureWish &wish)
{
    const QSize stored = upright(reader.size());
    if (!isBearable(stored)) {
        return {};
    }
    QImage image = forPainting(readWhatThereIs(reader, bytes, stored));
    if (reader.format() == kGifFormat) {
        image = onItsScreen(image, firstGifFrame(bytes).value_or(image.rect()));
    }
    return toSize(image, wantedSize(image.size(), wish), wish.fit);
}

// The bytes to pass to the decoder.
QByteArray forDecoder(const QByteArray &bytes, const QByteArray &format)
{
    if (format == kPngFormat) {
        return paintedPngChunks(bytes);
    }
    return format == kWebpFormat ? filledWebp(bytes) : bytes;
}

} // namespace

QImage decodePicture(const QByteArray &bytes, const PictureWish &wish)
{
    const QByteArray format = pictureFormat(bytes);
    if (format.isEmpty() || (format == kBmpFormat && !holdsBmpPixels(bytes))) {
        return {};
    }
    if (const QImage image = format == kJpegFormat ? decodeOrdinaryJpeg(bytes, wish) : QImage();
        !image.isNull()) {
        return image;
    }
    QBuffer buffer;
    buffer.setData(forDecoder(bytes, format));
    buffer.open(QIODevice::ReadOnly);
    QImageReader::setAllocationLimit(kMaxImageMegabytes);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    return format == kJpegFormat ? decodeJpeg(reader, bytes, wish)
                                 : decodeOther(reader, bytes, wish);
}

QImage readPicture(const QString &path, const PictureWish &wish)
{
    return decodePicture(PictureFile(path).read(), wish);
}

} // namespace velmora
