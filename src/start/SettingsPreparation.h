// Puts the settings file in place before anything is read from it.
#pragma once

#include <QString>

namespace velmora {

/// A settings file in `oldFolder` (where earlier versions kept it; empty for none) is moved into
/// the program folder, replacing one that is there. Otherwise, if the program folder has none, the
/// template Velmora0.ini is copied. Only ordinary files are taken, whole or not at all, and the old
/// one is removed once the copy was read back and is identical; a file that cannot be copied stays
/// where it is, and one that cannot be removed is not taken a second time. What others write into
/// the settings meanwhile is not lost. Native paths.
void prepareSettings(const QString &programFolder, const QString &oldFolder);

} // namespace velmora
