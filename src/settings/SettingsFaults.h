// What the user has to know about a settings file that does not work as usual, as sentences.
#pragma once

#include <QString>

#include <optional>

namespace velmora {

class SettingsFile;

/// Why a file that is there cannot be read; nothing for one that can, or is missing.
[[nodiscard]] std::optional<QString> readingFault(const SettingsFile &settings);

/// Path and size of a file that has grown too large to be read quickly; nothing for one of ordinary
/// size.
[[nodiscard]] std::optional<QString> sizeWarning(const SettingsFile &settings);

/// That a file is mounted by itself, so that it cannot be replaced; nothing for any other.
[[nodiscard]] std::optional<QString> mountWarning(const SettingsFile &settings);

} // namespace velmora
