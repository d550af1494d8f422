#include "admin/StoredImages.h"

#include "base/DateText.h"
#include "base/FolderScan.h"
#include "base/NameStamp.h"

namespace velmora {

StoredImages storedImages(const QString &folder)
{
    StoredImages images;
    QByteArray greatest;
    FolderScan scan(folder);
    while (scan.readSome([&](QByteArrayView name) {
        if (isStamped(name)) {
            ++images.count;
            if (name.compare(greatest) > 0) {
                greatest = name.toByteArray();
            }
        }
    })) {
    }
    images.readError = scan.error();
    const std::optional<WallTime> newest = momentOfName(greatest);
    images.newest = newest == kZeroDate ? std::nullopt : newest;
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
