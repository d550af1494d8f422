// Between the program's own path text ("C:\in\", with "\" between names) and paths of this system.
#pragma once

#include <QString>

#include <optional>

namespace velmora {

/// Turns path text into native paths at the moment of a file-system call.
/// Drive "X:" is the folder or link drives/x in the program folder when there is one; otherwise
/// "C:" is the user's home folder and no other drive exists. A path without a drive starts at the
/// file-system root. Several "\" in a row are one.
class NativePaths
{
public:
    /// programFolder: native path, as may change between drives but not between calls.
    explicit NativePaths(QString programFolder);

    /// The native path without a "/" at its end (but for the root), or nothing when its drive does
    /// not exist.
    [[nodiscard]] std::optional<QString> native(QStringView text) const;

    /// The text form of a native folder, ending with "\": below the home folder "C:\…" when that
    /// names the same folder, else the path from the root.
    [[nodiscard]] QString folderText(const QString &nativePath) const;

private:
    [[nodiscard]] std::optional<QString> driveRoot(QChar letter) const;

    QString programFolder_;
};

} // namespace velmora
