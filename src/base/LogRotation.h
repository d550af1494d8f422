// Keeps a log file from growing without end.
#pragma once

#include <QString>

namespace velmora {

/// Once the log is larger than the limit, it becomes the old one, whose place it takes in one step;
/// if this fails, the log just grows. Paths are native.
void rotateLog(const QString &path, const QString &oldPath, qint64 limitBytes);

} // namespace velmora
