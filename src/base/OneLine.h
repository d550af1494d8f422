// Keeps outside text (file names, server answers, settings) on one line.
#pragma once

#include <QString>

namespace velmora {

/// True when a text holds a control character, including line breaks of any kind.
[[nodiscard]] bool holdsControls(QStringView text);

/// The text with its control characters replaced by blanks.
[[nodiscard]] QString onOneLine(QString text);

} // namespace velmora
