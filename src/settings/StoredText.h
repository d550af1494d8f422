// Which texts the settings file can hold.
#pragma once

#include <QString>

namespace velmora {

/// True when the settings file gives a text back as it was stored: one line of its character set,
/// no longer than what is read back. Blanks and quotes around it are the writer's concern.
[[nodiscard]] bool isStorable(QStringView text);

} // namespace velmora
