// The error of a failed system call, reads that a signal does not interrupt, and writes that repeat
// until all is taken.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <sys/types.h>
#include <system_error>

namespace velmora {

/// The error of the last system call; to be taken before another is made.
[[nodiscard]] std::error_code lastError();

/// The path by which this process, and one that inherits the descriptor, opens an open file again;
/// native. Needs /proc.
[[nodiscard]] QByteArray descriptorPath(int fd);

/// Reads what there is, `most` bytes at most; begins again after a signal. The number of bytes
/// read, 0 at the end of the file, -1 after an error.
[[nodiscard]] ssize_t readSome(int fd, char *to, qint64 most);

/// The same at an offset of the file, leaving its current position alone.
[[nodiscard]] ssize_t readSomeAt(int fd, char *to, qint64 most, qint64 offset);

/// Writes all bytes to an open file. After an error some of them may have been written.
[[nodiscard]] std::error_code writeAll(int fd, QByteArrayView bytes);

/// The same at an offset of the file, leaving its current position alone.
[[nodiscard]] std::error_code writeAllAt(int fd, QByteArrayView bytes, qint64 offset);

} // namespace velmora
