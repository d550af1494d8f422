// Adds, removes and lists cameras from the command line.
#pragma once

#include "admin/AdminCommand.h"
#include "settings/SettingsFile.h"

namespace velmora {

/// Stores a camera in the requested row, or in the first free one; prints "g:r". Two programs that
/// do so at once get different rows.
[[nodiscard]] CommandResult addCamera(const SettingsFile &settings, const AddCommand &command);

/// Removes a camera from the table, with all that was chosen for it; its images stay.
[[nodiscard]] CommandResult removeCamera(const SettingsFile &settings,
                                         const RemoveCommand &command);

/// The cameras of the table, without passwords.
[[nodiscard]] CommandResult listCameras(const SettingsFile &settings, const ListCommand &command);

/// Stores a list from a file, all or nothing; prints "g:r address" for each new camera.
[[nodiscard]] CommandResult importList(const SettingsFile &settings,
                                       const ImportListCommand &command);

/// Writes the table as a list, including any passwords in its addresses, so for the user's eyes
/// only.
[[nodiscard]] CommandResult exportList(const SettingsFile &settings,
                                       const ExportListCommand &command);

} // namespace velmora
