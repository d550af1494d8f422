// What the commands, and the windows that do the same, say when they cannot do what is asked.
#pragma once

#include "settings/SettingsFile.h"

#include <QString>

namespace velmora {

/// That nothing was stored.
[[nodiscard]] QString notStoredText();

/// The same; of a settings file that has grown too large, with its size and path.
[[nodiscard]] QString notStoredText(const SettingsFile &settings);

/// Why a list of cameras gives none. path: as shown.
[[nodiscard]] QString unreadListText(const QString &path, const QString &why);

/// A native path or a file name as typed, for a message. A user who forgets an option may give an
/// address where a path is wanted: what does not exist is shown as withoutCredentials() shows an
/// address.
[[nodiscard]] QString shownTypedPath(const QString &path);

} // namespace velmora
