// The text of a list of cameras, whichever program wrote it.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace velmora {

/// Decodes UTF-8, UTF-16 (with a byte order mark, or recognised by its zeros), or else
/// Windows-1252. Nothing for bytes that are not text.
[[nodiscard]] std::optional<QString> listText(QByteArrayView bytes);

/// One line of a table; a quoted field may span several lines of the text.
struct TableLine
{
    int number = 0; // of its first line, counted from 1
    QStringList fields;
};

/// The lines of a text with separated fields, where a field that contains a separator is in double
/// quotes (RFC 4180). Empty lines, and those that begin with "#", are left out.
[[nodiscard]] std::vector<TableLine> tableLines(const QString &text, QChar separator);

/// A field as written in such a table.
[[nodiscard]] QString tableField(const QString &field);

} // namespace velmora
