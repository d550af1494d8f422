// Settings that the command line can read and change, under names of its own.
#pragma once

#include "admin/AdminCommand.h"
#include "base/NativePaths.h"
#include "settings/SettingsFile.h"

namespace velmora {

/// Carries out assignments KEY=VALUE, all of them or none. A value is treated as its box in the
/// window would treat it, and refused in the same words.
[[nodiscard]] CommandResult setKeys(const SettingsFile &settings, const NativePaths &paths,
                                    const SetCommand &command);

/// Prints the value of each key, one a line.
[[nodiscard]] CommandResult getKeys(const SettingsFile &settings, const NativePaths &paths,
                                    const GetCommand &command);

} // namespace velmora
