#include "tools/FilmPicture.h"

#include "base/PictureFormat.h"
#include "browser/ImageCaption.h"
#include "pictures/JpegStream.h"
#include "pictures/PictureFile.h"
#include "pictures/PictureReader.h"
#include "pictures/PictureSize.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kQuality = 95;

QByteArray toJpeg(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "jpeg", kQuality);
    return bytes;
}

FilmPicture remade(const QImage &image)
{
    return image.isNull() ? FilmPicture()
                          : FilmPicture{FilmPictureState::Good, toJpeg(image), image.size()};
}

bool isTurned(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader(&buffer, "jpeg").transformation() != QImageIOHandler::TransformationNone;
}

QImage decoded(const QByteArray &bytes, const PictureWish &wish)
{
    const bool isJpeg = pictureFormat(bytes) == kJpegFormat;
    return isJpeg && !jpegStream(bytes) ? QImage() : decodePicture(bytes, wish);
}

void drawText(QPainter &painter, QSize size, const QString &text)
{
    QFont font = painter.font();
    font.setPixelSize(std::clamp(size.height() / 24, 9, 64));
    font.setBold(true);
    const int margin = font.pixelSize() / 2;
    QPainterPath outline;
    outline.addText(margin, size.height() - margin, font, text);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(outline, QPen(Qt::black, font.pixelSize() / 6.0));
    painter.fillPath(outline, Qt::white);
}

} // namespace

QString filmStamp(const QString &fileName, const QString &camera)
{
    const QString date = imageCaption(fileName);
    return camera.isEmpty() ? date : date + QStringLiteral("   ") + camera;
}

FilmPicture filmPicture(const QString &path)
{
    const PictureFile file(path);
    if (!file.stamp()) {
        return {FilmPictureState::Gone, {}, {}};
    }
    QByteArray bytes = file.read();
    const auto stream = jpegStream(bytes);
    if (stream && stream->isPlain && isBearable(stream->size) &&
        !(stream->isTagged && isTurned(bytes))) {
        bytes.truncate(stream->bytes);
        return {FilmPictureState::Good, bytes, stream->size};
    }
    return remade(decoded(bytes, {}));
}

FilmPicture stampedPicture(const QString &path, QSize size, const QString &text)
{
    const PictureFile file(path);
    if (!file.stamp()) {
        return {FilmPictureState::Gone, {}, {}};
    }
    const QImage picture = decoded(file.read(), {size, Fit::KeepShape});
    if (picture.isNull()) {
        return {};
    }
    QImage sheet(size, QImage::Format_RGB32);
    sheet.fill(Qt::black);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QRect place({0, 0}, picture.size().scaled(size, Qt::KeepAspectRatio));
    place.moveCenter(sheet.rect().center());
    painter.drawImage(place, picture);
    drawText(painter, size, text);
    painter.end();
    return remade(sheet);
}

} // namespace velmora
