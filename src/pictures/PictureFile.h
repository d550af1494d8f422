// A picture's file: what distinguishes it from another of the same name, and its bytes.
#pragma once

#include "base/FileStamp.h"
#include "base/UniqueFd.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmora {

/// An ordinary file open for reading; a pipe, a device or a folder is not opened or waited for.
class PictureFile
{
public:
    static constexpr qint64 kMaxBytes = qint64{256} * 1024 * 1024;

    /// path: native.
    explicit PictureFile(const QString &path);

    /// As of when the file was opened; nothing without an ordinary file.
    [[nodiscard]] std::optional<FileStamp> stamp() const { return stamp_; }

    /// All bytes of the picture; none when the file is empty, too large or unreadable, or does not
    /// begin like a picture. What follows a JPEG in its file may be left out.
    [[nodiscard]] QByteArray read() const;

    /// The same; nothing after an error, which says nothing about what the file holds.
    [[nodiscard]] std::optional<QByteArray> tryToRead() const;

private:
    [[nodiscard]] std::optional<QByteArray> readFirst(qint64 bytes) const;

    UniqueFd fd_;
    std::optional<FileStamp> stamp_;
};

} // namespace velmora
