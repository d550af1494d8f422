// Texts from outside that must stay on one line: names of files, answers of servers, settings.
#pragma once

#include <QString>

namespace velmora {

/// True when a text holds a control character, line breaks of any kind among them.
[[nodiscard]] bool holdsControls(QStringView text);

/// The text with blanks for its control characters.
[[nodiscard]] QString onOneLine(QString text);

} // namespace velmora
