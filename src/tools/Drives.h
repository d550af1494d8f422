// The drives that the import offers: the program's own, and what is mounted on this machine.
#pragma once

#include <QByteArray>
#include <QStringList>

namespace velmora {

/// "C:" first, then every letter whose folder or link drives/x stands in the program folder (native
/// path), as "E:".
[[nodiscard]] QStringList letterDrives(const QString &programFolder);

/// Path texts of the mounts that hold users' files: the root of the file system, and the disks,
/// cards and network folders below it. mountTable: in the form of /proc/self/mounts.
[[nodiscard]] QStringList mountedDrives(const QByteArray &mountTable);

/// Both of now. No mounted disk is asked anything, since one whose network is gone would not
/// answer.
[[nodiscard]] QStringList drivesNow(const QString &programFolder);

} // namespace velmora
