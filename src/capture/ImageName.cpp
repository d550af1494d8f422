#include "capture/ImageName.h"

#include "base/DateText.h"
#include "cameras/Credentials.h"

#include <algorithm>
#include <array>

namespace velmora {
namespace {

constexpr qsizetype kNameLength = 23;

struct PictureType
{
    const char *magic;
    qsizetype magicAt;
    const char *contentType;
    const char *extension;
};

constexpr std::array<PictureType, 5> kTypes = {{
    {"\xFF\xD8\xFF", 0, "image/jpeg", ".jpg"},
    {"\x89PNG\r\n", 0, "image/png", ".png"},
    {"GIF8", 0, "image/gif", ".gif"},
    {"WEBP", 8, "image/webp", ".webp"},
    {"BM", 0, "image/bmp", ".bmp"},
}};

constexpr std::array kPictureExtensions = {".jpg", ".jpeg", ".jpe", ".png", ".gif",
                                           ".bmp", ".webp", ".tif", ".tiff"};

bool canStandInName(QChar c)
{
    return c.unicode() >= u' ' && !QStringView(u"/\\:*?<>|\"'").contains(c);
}

QString typeExtension(QByteArrayView body, const QString &contentType)
{
    for (const PictureType &type : kTypes) {
        if (body.size() > type.magicAt && body.sliced(type.magicAt).startsWith(type.magic)) {
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
    return isPicture || withoutCredentials(url).endsWith(extension);
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
    const WallFields at = wallFields(image);
    const WallFields now = wallFields(download);
    const QString stem = QStringLiteral("%1").arg(at.year, 4, 10, QLatin1Char('0')) +
                         twoDigits(at.month) + twoDigits(at.day) + u'_' + twoDigits(at.hour) +
                         twoDigits(at.minute) + twoDigits(at.second) + twoDigits(now.day) +
                         twoDigits(now.hour);
    return (stem + extension).left(kNameLength);
}

} // namespace velmora
