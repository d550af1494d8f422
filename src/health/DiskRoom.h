// The free room on the disk that holds the storage folder.
#pragma once

#include <QString>

#include <optional>

namespace velmora {

struct DiskRoom
{
    qint64 freeBytes = 0;
    qint64 allBytes = 0;
};

/// folder: native path. Nothing where it cannot be determined.
[[nodiscard]] std::optional<DiskRoom> diskRoom(const QString &folder);

/// Days until the disk is full at a rate in bytes a day; nothing without a rate.
[[nodiscard]] std::optional<double> fullInDays(qint64 freeBytes, qint64 bytesADay);

/// "12 GB free, full in 12 days at this rate".
[[nodiscard]] QString roomText(const DiskRoom &room, qint64 bytesADay);

} // namespace velmora
