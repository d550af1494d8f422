// What a link leads to: an address that the desktop knows how to open, or a file or folder here.
#pragma once

#include "base/NativePaths.h"

#include <QString>

namespace velmora {

enum class TargetState {
    Reachable,
    FileMissing,
    FolderMissing, // the folder that was asked for, or the one of the file, or its drive
    NoPermission   // it may not be read
};

struct LinkTarget
{
    QString target; // native path, or an address with its scheme
    TargetState state = TargetState::Reachable;
};

/// link: an address ("http://…", "mailto:…"), a path text ("C:\doc.txt"; without a "\" in front it
/// is taken from "C:\"), or a native path ("/srv/doc.txt"). Of an address nothing is checked, but
/// for that of a local file.
[[nodiscard]] LinkTarget linkTarget(const QString &link, const NativePaths &paths);

} // namespace velmora
