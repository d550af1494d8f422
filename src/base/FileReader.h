// Reads files whole or not at all.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <system_error>

namespace velmora {

struct [[nodiscard]] WholeFile
{
    std::optional<QByteArray> bytes; // nothing when any part could not be read
    std::error_code error;           // why, in that case
};

/// Reads an ordinary file (or a link's target) from beginning to end. It is an error, never waited
/// for, if this is a pipe or a device, holds more than mostBytes, or grows or shrinks meanwhile.
/// Native path.
WholeFile readWholeFile(const QString &path, qint64 mostBytes);

/// Reads exactly that many bytes of an open file from its current position; error code 0 means that
/// the file ends before that.
WholeFile readExactly(int fd, qint64 size);

/// Reads an open file from its current position to its end, but no more than mostBytes of it. A
/// pipe or a terminal is waited for.
WholeFile readToEnd(int fd, qint64 mostBytes);

} // namespace velmora
