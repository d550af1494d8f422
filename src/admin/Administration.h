// Carries out what the command line asks, beside a running program or without one.
#pragma once

#include "admin/AdminCommand.h"

#include <functional>
#include <optional>

namespace velmora {

/// Finds the process that is running on a program folder.
using FindHolder = std::function<std::optional<qint64>(const QString &programFolder)>;

/// programFolder: native path without links. A program running on it has applied the changes before
/// this returns; if it does not answer, the result's error says so.
[[nodiscard]] CommandResult administer(const QString &programFolder, const AdminCommand &command,
                                       const FindHolder &findHolder);

} // namespace velmora
