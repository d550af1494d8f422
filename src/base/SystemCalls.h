// What the system says when a call fails, and writing as much as it takes.
#pragma once

#include <QByteArrayView>

#include <system_error>

namespace velmora {

/// Why the last system call failed, taken before another is made.
[[nodiscard]] std::error_code lastError();

/// Writes all bytes to an open file. After an error a part of them may be written.
[[nodiscard]] std::error_code writeAll(int fd, QByteArrayView bytes);

/// The same at a place of the file, which stays where it stands.
[[nodiscard]] std::error_code writeAllAt(int fd, QByteArrayView bytes, qint64 offset);

} // namespace velmora
