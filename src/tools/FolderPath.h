// Path text of folders as the import's folder list shows it: level by level, ending with "\" only
// for a root.
#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

/// "C:\a\b", "C:\", "\a\b" or "\", with single "\". A text that begins with neither a drive nor "\"
/// is relative to the root.
[[nodiscard]] QString folderPath(QStringView text);

/// The root and the names below it: "C:\", "a", "b".
[[nodiscard]] QStringList folderLevels(QStringView path);

/// The folder at this many levels from the root, at least one.
[[nodiscard]] QString folderAtLevel(QStringView path, int levels);

/// A folder's subfolder of that name.
[[nodiscard]] QString subFolder(const QString &path, const QString &name);

} // namespace velmora
