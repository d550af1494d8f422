// Files that are read whole or not at all.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <system_error>

namespace velmora {

struct [[nodiscard]] WholeFile
{
    std::optional<QByteArray> bytes; // nothing when a part of them could not be read
    std::error_code error;           // then why
};

/// Reads an ordinary file (or what a link to one leads to) from its begin to its end. A pipe or a
/// device is an error and nobody waits for it, as are more than mostBytes, and a file that grows or
/// shrinks meanwhile. Native path.
WholeFile readWholeFile(const QString &path, qint64 mostBytes);

/// Reads exactly so many bytes of an open file from where it stands; error code 0 means that it
/// ends before.
WholeFile readExactly(int fd, qint64 size);

} // namespace velmora
