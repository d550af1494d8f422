// Which file systems only this machine writes to.
#pragma once

#include <QByteArray>

namespace velmora {

/// True for a path (native) on a file system that is known to belong to this machine alone. On one
/// that others share, changes are made that are not reported here, and locks may not reach them.
[[nodiscard]] bool isOnLocalDisk(const QByteArray &path);

} // namespace velmora
