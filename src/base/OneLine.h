// Keeps outside text (file names, server answers, settings) on one line, or takes its lines apart.
#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

/// True when a text holds a control character, including line breaks of any kind.
[[nodiscard]] bool holdsControls(QStringView text);

/// The text with its control characters replaced by blanks.
[[nodiscard]] QString onOneLine(QString text);

/// The lines of a text without the empty ones. Carriage returns, line feeds and Unicode's
/// separators of lines and paragraphs end them.
[[nodiscard]] QStringList nonEmptyLines(const QString &text);

} // namespace velmora
