// Whether two things of the file system are one file.
#pragma once

#include <QByteArray>

#include <sys/stat.h>

namespace velmora {

/// Whether both describe one file, whatever its names.
[[nodiscard]] bool isSameFile(const struct stat &one, const struct stat &other);

/// Whether the open file is the one at this path: another program may have removed or replaced it
/// since it was opened. path: native bytes; a link is not followed.
[[nodiscard]] bool isFileAt(int file, const QByteArray &path);

} // namespace velmora
