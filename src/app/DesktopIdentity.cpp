#include "app/DesktopIdentity.h"

#include <QFile>
#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QPixmap>

#include <cstddef>
#include <png.h>
#include <utility>

namespace velmora {
namespace {

// The sizes that desktops show in title bars, in lists of windows and when switching programs.
constexpr int kIconPixels[] = {16, 24, 32, 48, 128};

// Not by the toolkit's reader, which would load all of its picture plug-ins at the start, to ask
// each whether it knows PNG.
QPixmap decoded(const QByteArray &png)
{
    png_image header = {};
    header.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&header, png.constData(),
                                         static_cast<std::size_t>(png.size())) == 0) {
        return {};
    }
    header.format = PNG_FORMAT_RGBA;
    QImage image(static_cast<int>(header.width), static_cast<int>(header.height),
                 QImage::Format_RGBA8888);
    const int isRead = png_image_finish_read(
        &header, nullptr, image.bits(), static_cast<png_int_32>(image.bytesPerLine()), nullptr);
    return isRead == 0 ? QPixmap() : QPixmap::fromImage(std::move(image));
}

QIcon icon()
{
    QIcon icon;
    for (const int pixels : kIconPixels) {
        QFile file(QStringLiteral(":/icons/velmora-%1.png").arg(pixels));
        static_cast<void>(file.open(QIODevice::ReadOnly));
        icon.addPixmap(decoded(file.readAll()));
    }
    return icon;
}

} // namespace

void introduceToDesktop()
{
    QGuiApplication::setDesktopFileName(QStringLiteral("velmora"));
    QGuiApplication::setWindowIcon(icon());
}

} // namespace velmora
