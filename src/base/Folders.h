// Checks and makes folders of the file system. Paths are native.
#pragma once

#include <QString>

#include <system_error>

namespace velmora {

/// True when the path is a folder (or a link to one).
[[nodiscard]] bool folderExists(const QString &path);

/// True when both paths are the same or lead to one folder: through a link, or on a disk for which
/// capital and small letters are the same.
[[nodiscard]] bool isSameFolder(const QString &one, const QString &other);

/// Makes one level of folder; an existing folder is no error.
[[nodiscard]] std::error_code makeFolder(const QString &path);

/// True for the errors by which a file system refuses the name itself, whatever the space and
/// permissions.
[[nodiscard]] bool isNameRefused(std::error_code error);

/// Why a folder could not be made, as a text for the user; for a refused name it says what would be
/// accepted.
[[nodiscard]] QString folderRefusal(const QString &path, std::error_code error);

/// That not all of a folder is known, as a text for the user.
[[nodiscard]] QString unreadFolderText(std::error_code error);

/// True when the folder holds at least one file, or when that cannot be determined; subfolders do
/// not count. Reads no further than the first file, so a very full folder costs no more than an
/// empty one. False for a missing folder.
[[nodiscard]] bool folderMayHoldFile(const QString &path);

} // namespace velmora
