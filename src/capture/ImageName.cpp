#include "capture/ImageName.h"

#include "base/NameStamp.h"
#include "base/PictureFormat.h"
#include "cameras/Credentials.h"

#include <algorithm>
#include <array>

namespace velmora {
namespace {

constexpr qsizetype kNameLength = 23;

struct PictureType
{
    QByteArrayView format;
    const char *contentType = nullptr;
    const char *extension = nullptr;
};

constexpr std::array<PictureType, 5> kTypes = {{
    {kJpegFormat, "image/jpeg", ".jpg"},
    {kPngFormat, "image/png", ".png"},
    {kGifFormat, "image/gif", ".gif"},
    {kWebpFormat, "image/webp", ".webp"},
    {kBmpFormat, "image/bmp", ".bmp"},
}};

constexpr std::array kPictureExtensions = {".jpg", ".jpeg", ".jpe", ".png", ".gif",
                                           ".bmp", ".webp", ".tif", ".tiff"};

bool canStandInName(QChar c)
{
    return c.unicode() >= u' ' && !QStringView(u"/\\:*?<>|\"'").contains(c);
}

QString typeExtension(QByteArrayView body, const QString &contentType)
{
    const QByteArray format = pictureFormat(body);
    for (const PictureType &type : kTypes) {
        if (format == type.format) {
            return QLatin1String(type.extension);
        }
    }
    for (const PictureType &type : kTypes) {
        if (contentType.startsWith(QLatin1String(type.contentType), Qt::CaseInsensitive)) {
            return QLatin1String(type.extension);
        }
    }
    return QStringLiteral(".jpg");
}

// At the end of an address's last field it may be the end of a password, unless it is a picture's.
bool tellsNoSecret(const QString &extension, const QString &url)
{
    const bool isPicture = std::ranges::any_of(kPictureExtensions, [&](const char *known) {
        return extension.compare(QLatin1String(known), Qt::CaseInsensitive) == 0;
    });
    return isPicture || addressWithoutCredentials(url).endsWith(extension);
}

} // namespace

QString imageExtension(const QString &url, QByteArrayView body, const QString &contentType)
{
    const qsizetype dot = url.lastIndexOf(u'.');
    const QString extension = dot < 0 ? QString() : url.sliced(dot);
    const bool usable = !extension.isEmpty() && std::ranges::all_of(extension, canStandInName) &&
                        tellsNoSecret(extension, url);
    return usable ? extension : typeExtension(body, contentType);
}

QString imageName(WallTime image, WallTime download, const QString &extension)
{
    const QByteArray stem = momentKey(image) + dayAndHourKey(download);
    return (QString::fromLatin1(stem) + extension).left(kNameLength);
}

} // namespace velmora
