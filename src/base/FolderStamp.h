// Tells whether a folder has changed since it was read, without reading it.
#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace velmora {

/// What a file system says of a folder as a whole; it changes with every name added or removed.
struct FolderStamp
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 bytes = 0;
    std::chrono::nanoseconds modified{0}; // since 1970, by the file system's clock
    std::chrono::nanoseconds changed{0};

    friend bool operator==(const FolderStamp &, const FolderStamp &) = default;
};

/// path: native; a link is followed. Nothing unless this is a folder.
[[nodiscard]] std::optional<FolderStamp> folderStamp(const QString &path);

/// The same for an ordinary file, or for a link's target.
[[nodiscard]] std::optional<FolderStamp> fileStamp(const QString &path);

/// Whether any change to a folder after a reading began would show in its stamp. File systems keep
/// coarse times: a change in the same tick of the system's clock leaves the stamp as it is, so a
/// folder that changed just before it was read cannot be trusted. readBegan: since 1970, taken
/// after the stamp.
[[nodiscard]] bool tellsChanges(const FolderStamp &stamp, std::chrono::nanoseconds readBegan);

} // namespace velmora
