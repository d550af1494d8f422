#include "health/DiskRoom.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>

#include <cmath>
#include <sys/statvfs.h>

namespace velmora {
namespace {

constexpr double kFar = 36525; // days, beyond which a forecast means nothing

} // namespace

std::optional<DiskRoom> diskRoom(const QString &folder)
{
    struct statvfs disk = {};
    if (folder.isEmpty() || ::statvfs(QFile::encodeName(folder).constData(), &disk) != 0 ||
        disk.f_blocks == 0) {
        return std::nullopt;
    }
    const auto block = static_cast<qint64>(disk.f_frsize);
    return DiskRoom{static_cast<qint64>(disk.f_bavail) * block,
                    static_cast<qint64>(disk.f_blocks) * block};
}

std::optional<double> fullInDays(qint64 freeBytes, qint64 bytesADay)
{
    if (bytesADay <= 0) {
        return std::nullopt;
    }
    const double days = static_cast<double>(freeBytes) / static_cast<double>(bytesADay);
    return days < kFar ? std::optional(days) : std::nullopt;
}

QString roomText(const DiskRoom &room, qint64 bytesADay)
{
    const QString free = QCoreApplication::translate("DiskRoom", "%1 free")
                             .arg(QLocale().formattedDataSize(room.freeBytes));
    const auto days = fullInDays(room.freeBytes, bytesADay);
    return days ? QCoreApplication::translate("DiskRoom", "%1, full in %2 days at this rate")
                      .arg(free)
                      .arg(std::floor(*days))
                : free;
}

} // namespace velmora
