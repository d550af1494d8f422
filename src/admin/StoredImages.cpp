#include "admin/StoredImages.h"

#include "base/DateText.h"
#include "base/FolderScan.h"

#include <algorithm>

namespace velmora {
namespace {

constexpr qsizetype kDayLength = 8;    // yyyyMMdd
constexpr qsizetype kStampLength = 15; // yyyyMMdd_HHmmss

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isImageName(QByteArrayView name)
{
    return name.size() >= kStampLength && std::ranges::all_of(name.first(kDayLength), isDigit) &&
           name[kDayLength] == '_' &&
           std::ranges::all_of(name.sliced(kDayLength + 1, kStampLength - kDayLength - 1), isDigit);
}

std::optional<WallTime> dateOfName(const QByteArray &name)
{
    if (name.isEmpty()) {
        return std::nullopt;
    }
    const QString text = QString::fromLatin1(name);
    const std::optional<WallTime> date =
        dateFromText(QStringLiteral("%1/%2/%3 %4:%5:%6")
                         .arg(text.mid(6, 2), text.mid(4, 2), text.mid(0, 4), text.mid(9, 2),
                              text.mid(11, 2), text.mid(13, 2)));
    return date == kZeroDate ? std::nullopt : date;
}

} // namespace

StoredImages storedImages(const QString &folder)
{
    StoredImages images;
    QByteArray greatest;
    FolderScan scan(folder);
    while (scan.readSome([&](QByteArrayView name) {
        if (isImageName(name)) {
            ++images.count;
            if (name.compare(greatest) > 0) {
                greatest = name.toByteArray();
            }
        }
    })) {
    }
    images.newest = dateOfName(greatest);
    return images;
}

QString universalTimeText(WallTime time)
{
    const WallFields at = wallFields(time);
    return QStringLiteral("%1-%2-%3T%4:%5:%6Z")
        .arg(at.year, 4, 10, QLatin1Char('0'))
        .arg(twoDigits(at.month), twoDigits(at.day), twoDigits(at.hour), twoDigits(at.minute),
             twoDigits(at.second));
}

} // namespace velmora
