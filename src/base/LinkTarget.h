// Resolves a link: an address that the desktop can open, or a local file or folder.
#pragma once

#include "base/NativePaths.h"

#include <QString>

namespace velmora {

enum class TargetState {
    Reachable,
    FileMissing,
    FolderMissing, // the folder itself, the file's folder, or its drive
    NoPermission   // not readable
};

struct LinkTarget
{
    QString target; // native path, or an address with its scheme
    TargetState state = TargetState::Reachable;
};

/// link: an address ("http://…", "mailto:…"), a path text ("C:\doc.txt"; relative to "C:\" without
/// a leading "\"), or a native path ("/srv/doc.txt"). An address is not checked, unless it is that
/// of a local file.
[[nodiscard]] LinkTarget linkTarget(const QString &link, const NativePaths &paths);

} // namespace velmora
