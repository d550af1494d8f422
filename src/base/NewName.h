// Gives a file a name that is not yet in use, on every kind of file system: an existing file is
// never replaced.
#pragma once

#include <QByteArray>

#include <system_error>

namespace velmora {

/// Gives a file another path on its file system. A link itself is renamed, not its target. If `to`
/// exists, both stay as they are and the error is `file_exists`. Paths are native bytes.
///
/// Uses the first of these that the file system supports: a rename that refuses to replace; a
/// second name and removal of the first (a file that has exactly these two names was left so by a
/// run that was killed in between: the first is removed); a check that the name is free and a plain
/// rename, both under a lock on the folder, so that no two runs of the program do this at once. A
/// lock that another program keeps is not waited for.
[[nodiscard]] std::error_code renameToNew(const QByteArray &from, const QByteArray &to);

/// Gives an open file that was made without a name (O_TMPFILE) its first name. Same errors.
[[nodiscard]] std::error_code linkToNew(int file, const QByteArray &to);

/// True for the errors with which a file system says that it lacks the call, rather than that the
/// file cannot have this name.
[[nodiscard]] bool meansNoSuchCall(std::error_code error);

/// The folder part of a path; "." for a bare name. Native bytes.
[[nodiscard]] QByteArray folderOf(const QByteArray &path);

} // namespace velmora
