// A picture's file: what distinguishes it from another of the same name, and its bytes.
#pragma once

#include "base/UniqueFd.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <sys/stat.h>

namespace velmora {

/// Two files at one path are the same, unchanged file if and only if all of this agrees.
struct FileIdentity
{
    dev_t device = 0;
    ino_t inode = 0;
    qint64 bytes = 0;
    qint64 modifiedNs = 0; ///< since 1970
    qint64 changedNs = 0;  ///< since 1970; change of contents, name, permissions or owner

    bool operator==(const FileIdentity &) const = default;
};

/// Nothing unless this is an ordinary file. path: native.
[[nodiscard]] std::optional<FileIdentity> fileIdentity(const QString &path);

/// An ordinary file open for reading; a pipe, a device or a folder is not opened or waited for.
class PictureFile
{
public:
    static constexpr qint64 kMaxBytes = qint64{256} * 1024 * 1024;

    /// path: native.
    explicit PictureFile(const QString &path);

    /// As of when the file was opened; nothing without an ordinary file.
    [[nodiscard]] std::optional<FileIdentity> identity() const { return identity_; }

    /// All bytes of the picture; none when the file is empty, too large or unreadable, or does not
    /// begin like a picture. What follows a JPEG in its file may be left out.
    [[nodiscard]] QByteArray read() const;

    /// The same; nothing after an error, which says nothing about what the file holds.
    [[nodiscard]] std::optional<QByteArray> tryToRead() const;

private:
    [[nodiscard]] std::optional<QByteArray> readFirst(qint64 bytes) const;

    UniqueFd fd_;
    std::optional<FileIdentity> identity_;
};

} // namespace velmora
