// The error of a failed system call, and writes that repeat until all is taken.
#pragma once

#include <QByteArrayView>

#include <system_error>

namespace velmora {

/// The error of the last system call; to be taken before another is made.
[[nodiscard]] std::error_code lastError();

/// Writes all bytes to an open file. After an error some of them may have been written.
[[nodiscard]] std::error_code writeAll(int fd, QByteArrayView bytes);

/// The same at an offset of the file, leaving its current position alone.
[[nodiscard]] std::error_code writeAllAt(int fd, QByteArrayView bytes, qint64 offset);

} // namespace velmora
