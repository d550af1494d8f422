// Tells whether a file or folder has changed since it was read, without reading it.
#pragma once

#include <QString>

#include <chrono>
#include <optional>
#include <sys/stat.h>

namespace velmora {

/// What a file system says of a file or folder as a whole. Two files at one path are the same,
/// unchanged file if and only if all of this agrees; that of a folder changes with every name added
/// or removed.
struct FileStamp
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 bytes = 0;
    std::chrono::nanoseconds modified{0}; // since 1970, by the file system's clock
    std::chrono::nanoseconds changed{0};  // contents, name, permissions or owner

    friend bool operator==(const FileStamp &, const FileStamp &) = default;
};

[[nodiscard]] FileStamp stampOf(const struct stat &info);

/// path: native; a link is followed. Nothing unless this is a folder.
[[nodiscard]] std::optional<FileStamp> folderStamp(const QString &path);

/// The same for an ordinary file, or for a link's target.
[[nodiscard]] std::optional<FileStamp> fileStamp(const QString &path);

/// The same for an open file.
[[nodiscard]] std::optional<FileStamp> fileStamp(int file);

/// Whether any change to a folder after a reading began would show in its stamp. File systems keep
/// coarse times: a change in the same tick of the system's clock leaves the stamp as it is, so a
/// folder that changed just before it was read cannot be trusted. readBegan: since 1970, taken
/// after the stamp.
[[nodiscard]] bool tellsChanges(const FileStamp &stamp, std::chrono::nanoseconds readBegan);

} // namespace velmora
