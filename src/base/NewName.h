// Gives a file a name under which nothing stands yet, on every kind of file system: what exists is
// never replaced.
#pragma once

#include <QByteArray>

#include <system_error>

namespace velmora {

/// Gives a file another path on its file system. A link is renamed itself, not what it leads to.
/// When something stands at `to`, both stay as they are and the error is `file_exists`. Paths are
/// native bytes.
///
/// The first of these that the file system knows: a rename that refuses to replace; a second name,
/// and the first one taken away; a look whether the name is free, and a plain rename, both under a
/// lock of the folder, so that no two runs of the program do so at the same time.
[[nodiscard]] std::error_code renameToNew(const QByteArray &from, const QByteArray &to);

/// Gives an open file that was made without a name (O_TMPFILE) its first one. The same errors.
[[nodiscard]] std::error_code linkToNew(int file, const QByteArray &to);

/// True for the errors with which a file system says that it has no such call, rather than that
/// this file cannot be named so.
[[nodiscard]] bool meansNoSuchCall(std::error_code error);

/// The folder in which a path stands; "." for a name alone. Native bytes.
[[nodiscard]] QByteArray folderOf(const QByteArray &path);

} // namespace velmora
