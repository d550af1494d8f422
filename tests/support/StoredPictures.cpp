#include "support/StoredPictures.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QTime>
#include <QWidget>

#include <algorithm>
#include <stdexcept>

namespace velmora::test {
namespace {

QByteArray written(const QImage &image, const char *format,
                   QImageIOHandler::Transformations lies = QImageIOHandler::TransformationNone)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    writer.setTransformation(lies);
    if (!writer.write(image)) {
        throw std::runtime_error("a picture cannot be written: " +
                                 writer.errorString().toStdString());
    }
    return bytes;
}

} // namespace

QByteArray pictureBytes(const QColor &colour, QSize size, const char *format)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return written(image, format);
}

QByteArray finePicture(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixelColor(x, y, (x / 2 + y / 2) % 2 == 0 ? Qt::black : Qt::white);
        }
    }
    return written(image, "JPEG");
}

bool isSharp(QWidget &control)
{
    constexpr int kEdge = 16;
    const QImage look = control.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
    int darkest = 255;
    int brightest = 0;
    for (int y = look.height() / 2; y < look.height() / 2 + kEdge; ++y) {
        for (int x = look.width() / 2; x < look.width() / 2 + kEdge; ++x) {
            const int grey = qGray(look.pixel(x, y));
            darkest = std::min(darkest, grey);
            brightest = std::max(brightest, grey);
        }
    }
    return brightest - darkest > 150;
}

QByteArray rotatedJpeg()
{
    QImage image(kCameraSize, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QPainter(&image).fillRect(0, 0, image.width() / 2, image.height(), Qt::red);
    return written(image, "JPEG", QImageIOHandler::TransformationRotate90);
}

QByteArray cmykJpeg()
{
    return QByteArray::fromBase64(
        "/9j/7gAOQWRvYmUAZAAAAAAC/9sAQwANCQoLCggNCwoLDg4NDxMgFRMSEhMnHB4XIC4pMTAuKS0sMzpKPjM2RjcsLU"
        "BXQUZMTlJTUjI+WmFaUGBKUVJP/9sAQwEODg4TERMmFRUmTzUtNU9PT09PT09PT09PT09PT09PT09PT09PT09PT09P"
        "T09PT09PT09PT09PT09PT09PT09P/8AAFAgAEAAQBAEiAAIRAQMRAQQiAP/EABYAAQEBAAAAAAAAAAAAAAAAAAAFB/"
        "/EABQQAQAAAAAAAAAAAAAAAAAAAAD/xAAVAQEBAAAAAAAAAAAAAAAAAAAFB//EABQRAQAAAAAAAAAAAAAAAAAAAAD/"
        "2gAOBAEAAhEDEQQAAD8AvgGU2acA/9k=");
}

QString storedName(int second)
{
    const QTime time = QTime(0, 0).addSecs(second);
    return QStringLiteral("20060307_") + time.toString(QStringLiteral("HHmmss")) +
           QStringLiteral("0714.jpg");
}

} // namespace velmora::test
