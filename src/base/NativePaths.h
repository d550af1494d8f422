// Converts between the program's own path text ("C:\in\", with "\" as separator) and this system's
// paths.
#pragma once

#include <QString>

#include <optional>

namespace velmora {

/// Turns path text into native paths at the moment of a file-system call. Drive "X:" is the folder
/// or link drives/x in the program folder if that exists; otherwise "C:" is the user's home folder,
/// and there is no other drive. A path without a drive starts at the file-system root. Several "\"
/// in a row are one.
class NativePaths
{
public:
    /// programFolder: native path. The drives in it may change between calls, but not during one.
    explicit NativePaths(QString programFolder);

    /// The native path without a final "/" (except the root's), or nothing when its drive does not
    /// exist.
    [[nodiscard]] std::optional<QString> native(QStringView text) const;

    /// The text form of a native folder, ending with "\": "C:\…" below the home folder where that
    /// names the same folder, else the path from the root.
    [[nodiscard]] QString folderText(const QString &nativePath) const;

private:
    [[nodiscard]] std::optional<QString> driveRoot(QChar letter) const;

    QString programFolder_;
};

} // namespace velmora
