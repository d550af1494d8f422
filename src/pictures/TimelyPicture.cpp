#include "pictures/TimelyPicture.h"

#include "base/PictureFormat.h"
#include "pictures/JpegScans.h"
#include "pictures/PictureReader.h"

#include <QBuffer>
#include <QImageReader>

namespace velmora {
namespace {

constexpr qint64 kMostPixels = 10'000'000;
constexpr qint64 kMostJpegPixels = 100'000'000;

QSize storedSize(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    return reader.size();
}

bool takesTooLong(const QByteArray &bytes, QSize size)
{
    const qint64 pixels = qint64{size.width()} * size.height();
    return pictureFormat(bytes) == kJpegFormat ? pixels * countJpegScans(bytes) > kMostJpegPixels
                                               : pixels > kMostPixels;
}

} // namespace

TimelyPicture decodeInTime(const QByteArray &bytes, const PictureWish &wish)
{
    const QSize size = storedSize(bytes);
    const bool isTooLarge = takesTooLong(bytes, size);
    return {isTooLarge ? QImage() : decodePicture(bytes, wish), size, isTooLarge};
}

} // namespace velmora
