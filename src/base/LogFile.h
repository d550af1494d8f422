// Log files: whole lines, and no growth without end.
#pragma once

#include <QString>

#include <system_error>

namespace velmora {

/// Once the log is larger than the limit, it becomes the old one, whose place it takes in one step;
/// if this fails, the log just grows. Paths are native.
void rotateLog(const QString &path, const QString &oldPath, qint64 limitBytes);

/// Writes a line, which ends in a line feed, behind what the log holds; makes the log if it is
/// missing. The whole line or nothing, in one call where the system takes it so. A last line that a
/// kill has left unfinished is ended first. Waits for no reader of a pipe. Native path.
[[nodiscard]] std::error_code appendToLog(const QString &path, const QByteArray &line);

} // namespace velmora
