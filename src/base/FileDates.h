// Dates of files as the file system reports them.
#pragma once

#include "base/Clock.h"

#include <QByteArray>

#include <optional>

namespace velmora {

/// When a file was last modified, in local time with the summer time of that day; of a link, the
/// date of the file it leads to. nativePath: native bytes. Nothing when there is no such file.
[[nodiscard]] std::optional<WallTime> modificationTime(const QByteArray &nativePath);

/// When a file was made, in local time as above; of a link, that of the file it leads to. Where the
/// file system keeps no such date, when it was last modified. Nothing when there is no such file.
[[nodiscard]] std::optional<WallTime> creationTime(const QByteArray &nativePath);

} // namespace velmora
