// Path text of folders as the import's folder list shows it: level by level, with a "\" at the end
// only of a root.
#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

/// "C:\a\b", "C:\", "\a\b" or "\", with each "\" once. A text that begins with neither a drive nor
/// "\" is meant from the root.
[[nodiscard]] QString folderPath(QStringView text);

/// The root and the names below it: "C:\", "a", "b".
[[nodiscard]] QStringList folderLevels(QStringView path);

/// The folder of the first so many levels, at least one.
[[nodiscard]] QString folderAtLevel(QStringView path, int levels);

/// A folder's folder of that name.
[[nodiscard]] QString subFolder(const QString &path, const QString &name);

} // namespace velmora
