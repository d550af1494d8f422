// Questions to and changes of folders of the file system. Paths are native.
#pragma once

#include <QString>

#include <system_error>

namespace velmora {

/// True when a folder (or a link to one) stands at the path.
[[nodiscard]] bool folderExists(const QString &path);

/// Makes one level of folder; a folder that exists is no error.
[[nodiscard]] std::error_code makeFolder(const QString &path);

/// True for the errors by which a file system refuses a name as such, whatever room and rights
/// there are.
[[nodiscard]] bool isNameRefused(std::error_code error);

/// Why a folder could not be made, for people; of a name that is refused it tells what would do.
[[nodiscard]] QString folderRefusal(const QString &path, std::error_code error);

/// True when the folder holds at least one file; folders in it do not count. Reads no further than
/// the first file, so a very full folder costs no more than an empty one. False for a missing
/// folder.
[[nodiscard]] bool folderHoldsFile(const QString &path);

} // namespace velmora
