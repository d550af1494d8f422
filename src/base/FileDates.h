// Dates of files as the file system reports them.
#pragma once

#include "base/Clock.h"

#include <QByteArray>

#include <optional>

namespace velmora {

/// When a file was last modified, in local time with that day's daylight saving; for a link, the
/// date of its target. nativePath: native bytes. Nothing when there is no such file.
[[nodiscard]] std::optional<WallTime> modificationTime(const QByteArray &nativePath);

/// When a file was created, in local time as above; for a link, when its target was. Where the file
/// system keeps no such date, when it was last modified. Nothing when there is no such file.
[[nodiscard]] std::optional<WallTime> creationTime(const QByteArray &nativePath);

} // namespace velmora
