// Brings the settings file to its place before anything is read from it.
#pragma once

#include <QString>

namespace velmora {

/// A settings file in `oldFolder` (where earlier versions kept it; empty for none) moves into the
/// program folder, over one that is there. Otherwise, when the program folder has none, the
/// template Velmora0.ini becomes it. Only
/// ordinary files are taken, whole or not at all, and the old one goes once the copy was read back
/// and is the same; a file that cannot be copied stays where it is. Native paths.
void prepareSettings(const QString &programFolder, const QString &oldFolder);

} // namespace velmora
