// Which texts the settings file can hold.
#pragma once

#include <QString>

namespace velmora {

/// What is read back of a value at most, in characters.
inline constexpr qsizetype kMostReadBack = 254;

/// True when the settings file gives a text back as it was stored: one line of its character set,
/// no longer than what is read back. Blanks and quotes around it are the writer's concern.
[[nodiscard]] bool isStorable(QStringView text);

} // namespace velmora
