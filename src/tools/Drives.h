// The drives that the import offers: the program's own, and what is mounted on this machine.
#pragma once

#include <QByteArray>
#include <QStringList>

namespace velmora {

/// "C:" first, then as "E:" every letter with a folder or link drives/x in the program folder
/// (native path).
[[nodiscard]] QStringList letterDrives(const QString &programFolder);

/// Path texts of the mounts that hold users' files: the root of the file system, and the disks,
/// cards and network folders below it. mountTable: in the format of /proc/self/mounts.
[[nodiscard]] QStringList mountedDrives(const QByteArray &mountTable);

/// Both, as they are now. No mounted disk is accessed, since one whose network is gone would not
/// answer.
[[nodiscard]] QStringList drivesNow(const QString &programFolder);

} // namespace velmora
