#include "capture/GreyLibrary.h"

#include "base/PictureFormat.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

namespace {

using namespace velmora;

// A picture decoded in one go holds everything else up and needs at least four bytes a pixel, so
// it may be no larger than a full screen.
constexpr qint64 kMostPixels = qint64{2} * 1024 * 1024;

QImage decoded(const QByteArray &bytes)
{
    const QByteArray format = pictureFormat(bytes);
    if (format.isEmpty()) {
        return {};
    }
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    const bool isBearable = size.isValid() && qint64{size.width()} * size.height() <= kMostPixels;
    return isBearable ? reader.read().convertToFormat(QImage::Format_Grayscale8) : QImage();
}

} // namespace

extern "C" Q_DECL_EXPORT void velmoraDecodeGreys(const char *bytes, std::size_t count,
                                                 TakeGreys take, void *user)
{
    const QImage picture = decoded(QByteArray::fromRawData(bytes, static_cast<qsizetype>(count)));
    if (!picture.isNull()) {
        take(user, picture.width(), picture.height(),
             static_cast<std::size_t>(picture.bytesPerLine()), picture.constBits());
    }
}
